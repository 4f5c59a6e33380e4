// The host closes the window or changes the layout while a control is dragged or inside its own
// handler.
#include "tests/editor/EditorStage.h"

#include <functional>
#include <set>
#include <thread>

using namespace VSTGUI;

namespace {

struct ControlLife : Editor {
    ControlLife()
    {
        controller.host.onCall = [this] {
            if (--callsLeft == 0)
                interrupt();
        };
    }

    // Calls `use` with the centre of one control of each class.
    void forEachClass(const std::function<void(CPoint)>& use)
    {
        showEverything();
        std::set<std::string> seen;
        for (const Placed& placed : controls()) {
            if (!seen.insert(placed.className).second)
                continue;
            SCOPED_TRACE(placed.title);
            openWindow();
            showEverything();
            window->screen.onMenu = [](COptionMenu&) { return 3; };
            heard();
            // The host releases a closed editor only after the editor's calls have returned.
            const IPtr<TemplateEditor> alive = window->view;
            use(placed.isDisplay() ? placed.rect.getCenter() : at(placed.id));
            expectBalanced();
        }
    }
    // Begins and ends of gestures match and do not nest.
    void expectBalanced() const
    {
        int open = 0;
        for (const std::string& call : controller.host.calls) {
            open += call[0] == 'b' ? 1 : call[0] == 'e' ? -1 : 0;
            EXPECT_TRUE(open == 0 || open == 1) << "gestures nest or end twice: " << call;
        }
        EXPECT_EQ(open, 0) << "a gesture is open";
    }
    void changeLayout() { set(kQB11, 1 - value(kQB11)); }

    int callsLeft = 0;
    std::function<void()> interrupt;
    const BitmapUser decoded;  // keeps the bitmaps decoded for all windows
};

TEST_F(ControlLife, WindowMayCloseOrChangeAtAnyCallOfTheHost)
{
    for (const int atCall : {1, 2, 3, 4, 6, 9})
        for (const bool close : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << (close ? "closed" : "changed") << " at call " << atCall);
            interrupt = [&] { close ? window->close() : changeLayout(); };
            forEachClass([&](CPoint where) {
                OffscreenHost& screen = window->screen;
                callsLeft = atCall;
                screen.mouseMove(where);
                screen.mouseDown(where);
                screen.mouseMove(where + CPoint(3, -300), kLButton);
                screen.mouseMove(where + CPoint(0, 400), kLButton | kShift);
                screen.mouseUp(where + CPoint(0, 400));
                screen.wheel(where, 1);
                screen.wheel(where, -1);
                screen.mouseDown(where);
                screen.typeText("Another");
                screen.pressReturnInTextBox();
                screen.mouseUp(where);
                screen.paint();
                window->close();
            });
        }
}

TEST_F(ControlLife, HostMayReleaseTheEditorWhenItAsksForAnotherSize)
{
    const std::function<void()> changes[] = {
        [&] { window->click(at(kQB11)); },
        [&] { changeLayout(); },
        // Shown later: after a whole state, and at the next tick after a change on another thread.
        [&] {
            controller.holdEditors();
            changeLayout();
            set(kLGainL, 1 - value(kLGainL));
            controller.releaseEditors();
        },
        [&] {
            std::thread(&ControlLife::changeLayout, this).join();
            clock.advance(100);
        },
        // In its first call, while it is opened.
        [&] { window = std::make_unique<Window>(controller, true); },
    };
    for (const double wide : {0.0, 1.0})
        for (const auto& change : changes) {
            SCOPED_TRACE(&change - changes);
            set(kQB11, wide);
            set(k2x, 0);
            openWindow();
            window->closesWhenResized = true;
            change();
            EXPECT_FALSE(window->screen.isOpen());
            changeLayout();
            clock.advance(100);
        }
}

TEST_F(ControlLife, ADragThatIsInterruptedEndsItsGesture)
{
    const std::function<void(CPoint)> cuts[] = {
        [&](CPoint) { window->close(); },
        [&](CPoint) { changeLayout(); },
        // A second button.
        [&](CPoint where) { window->screen.mouseDown(where, kLButton | kRButton); },
        // A move without a button: the release was missed.
        [&](CPoint where) { window->screen.mouseMove(where, 0); },
    };
    for (const auto& cut : cuts) {
        SCOPED_TRACE(&cut - cuts);
        forEachClass([&](CPoint where) {
            window->screen.mouseDown(where);
            window->screen.mouseMove(where - CPoint(0, 4), kLButton);
            cut(where);
            if (!window->view || &cut == &cuts[1])
                expectBalanced();
            window->screen.mouseUp(where, kLButton);
            window->screen.mouseUp(where, kRButton);
        });
    }
}

}  // namespace
