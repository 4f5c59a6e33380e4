// Which rectangles are invalidated, and when.
#include "tests/vstgui/Probe.h"

namespace {

class Repaint : public FrameTest {
protected:
    std::vector<CRect> taken()
    {
        auto rects = host.invalidRects();
        host.clearInvalidRects();
        return rects;
    }
};

using Rects = std::vector<CRect>;

TEST_F(Repaint, InvalidRectanglesAreTranslatedAndClippedByEachContainer)
{
    auto* box = new CViewContainer(CRect(50, 20, 100, 60));
    frame->addView(box);
    auto* v = new ProbeView(CRect(30, 30, 90, 90), "v", log);
    box->addView(v);
    taken();
    v->invalid();
    EXPECT_EQ(taken(), (Rects{CRect(80, 50, 100, 60)}));
    box->invalidRect(CRect(-5, -5, 5, 5));
    EXPECT_EQ(taken(), (Rects{CRect(50, 20, 55, 25)}));
    box->setVisible(false);
    EXPECT_EQ(taken(), (Rects{CRect(50, 20, 100, 60)}));
    v->invalid();
    EXPECT_EQ(taken(), Rects{});
    box->setVisible(true);
    EXPECT_EQ(taken(), (Rects{CRect(50, 20, 100, 60)}));
    CView::kDirtyCallAlwaysOnMainThread = false;
    v->setDirty();
    EXPECT_EQ(taken(), Rects{});
    frame->idle();
    EXPECT_EQ(taken(), (Rects{CRect(80, 50, 100, 60)}));
}

TEST_F(Repaint, DirtyViewsAreRepaintedAtOnce)
{
    auto* knob = new CKnob(CRect(10, 10, 30, 30), &listener, 1, nullptr, nullptr);
    frame->addView(knob);
    host.paint();
    knob->setValue(0.4f);
    EXPECT_EQ(taken(), Rects{});
    knob->setDirty();
    EXPECT_EQ(taken(), (Rects{CRect(10, 10, 30, 30)}));
    EXPECT_TRUE(knob->isDirty());
    frame->idle();
    EXPECT_EQ(taken(), Rects{});
    knob->invalid();
    host.paint();
    EXPECT_FALSE(knob->isDirty());
}

TEST_F(Repaint, AddingMovingOrRemovingAViewRepaintsItsRectangle)
{
    const CRect here(0, 0, 10, 10), there(50, 0, 60, 10);
    auto* v = new ProbeView(here, "v", log);
    v->setDirty();
    v->invalid();
    EXPECT_EQ(taken(), Rects{}) << "not added yet";
    frame->addView(v);
    EXPECT_FALSE(frame->addView(v));
    EXPECT_EQ(taken(), (Rects{here}));
    v->setViewSize(there, true);
    EXPECT_EQ(taken(), (Rects{here, there}));
    EXPECT_EQ(v->getMouseableArea(), here);
    v->setViewSize(there, true);
    EXPECT_EQ(taken(), Rects{});
    frame->removeView(v);
    EXPECT_EQ(taken(), (Rects{there}));
}

TEST_F(Repaint, OneEventInvalidatesEachAreaOnce)
{
    auto* v = addProbe("v");
    taken();
    v->onPress = [&] {
        v->invalidRect(CRect(10, 10, 20, 20));
        v->invalidRect(CRect(12, 12, 14, 14));
        v->invalidRect(CRect(0, 0, 30, 30));
        v->invalidRect(CRect(50, 50, 60, 60));
        EXPECT_EQ(taken(), Rects{});
    };
    host.mouseDown({5, 5});
    EXPECT_EQ(taken(), (Rects{CRect(0, 0, 30, 30), CRect(50, 50, 60, 60)}));
}

}  // namespace
