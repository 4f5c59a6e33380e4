// A frame without a window for one control or a few: events go in where a user would make them,
// what the listener heard and what is to be seen come out. Pictures are filmstrips whose frames can
// be told by their colour.
#pragma once

#include "CAnimCoaxT46Knob.h"

#include "vstgui/platform/bitmapresources.h"
#include "vstgui/platform/offscreen.h"
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

using Calls = std::vector<std::string>;

// "begin", "change 0.5", "end"; a knob that moved its ring says "ring 0.5".
class Listener : public CControlListener {
public:
    void valueChanged(VSTGUI::CControl* control) override
    {
        auto* const knob = dynamic_cast<CAnimCoaxT46Knob*>(control);
        const bool ring = knob && knob->getRingIsOuter();
        char text[40];
        std::snprintf(text, sizeof text, "%s %.4g", ring ? "ring" : "change",
                      static_cast<double>(ring ? knob->getValue2() : control->getValue()));
        calls.push_back(text);
        if (onChange)
            onChange(control);
    }
    void controlBeginEdit(VSTGUI::CControl*) override { calls.push_back("begin"); }
    void controlEndEdit(VSTGUI::CControl*) override { calls.push_back("end"); }

    // What was heard since the last question.
    Calls heard() { return std::exchange(calls, {}); }

    std::function<void(VSTGUI::CControl*)> onChange;

private:
    Calls calls;
};

// A picture whose pixels are what the function says.
inline VSTGUI::SharedPointer<VSTGUI::CBitmap>
paintedBitmap(int32_t width, int32_t height,
              const std::function<VSTGUI::CColor(int32_t x, int32_t y)>& color)
{
    static std::map<int32_t, std::vector<uint8_t>> files;
    VSTGUI::Pixels pixels(width, height);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            pixels.set(x, y, color(x, y));
    const int32_t number = 50000 + static_cast<int32_t>(files.size());
    const std::vector<uint8_t>& file = files[number] = encodePng(pixels);
    const VSTGUI::EmbeddedBitmap entry{number, file.data(), file.size()};
    VSTGUI::registerBitmaps(&entry, 1);
    return VSTGUI::owned(new VSTGUI::CBitmap(VSTGUI::CResourceDescription(number)));
}

// Frame i is opaque and has red i + 1.
inline VSTGUI::SharedPointer<VSTGUI::CBitmap> filmstrip(int32_t width, int32_t frameHeight,
                                                        int32_t frames)
{
    return paintedBitmap(width, frameHeight * frames, [=](int32_t, int32_t y) {
        return VSTGUI::CColor(static_cast<uint8_t>(y / frameHeight + 1), 0, 0, 255);
    });
}

class ControlStage : public testing::Test {
protected:
    static constexpr int kNothing = -1;  // shown where no frame covers the background

    ControlStage()
    {
        VSTGUI::CView::kDirtyCallAlwaysOnMainThread = true;
        frame = new VSTGUI::CFrame(VSTGUI::CRect(0, 0, 300, 300), nullptr);
        frame->open(host.parentWindow());
        // As in the editor, controls stand in columns.
        column = new VSTGUI::CViewContainer(VSTGUI::CRect(kLeft, kTop, 300, 300));
        column->setBackgroundColor(VSTGUI::kBlackCColor);
        frame->addView(column);
    }
    ~ControlStage() override { close(); }

    void close()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
    }

    template <class Control>
    Control* add(Control* control)
    {
        column->addView(control);
        host.paint();
        return control;
    }

    // All in the column's coordinates, as rectangles of controls are.
    VSTGUI::CPoint at(VSTGUI::CPoint p) const { return p + VSTGUI::CPoint(kLeft, kTop); }
    VSTGUI::CMouseEventResult press(VSTGUI::CPoint p, int32_t buttons = VSTGUI::kLButton)
    {
        return host.mouseDown(at(p), buttons);
    }
    VSTGUI::CMouseEventResult drag(VSTGUI::CPoint p, int32_t buttons = VSTGUI::kLButton)
    {
        return host.mouseMove(at(p), buttons);
    }
    VSTGUI::CMouseEventResult release(VSTGUI::CPoint p, int32_t buttons = VSTGUI::kLButton)
    {
        return host.mouseUp(at(p), buttons);
    }
    void click(VSTGUI::CPoint p, int32_t buttons = VSTGUI::kLButton)
    {
        press(p, buttons);
        release(p, buttons);
    }
    bool wheel(VSTGUI::CPoint p, float distance, int32_t modifiers = 0)
    {
        const bool used = host.wheel(at(p), distance, modifiers);
        host.paint();
        return used;
    }

    // What a user sees, after the repaints that were asked for.
    VSTGUI::CColor seen(int32_t x, int32_t y) { return host.paint().at(x + kLeft, y + kTop); }
    int shownFrame(int32_t x, int32_t y) { return seen(x, y).red - 1; }

    static constexpr int32_t kLeft = 10, kTop = 20;

    VSTGUI::OffscreenHost host;
    Listener listener;
    VSTGUI::CFrame* frame;
    VSTGUI::CViewContainer* column;
};
