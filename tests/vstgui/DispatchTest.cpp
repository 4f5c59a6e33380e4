// Which view gets presses, drags and the wheel, also when views are removed during the event.
#include "tests/vstgui/Probe.h"

namespace {

class Dispatch : public FrameTest { };

TEST_F(Dispatch, TheTopmostViewUnderThePointGetsThePressInItsParentsCoordinates)
{
    auto* box = new CViewContainer(CRect(50, 20, 150, 80));
    frame->addView(box);
    box->addView(new ProbeView(CRect(10, 10, 40, 40), "low", log));
    box->addView(new ProbeView(CRect(10, 10, 40, 40), "high", log));
    // The right and the bottom edge are exclusive.
    for (const CPoint& where : {CPoint(90, 35), CPoint(65, 60)})
        EXPECT_EQ(host.mouseDown(where), kMouseEventNotHandled);
    EXPECT_EQ(host.mouseDown({60, 30}), kMouseEventHandled);
    host.mouseMove({500, -7}, kLButton);
    host.mouseUp({-20, 0});
    EXPECT_EQ(heard(), (Log{"high down 10,10", "high drag 450,-27", "high up -70,-20"}));
}

TEST_F(Dispatch, OnlyTransparentOrDisabledViewsLetAnUnhandledPressThrough)
{
    addProbe("low");
    auto* high = addProbe("high");
    high->pressResult = kMouseEventNotHandled;
    host.mouseDown({5, 5});
    EXPECT_EQ(heard(), (Log{"high down 5,5"}));
    high->setTransparency(true);
    host.mouseDown({5, 5});
    high->setMouseEnabled(false);
    host.mouseDown({6, 6});
    EXPECT_EQ(heard(), (Log{"high down 5,5", "low down 5,5", "low up 5,5", "low down 6,6"}));
}

TEST_F(Dispatch, ADoubleClickDoesNotReachAViewThatItsFirstPressUncovered)
{
    addProbe("low");
    const auto click = [&](CPoint where, int32_t buttons) {
        host.mouseDown(where, buttons);
        host.mouseUp(where, buttons);
    };
    for (const CPoint& elsewhere : {CPoint(15, 5), CPoint(5, 15)}) {
        host.mouseMove({100, 5});
        heard();
        auto* high = addProbe("high");
        high->onPress = [&] { frame->removeView(high); };
        // The third press of a triple click counts as a single one.
        for (const int32_t buttons : {+kLButton, kLButton | kDoubleClick, +kLButton})
            click({5, 5}, buttons);
        EXPECT_EQ(heard(), (Log{"high down 5,5", "high dies", "low enter 5,5"}));
        click(elsewhere, kLButton);
        click(elsewhere, kLButton | kDoubleClick);
        EXPECT_EQ(heard().size(), 4u) << "two presses and two releases";
    }
}

TEST_F(Dispatch, TheResultOfAPressDecidesWhetherItIsCaptured)
{
    auto* v = addProbe("v");
    v->pressResult = kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    host.mouseDown({5, 5});
    host.mouseUp({5, 5});
    EXPECT_EQ(heard(), (Log{"v down 5,5", "v enter 5,5"}));
    v->pressResult = kMouseEventHandled;
    v->moveResult = kMouseMoveEventHandledButDontNeedMoreEvents;
    host.mouseDown({5, 5});
    host.mouseMove({90, 90}, kLButton);
    host.mouseMove({91, 91}, kLButton);
    host.mouseUp({92, 92});
    // The capture ends in the move, which then also goes to the hovered view.
    EXPECT_EQ(heard(), (Log{"v down 5,5", "v drag 90,90", "v move 90,90", "v exit 91,91"}));
}

TEST_F(Dispatch, ViewsMayBeRemovedInAPressAndAreNotCapturedThen)
{
    auto* box = new CViewContainer(CRect(0, 0, 100, 100));
    frame->addView(box);
    ProbeView* pressed = nullptr;
    const struct {
        const char* what;
        std::function<void()> onPress;
        Log heard;
    } rows[] = {
        {"the view", [&] { box->removeView(pressed); }, {"v down 5,5", "v dies"}},
        {"the view, kept",
         [&] {
             box->removeView(pressed, false);
             EXPECT_EQ(pressed->getFrame(), nullptr);
             pressed->invalid();
         },
         {"v down 5,5"}},
        {"all views",
         [&] {
             frame->removeAll();
             addProbe("new");
         },
         {"v down 5,5", "v dies", "new enter 6,6", "new move 6,6"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        pressed = new ProbeView(CRect(0, 0, 50, 50), "v", log);
        box->addView(pressed);
        pressed->onPress = row.onPress;
        host.mouseDown({5, 5});
        host.mouseMove({6, 6}, kLButton);
        host.mouseUp({6, 6});
        EXPECT_EQ(heard(), row.heard);
        if (row.heard.size() == 1)
            pressed->forget();
        heard();
    }
}

TEST_F(Dispatch, ACancelledDragIsAReleaseForViewsWithoutACancelHandler)
{
    addProbe("v");
    host.mouseDown({5, 5});
    host.mouseMove({7, 8}, kLButton);
    host.mouseCancel();
    host.mouseCancel();
    EXPECT_EQ(heard(), (Log{"v down 5,5", "v drag 7,8", "v up 7,8"}));
}

TEST_F(Dispatch, TheWheelGoesToTheTopmostAndIsIgnoredDuringADrag)
{
    auto* v = addProbe("v");
    EXPECT_TRUE(host.wheel({5, 5}, 1.f, 0, kMouseWheelAxisX));
    EXPECT_FALSE(host.wheel({60, 60}, 1.f));
    host.mouseDown({5, 5});
    EXPECT_FALSE(host.wheel({5, 5}, -1.f));
    host.mouseUp({5, 5});
    v->setMouseableArea(CRect(0, 0, 3, 3));
    EXPECT_FALSE(host.wheel({5, 5}, -1.f));
    EXPECT_EQ(heard(),
              (Log{"v wheel up 5,5", "v enter 5,5", "v exit 60,60", "v down 5,5", "v up 5,5",
                   "v enter 5,5", "v exit 5,5"}));
}

TEST_F(Dispatch, HoverIsUpdatedAfterDragsAndRemovedViewsGetNoExit)
{
    auto* const a = addProbe("a");
    addProbe("b", CRect(40, 0, 80, 40));
    host.mouseMove({39, 5});
    host.mouseMove({40, 5});
    host.mouseExit({300, 5});
    EXPECT_EQ(heard(),
              (Log{"a enter 39,5", "a move 39,5", "a exit 40,5", "b enter 40,5", "b move 40,5",
                   "b exit 300,5"}));
    host.mouseDown({5, 5});
    host.mouseMove({45, 5}, kLButton);
    host.mouseExit({45, 5}, kLButton);
    host.mouseUp({46, 5});
    EXPECT_EQ(heard(), (Log{"a down 5,5", "a drag 45,5", "a up 46,5", "b enter 46,5"}));
    host.mouseMove({5, 5});
    heard();
    frame->removeView(a);
    host.mouseMove({6, 6});
    EXPECT_EQ(heard(), (Log{"a dies"}));
}

TEST_F(Dispatch, RepaintsGoOnWhileAMenuIsOpenAndARemovedOneChoosesNothing)
{
    auto* const menu = new COptionMenu(CRect(10, 10, 22, 22), &listener, 12);
    menu->addEntry("one");
    frame->addView(menu);
    host.onMenu = [&](COptionMenu&) {
        host.clearInvalidRects();
        frame->invalidRect(CRect(50, 50, 60, 60));
        EXPECT_EQ(host.invalidRects().size(), 1u) << "repaints wait for the menu";
        frame->removeView(menu);
        return 0;
    };
    host.mouseDown({15, 15});
    EXPECT_EQ(listener.log, (Log{"begin", "end"}));
}

}  // namespace
