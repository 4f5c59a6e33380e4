// What happens every day around a control: it disappears while it is dragged or in the middle of
// its own handler, its window closes, and there is another window just like it.
#include "ControlStage.h"
#include "EveryControl.h"

#include <algorithm>

using namespace VSTGUI;

namespace {

// A window with one control in a column. Everything that is made is gone with it, which the
// bitmap's count of references tells.
struct Window {
    Window(const ControlKind& kind, CBitmap* bitmap)
    {
        frame = new CFrame(CRect(0, 0, 200, 200), nullptr);
        frame->open(host.parentWindow());
        column = new CViewContainer(CRect(5, 7, 200, 200));
        frame->addView(column);
        control = kind.make(&listener, bitmap);
        column->addView(control);
        press = kind.press + CPoint(5, 7);
        host.paint();
    }
    ~Window() { close(); }
    void close()
    {
        if (frame)
            std::exchange(frame, nullptr)->close();
    }
    void removeControl()
    {
        if (control)
            column->removeView(std::exchange(control, nullptr));
    }

    OffscreenHost host;
    Listener listener;
    CFrame* frame{nullptr};
    CViewContainer* column{nullptr};
    CControl* control{nullptr};
    CPoint press;
};

// As many ends as begins, and never more ends than begins.
testing::AssertionResult balanced(const Calls& calls)
{
    int open = 0;
    std::string all;
    for (const std::string& call : calls) {
        all += call + "; ";
        open += call == "begin" ? 1 : call == "end" ? -1 : 0;
        if (open < 0 || open > 1)
            return testing::AssertionFailure() << "gestures nest or end twice: " << all;
    }
    return open == 0 ? testing::AssertionSuccess()
                     : testing::AssertionFailure() << "one is open: " << all;
}

struct ControlLife : testing::Test {
    ControlLife() { CView::kDirtyCallAlwaysOnMainThread = true; }
    ~ControlLife() override { EXPECT_EQ(bitmap->getNbReference(), 1) << "a control is left over"; }

    // Presses, drags, lets go, turns the wheel and types, as far as there is still a window.
    static void useRoughly(Window& window)
    {
        window.host.mouseMove(window.press);
        window.host.mouseDown(window.press);
        window.host.mouseMove(window.press + CPoint(3, -300), kLButton);
        window.host.mouseMove(window.press + CPoint(0, 400), kLButton | kShift);
        window.host.mouseUp(window.press + CPoint(0, 400));
        window.host.wheel(window.press, 1);
        window.host.wheel(window.press, -1);
        window.host.mouseDown(window.press);
        window.host.typeText("Another");
        window.host.pressReturnInTextBox();
        window.host.mouseUp(window.press);
        window.host.mouseMove({190, 190});
        window.host.paint();
    }

    const SharedPointer<CBitmap> bitmap = filmstrip(120, 24, 5);
};

TEST_F(ControlLife, GesturesAreBalancedHoweverAControlIsUsed)
{
    for (const ControlKind& kind : everyControl()) {
        SCOPED_TRACE(kind.name);
        Window window(kind, bitmap);
        useRoughly(window);
        const Calls calls = window.listener.heard();
        EXPECT_TRUE(balanced(calls));
        const bool light = window.control->isTypeOf("CPowerLED");
        EXPECT_EQ(calls.empty(), light);
    }
}

TEST_F(ControlLife, ControlOrWindowMayVanishInAHandlerAtAnyOfItsCalls)
{
    for (const ControlKind& kind : everyControl()) {
        for (const bool whole : {false, true}) {
            for (size_t atCall = 1; atCall <= 12; ++atCall) {
                SCOPED_TRACE(testing::Message() << kind.name << (whole ? ", window" : ", control")
                                                << ", call " << atCall);
                Window window(kind, bitmap);
                size_t calls = 0;
                window.listener.onChange = [&](CControl*) {
                    if (++calls == atCall)
                        whole ? window.close() : window.removeControl();
                };
                useRoughly(window);
                EXPECT_TRUE(balanced(window.listener.heard()));
            }
        }
    }
}

TEST_F(ControlLife, RemovalOrClosingInTheMiddleOfADragEndsTheGesture)
{
    for (const ControlKind& kind : everyControl()) {
        for (const bool whole : {false, true}) {
            SCOPED_TRACE(testing::Message() << kind.name << (whole ? ", window" : ", control"));
            Window window(kind, bitmap);
            window.host.mouseDown(window.press);
            window.host.mouseMove(window.press - CPoint(0, 900), kLButton);
            if (whole)
                window.close();
            else
                window.removeControl();
            const Calls calls = window.listener.heard();
            EXPECT_TRUE(balanced(calls));
            window.host.mouseMove(window.press);
            window.host.mouseUp(window.press);
            EXPECT_EQ(window.listener.heard(), Calls{});
        }
    }
}

TEST_F(ControlLife, ASecondButtonEndsTheDragOfTheFirst)
{
    for (const ControlKind& kind : everyControl()) {
        SCOPED_TRACE(kind.name);
        Window window(kind, bitmap);
        window.host.mouseDown(window.press);
        window.host.mouseMove(window.press - CPoint(0, 4), kLButton);
        window.host.mouseDown(window.press, kLButton | kRButton);
        window.host.mouseMove(window.press, kLButton | kRButton);
        window.host.mouseUp(window.press, kLButton);
        window.host.mouseUp(window.press, kRButton);
        EXPECT_TRUE(balanced(window.listener.heard()));
    }
}

TEST_F(ControlLife, AReleaseThatGoesAstrayEndsTheGestureWithTheNextMove)
{
    for (const ControlKind& kind : everyControl()) {
        SCOPED_TRACE(kind.name);
        Window window(kind, bitmap);
        window.host.mouseDown(window.press);
        window.host.mouseMove(window.press, 0);
        window.host.mouseUp({190, 190});
        EXPECT_TRUE(balanced(window.listener.heard()));
    }
}

TEST_F(ControlLife, OnlyTheNameFieldWantsTheKeyboard)
{
    for (const ControlKind& kind : everyControl()) {
        Window window(kind, bitmap);
        EXPECT_EQ(window.control->wantsFocus(), window.control->isTypeOf("CZKRTextEdit"))
            << kind.name;
    }
}

}  // namespace
