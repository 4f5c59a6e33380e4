// What is asked to be repainted, and when.
#include "Probe.h"

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

TEST_F(Repaint, InvalidRectanglesAreMovedUpAndCutByEachContainer)
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
    taken();
    v->invalid();
    EXPECT_EQ(taken(), Rects{});
}

TEST_F(Repaint, DirtyViewsWaitForIdleUnlessTheProcessWantsThemAtOnce)
{
    auto* knob = new CKnob(CRect(10, 10, 30, 30), &listener, 1, nullptr, nullptr);
    frame->addView(knob);
    host.paint();
    knob->setValue(0.3f);  // dirty by value alone
    EXPECT_EQ(taken(), Rects{});
    frame->idle();
    EXPECT_EQ(taken(), (Rects{CRect(10, 10, 30, 30)}));
    frame->idle();
    EXPECT_EQ(taken(), Rects{});

    CView::kDirtyCallAlwaysOnMainThread = true;
    knob->setValue(0.4f);
    EXPECT_EQ(taken(), Rects{});
    knob->setDirty();
    EXPECT_EQ(taken(), (Rects{CRect(10, 10, 30, 30)}));
    EXPECT_TRUE(knob->isDirty());
    frame->idle();
    EXPECT_EQ(taken(), Rects{});
    host.clearInvalidRects();
    knob->invalid();
    host.paint();
    EXPECT_FALSE(knob->isDirty());
}

TEST_F(Repaint, ADirtyContainerRepaintsItsOwnPlaceOnce)
{
    auto* box = new CViewContainer(CRect(50, 20, 100, 60));
    box->addView(new ProbeView(CRect(0, 0, 10, 10), "v", log));
    frame->addView(box);
    host.paint();
    for (bool atOnce : {false, true}) {
        CView::kDirtyCallAlwaysOnMainThread = atOnce;
        box->setBackgroundColor(atOnce ? kRedCColor : kBlueCColor);
        frame->idle();
        EXPECT_EQ(taken(), (Rects{CRect(50, 20, 100, 60)}));
    }
}

TEST_F(Repaint, AMovedViewRepaintsItsOldAndNewPlace)
{
    CView::kDirtyCallAlwaysOnMainThread = true;
    auto* v = addProbe(CRect(0, 0, 10, 10), "v");
    taken();
    v->setViewSize(CRect(50, 0, 60, 10), true);
    EXPECT_EQ(taken(), (Rects{CRect(0, 0, 10, 10), CRect(50, 0, 60, 10)}));
    EXPECT_EQ(v->getMouseableArea(), CRect(0, 0, 10, 10));
    v->setViewSize(CRect(50, 0, 60, 10), true);
    EXPECT_EQ(taken(), Rects{});
}

TEST_F(Repaint, OneEventPassesEachAreaOnOnce)
{
    auto* v = addProbe(CRect(0, 0, 40, 40), "v");
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

TEST_F(Repaint, AddingAndRemovingRepaintsThePlaceAndDetachedViewsRepaintNothing)
{
    auto* v = new ProbeView(CRect(5, 5, 15, 15), "v", log);
    v->setDirty();
    v->invalid();
    EXPECT_EQ(taken(), Rects{});
    frame->addView(v);
    EXPECT_EQ(taken(), (Rects{CRect(5, 5, 15, 15)}));
    EXPECT_FALSE(frame->addView(v));
    EXPECT_FALSE(frame->addView(nullptr));
    frame->removeView(v);
    EXPECT_EQ(taken(), (Rects{CRect(5, 5, 15, 15)}));
}

TEST_F(Repaint, ResizingChangesTheWindowAndRepaintsAllUnlessTheEditorRefuses)
{
    struct Editor : VSTGUIEditorInterface {
        bool beforeSizeChange(const CRect&, const CRect&) override { return allowed; }
        bool allowed{true};
    };
    Editor editor;
    OffscreenHost other;
    auto* f = new CFrame(CRect(0, 0, 50, 50), &editor);
    ASSERT_TRUE(f->open(other.parentWindow()));
    EXPECT_FALSE(f->open(other.parentWindow()));
    other.clearInvalidRects();
    EXPECT_FALSE(f->setSize(50, 50));
    EXPECT_TRUE(f->setSize(80, 60));
    EXPECT_EQ(other.frameSize(), CPoint(80, 60));
    CRect all;
    for (const CRect& r : other.invalidRects())
        all.unite(r);
    EXPECT_EQ(all, CRect(0, 0, 80, 60));
    editor.allowed = false;
    EXPECT_FALSE(f->setSize(90, 60));
    EXPECT_EQ(other.frameSize(), CPoint(80, 60));
    f->close();
}

TEST_F(Repaint, TimersTellTheirTargetsUntilTheyStopEvenInsideATick)
{
    struct Target : CBaseObject {
        CMessageResult notify(CBaseObject* sender, IdStringPtr message) override
        {
            EXPECT_EQ(message, CVSTGUITimer::kMsgTimer);
            if (++ticks == 3)
                static_cast<CVSTGUITimer*>(sender)->stop();
            return kMessageNotified;
        }
        int ticks{0};
    };
    ManualClock clock;
    Target target;
    auto* timer = new CVSTGUITimer(&target, 100);
    clock.advance(500);
    EXPECT_EQ(target.ticks, 0);
    EXPECT_TRUE(timer->start());
    clock.advance(250);
    EXPECT_EQ(target.ticks, 2);
    EXPECT_TRUE(timer->setFireTime(10));
    clock.advance(500);
    EXPECT_EQ(target.ticks, 3);
    EXPECT_FALSE(timer->stop());
    timer->forget();
}

}  // namespace
