// A fixture: a frame in a host's window on the screen that records its events, the host's event
// loop, and user input during it.
#pragma once

#include "tests/support/HostWindow.h"
#ifndef _WIN32
#include "vstgui/platform/x11/idlerunloop.h"
#endif
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace VSTGUI;

using Log = std::vector<std::string>;

// The host window's corner on the screen.
constexpr Place kHost{300, 200};

// Runs the host's loop until the condition holds or the time is over, but at least ten times.
// Returns whether the condition holds.
inline bool pumpUntil(const std::function<bool()>& condition, int milliseconds = 20000)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    for (int turns = 0; !condition(); ++turns) {
        if (turns >= 10 && std::chrono::steady_clock::now() >= end)
            return false;
#ifndef _WIN32
        X11::IdleRunLoop::instance().pump();
#endif
        turnMessageLoop();
    }
    return true;
}

inline void pump(int milliseconds = 60)
{
    pumpUntil([] { return false; }, milliseconds);
}

// The events of a frame, and its handlers.
struct Record {
    // For example "down 10,20 L", "move -3,5 L shift", "exit", "cancel", "wheel 5,6 y 0.5".
    Log events;
    std::vector<CRect> drawn;
    std::function<CMouseEventResult()> onPress;  // replaces dispatching to the views
    std::function<void(CDrawContext&, const CRect&)> onDraw;

    bool has(const std::string& event) const
    {
        return std::find(events.begin(), events.end(), event) != events.end();
    }
    // Without moves, whose number depends on the system.
    Log eventsButMoves() const
    {
        Log rest;
        std::copy_if(events.begin(), events.end(), std::back_inserter(rest),
                     [](const std::string& event) { return event.rfind("move", 0) != 0; });
        return rest;
    }
};

class RecordingFrame : public CFrame {
public:
    RecordingFrame(Record& r, CPoint frameSize) : CFrame(CRect({}, frameSize), nullptr), record(r)
    {
    }

    void drawRect(CDrawContext* context, const CRect& rect) override
    {
        record.drawn.push_back(rect);
        if (record.onDraw)
            record.onDraw(*context, rect);
        else
            CFrame::drawRect(context, rect);
    }
    CMouseEventResult platformOnMouseDown(CPoint& where, const CButtonState& buttons) override
    {
        note("down", where, buttons);
        return record.onPress ? record.onPress() : CFrame::platformOnMouseDown(where, buttons);
    }
    CMouseEventResult platformOnMouseMoved(CPoint& where, const CButtonState& buttons) override
    {
        note("move", where, buttons);
        return CFrame::platformOnMouseMoved(where, buttons);
    }
    CMouseEventResult platformOnMouseUp(CPoint& where, const CButtonState& buttons) override
    {
        note("up", where, buttons);
        return CFrame::platformOnMouseUp(where, buttons);
    }
    CMouseEventResult platformOnMouseExited(CPoint& where, const CButtonState& buttons) override
    {
        record.events.push_back("exit");
        return CFrame::platformOnMouseExited(where, buttons);
    }
    void platformOnMouseCancel() override
    {
        record.events.push_back("cancel");
        CFrame::platformOnMouseCancel();
    }
    bool platformOnMouseWheel(const CPoint& where, const CMouseWheelAxis& axis,
                              const float& distance, const CButtonState& buttons) override
    {
        std::ostringstream text;
        text << (axis == kMouseWheelAxisX ? " x " : " y ") << distance;
        note("wheel", where, buttons, text.str());
        return true;
    }
    bool platformOnKeyDown(VstKeyCode& key) override { return note("key", key); }
    bool platformOnKeyUp(VstKeyCode& key) override { return note("keyup", key); }
    void platformOnActivate(bool state) override
    {
        record.events.push_back(state ? "active" : "inactive");
        CFrame::platformOnActivate(state);
    }

private:
    void note(const char* event, const CPoint& where, const CButtonState& buttons,
              const std::string& rest = "")
    {
        std::ostringstream text;
        text << event << ' ' << where.x << ',' << where.y;
        const std::pair<int32_t, const char*> words[] = {
            {kLButton, "L"},   {kMButton, "M"},       {kRButton, "R"},
            {kButton4, "4"},   {kButton5, "5"},       {kDoubleClick, "double"},
            {kShift, "shift"}, {kControl, "control"}, {kAlt, "alt"}};
        for (const auto& [bit, word] : words)
            if (buttons & bit)
                text << ' ' << word;
        record.events.push_back(text.str() + rest);
    }
    bool note(const char* event, const VstKeyCode& key)
    {
        std::ostringstream text;
        text << event << ' ' << int{key.virt} << ' ' << int{key.modifier} << ' ' << key.character;
        record.events.push_back(text.str());
        return true;
    }

