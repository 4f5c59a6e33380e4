// Which frame shows, and how switches and buttons answer the mouse.
#include "Probe.h"

namespace {

class BitmapControls : public FrameTest {
protected:
    int32_t shown(CView* view)
    {
        view->invalid();
        return frameShownAt(host.paint(), static_cast<int32_t>(view->getViewSize().left),
                            static_cast<int32_t>(view->getViewSize().top));
    }
};

TEST_F(BitmapControls, AMovieShowsTheFrameNearestToItsValue)
{
    const auto strip = owned(filmstrip(9010, 5));
    auto* movie = new CMovieBitmap(CRect(20, 20, 30, 30), nullptr, 0, strip);
    frame->addView(movie);
    EXPECT_EQ(movie->getNumSubPixmaps(), 5);
    for (const auto& [value, expected] : std::vector<std::pair<float, int32_t>>{
             {0.f, 0}, {0.124f, 0}, {0.126f, 1}, {0.5f, 2}, {0.874f, 3}, {0.876f, 4}, {1.f, 4}}) {
        movie->setValue(value);
        EXPECT_EQ(shown(movie), expected) << value;
    }
}

TEST_F(BitmapControls, AVerticalSwitchFollowsTheHeightOfTheMouse)
{
    const auto strip = owned(filmstrip(9012, 5));
    auto* sw = new CVerticalSwitch(CRect(20, 20, 30, 30), &listener, 3, strip);
    frame->addView(sw);
    host.mouseDown({25, 25});  // two pixels a position
    EXPECT_FLOAT_EQ(sw->getValue(), 0.5f);
    host.mouseMove({25, 26}, kLButton);
    EXPECT_FLOAT_EQ(sw->getValue(), 0.75f);
    EXPECT_EQ(shown(sw), 3);
    host.mouseMove({25, -90}, kLButton);
    host.mouseMove({25, 900}, kLButton);
    EXPECT_FLOAT_EQ(sw->getValue(), 1.f);
    host.mouseUp({25, 900});
    EXPECT_EQ(listener.log, (Log{"begin", "value 3", "value 3", "value 3", "value 3", "end"}));
    EXPECT_EQ(host.mouseDown({25, 25}, kRButton), kMouseEventNotHandled);
    host.mouseDown({25, 25}, kLButton | kControl);
    EXPECT_EQ(sw->getValue(), 0.f);
    EXPECT_FALSE(sw->isEditing());
}

TEST_F(BitmapControls, AKickButtonActsOnReleaseInsideOnly)
{
    const auto strip = owned(filmstrip(9013, 2));
    auto* kick = new CKickButton(CRect(20, 20, 30, 30), &listener, 4, 10., strip);
    frame->addView(kick);
    host.mouseDown({25, 25});
    EXPECT_EQ(shown(kick), 1);
    host.mouseMove({40, 25}, kLButton);
    EXPECT_EQ(shown(kick), 0);
    host.mouseMove({30, 30}, kLButton);  // edges count as inside
    host.mouseUp({30, 30});
    EXPECT_EQ(listener.values, (std::vector<float>{1.f, 0.f}));
    host.mouseDown({25, 25});
    host.mouseCancel();
    EXPECT_EQ(listener.values.size(), 2u);
    EXPECT_FALSE(kick->isEditing());
    EXPECT_EQ(shown(kick), 0);
}

TEST_F(BitmapControls, ARockerSpringsBackFromMouseAndWheel)
{
    ManualClock clock;
    const auto strip = owned(filmstrip(9014, 3));
    auto* rocker = new CRockerSwitch(CRect(20, 20, 30, 30), &listener, 5, strip);
    frame->addView(rocker);
    EXPECT_EQ(shown(rocker), 1);
    host.mouseDown({21, 25});
    EXPECT_EQ(shown(rocker), 0);
    host.mouseMove({29, 25}, kLButton);
    EXPECT_EQ(shown(rocker), 2);
    host.mouseUp({29, 25});
    EXPECT_EQ(shown(rocker), 1);
    EXPECT_EQ(listener.values, (std::vector<float>{-1.f, 1.f}));

    listener.log.clear();
    host.wheel({25, 25}, 1.f);
    host.wheel({25, 25}, 1.f);
    clock.advance(199);
    EXPECT_EQ(rocker->getValue(), -1.f);
    clock.advance(1);
    EXPECT_EQ(rocker->getValue(), 0.f);
    EXPECT_EQ(listener.log.front(), "begin");
    EXPECT_EQ(listener.log.back(), "end");
    host.wheel({25, 25}, -1.f);
    frame->removeView(rocker);
    EXPECT_EQ(listener.log.back(), "end");
    clock.advance(1000);
}

}  // namespace
