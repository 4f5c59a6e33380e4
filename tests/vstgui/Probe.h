// A frame without a display, and views and listeners that record their events.
#pragma once

#include "tests/support/Png.h"

#include "vstgui/platform/bitmapresources.h"
#include "vstgui/platform/offscreen/offscreenhost.h"
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace VSTGUI;

using Log = std::vector<std::string>;

class ProbeView : public CView {
public:
    ProbeView(const CRect& rect, std::string viewName, Log& l)
        : CView(rect), name(std::move(viewName)), log(l)
    {
    }

    CMouseEventResult pressResult{kMouseEventHandled};
    CMouseEventResult moveResult{kMouseEventHandled};
    std::function<void()> onPress;
    std::function<void(CDrawContext&)> onDraw;

    void draw(CDrawContext* context) override
    {
        if (onDraw)
            onDraw(*context);
    }
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState&) override
    {
        note("down", where);
        if (onPress)
            onPress();
        return pressResult;
    }
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override
    {
        note(buttons & kLButton ? "drag" : "move", where);
        return moveResult;
    }
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState&) override
    {
        return note("up", where);
    }
    CMouseEventResult onMouseEntered(CPoint& where, const CButtonState&) override
    {
        return note("enter", where);
    }
    CMouseEventResult onMouseExited(CPoint& where, const CButtonState&) override
    {
        return note("exit", where);
    }
    using CView::onWheel;
    bool onWheel(const CPoint& where, const float& distance, const CButtonState&) override
    {
        note(distance > 0 ? "wheel up" : "wheel down", where);
        return true;
    }

protected:
    ~ProbeView() override { log.push_back(name + " dies"); }

private:
    CMouseEventResult note(const char* what, const CPoint& at)
    {
        log.push_back(name + " " + what + " " + std::to_string(static_cast<int>(at.x)) + ","
                      + std::to_string(static_cast<int>(at.y)));
        return kMouseEventHandled;
    }

    std::string name;
    Log& log;
};

class ProbeListener : public IControlListener {
public:
    void valueChanged(CControl*) override
    {
        log.push_back("value");
        if (onValue)
            onValue();
    }
    void controlBeginEdit(CControl*) override { log.push_back("begin"); }
    void controlEndEdit(CControl*) override { log.push_back("end"); }

    Log log;
    std::function<void()> onValue;
};

// A grey frame of 200 by 100, open on an OffscreenHost, whose dirty views repaint at once.
class FrameTest : public ::testing::Test {
protected:
    FrameTest()
    {
        CView::kDirtyCallAlwaysOnMainThread = true;
        frame->setBackgroundColor(kGreyCColor);
        EXPECT_TRUE(frame->open(host.parentWindow()));
        host.paint();
    }
    ~FrameTest() override
    {
        closeFrame();
        CView::kDirtyCallAlwaysOnMainThread = false;
    }

    void closeFrame()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
    }

    ProbeView* addProbe(const std::string& name, const CRect& rect = {0, 0, 40, 40})
    {
        auto* view = new ProbeView(rect, name, log);
        frame->addView(view);
        return view;
    }

    // The events of all probes since the previous call.
    Log heard() { return std::exchange(log, {}); }

    Log log;
    ProbeListener listener;
    OffscreenHost host;
    CFrame* frame{new CFrame(CRect(0, 0, 200, 100), nullptr)};
};

// A registered picture: frames of 10 by 10 pixels stacked from the top, frame i of red 10 * i, with
// a green pixel at its top left corner.
inline CBitmap* filmstrip(int32_t number, int32_t frames)
{
    static std::vector<std::vector<uint8_t>> kept;
    Pixels picture(10, 10 * frames);
    for (int32_t y = 0; y < picture.height; ++y) {
        for (int32_t x = 0; x < 10; ++x)
            picture.set(x, y, CColor(static_cast<uint8_t>(y / 10 * 10), 0, 0, 255));
        if (y % 10 == 0)
            picture.set(0, y, kGreenCColor);
    }
    kept.push_back(encodePng(picture));
    const EmbeddedBitmap entry{number, kept.back().data(), kept.back().size()};
    registerBitmaps(&entry, 1);
    return new CBitmap(CResourceDescription(number));
}