    Record& record;
};

// Runs the steps one by one, every 60 ms, from a timer of whatever loop is running; the first one
// not before isReady returns true.
class Script {
public:
    using Step = std::function<void()>;

    explicit Script(std::vector<Step> scriptSteps, std::function<bool()> isReady = nullptr)
        : steps(std::move(scriptSteps)), ready(std::move(isReady)),
          timer(owned(new CVSTGUITimer([this](CVSTGUITimer*) { tick(); }, 60)))
    {
    }
    ~Script() { timer->stop(); }
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    bool finished() const { return next == steps.size(); }

private:
    void tick()
    {
        if (!finished() && (next > 0 || !ready || ready()))
            steps[next++]();
    }

    std::vector<Step> steps;
    std::function<bool()> ready;
    std::size_t next{0};
    SharedPointer<CVSTGUITimer> timer;
};

// A frame of 300 by 200 at the top left corner of a host's window of 400 by 300, with the pointer
// outside the frame.
class OpenFrame : public testing::Test, public IControlListener {
public:
    void valueChanged(CControl* control) override { values.push_back(control->getValue()); }
    void controlBeginEdit(CControl*) override { ++gestures; }
    void controlEndEdit(CControl*) override { --gestures; }

protected:
    OpenFrame()
    {
        CView::kDirtyCallAlwaysOnMainThread = true;
        open();
        movePointer(350, 250);
        pump();
        record.events.clear();
    }
    ~OpenFrame() override
    {
        closeFrame();
        CView::kDirtyCallAlwaysOnMainThread = false;
        host.destroy();
        pump(20);
    }

    void open()
    {
        frame = new RecordingFrame(record, {300, 200});
        EXPECT_TRUE(frame->open(host.handle()));
    }
    void closeFrame()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
    }

    // User input, in coordinates of the host's window. The system delivers it in a later pump().
    static void movePointer(int x, int y) { userinput::movePointer({kHost.x + x, kHost.y + y}); }
    static void press() { userinput::button(userinput::Button::Left, true); }
    static void release() { userinput::button(userinput::Button::Left, false); }
    static void click(int x, int y)
    {
        movePointer(x, y);
        press();
        release();
    }
    std::function<bool()> menuIsOpen()
    {
        return [this] { return gestures == 1; };
    }
    static Pixels picture() { return screenshot(kHost, 400, 300); }

    COptionMenu* addMenu()
    {
        auto* menu = new COptionMenu(CRect(20, 30, 120, 50), this, 1, nullptr, nullptr,
                                     kPopupStyle | kCheckStyle | kNoTextStyle | kNoDrawStyle);
        for (const char* title : {"first & one", "second", "-", "third", "fourth", "fifth"})
            menu->addEntry(title);
        menu->setNbItemsPerColumn(3);
        menu->setCurrent(1);
        frame->addView(menu);
        return menu;
    }
    CTextEdit* addEdit(double y = 60, const char* text = "name")
    {
        auto* edit = new CTextEdit(CRect(20, y, 180, y + 20), this, 9, text);
        edit->setBackColor(kWhiteCColor);
        edit->setFontColor(kBlackCColor);
        frame->addView(edit);
        return edit;
    }

    std::vector<float> values;
    int gestures{0};
    Record record;
    HostWindow host{kHost, 400, 300};
    RecordingFrame* frame{nullptr};
};
