// Values, gestures and what listeners hear.
#include "Probe.h"

namespace {

class Control : public FrameTest { };

TEST_F(Control, ValuesAreClampedAndMappedOverTheRange)
{
    auto* knob = new CKnob(CRect(0, 0, 40, 40), &listener, 1, nullptr, nullptr);
    frame->addView(knob);
    knob->setMin(-1.f);
    knob->setMax(3.f);
    knob->setValue(9.f);
    EXPECT_EQ(knob->getValue(), 3.f);
    knob->setValueNormalized(0.25f);
    EXPECT_EQ(knob->getValue(), 0.f);
    EXPECT_EQ(knob->getValueNormalized(), 0.25f);
    knob->setMax(-0.5f);
    EXPECT_EQ(knob->getValue(), -0.5f);
    EXPECT_TRUE(listener.log.empty());
}

TEST_F(Control, OnlyTheOutermostPairOfAGestureIsHeard)
{
    struct Editor : VSTGUIEditorInterface {
        void beginEdit(int32_t tag) override { log.push_back("begin " + std::to_string(tag)); }
        void endEdit(int32_t tag) override { log.push_back("end " + std::to_string(tag)); }
        Log log;
    };
    Editor editor;
    OffscreenHost other;
    auto* f = new CFrame(CRect(0, 0, 50, 50), &editor);
    f->open(other.parentWindow());
    auto* knob = new CKnob(CRect(0, 0, 40, 40), &listener, 5, nullptr, nullptr);
    f->addView(knob);
    knob->beginEdit();
    knob->beginEdit();
    knob->endEdit();
    EXPECT_TRUE(knob->isEditing());
    knob->endEdit();
    EXPECT_EQ(listener.log, (Log{"begin", "end"}));
    EXPECT_EQ(editor.log, (Log{"begin 5", "end 5"}));

    // Off the frame only the listener hears.
    knob->remember();
    f->removeView(knob);
    knob->beginEdit();
    knob->endEdit();
    knob->forget();
    EXPECT_EQ(editor.log.size(), 2u);
    EXPECT_EQ(listener.log.size(), 4u);
    f->close();
}

TEST_F(Control, TheDefaultNeedsExactlyLeftAndControl)
{
    auto* knob = new CKnob(CRect(0, 0, 40, 40), &listener, 1, nullptr, nullptr);
    frame->addView(knob);
    EXPECT_FALSE(knob->checkDefaultValue(kLButton | kControl | kShift));
    EXPECT_FALSE(knob->checkDefaultValue(kLButton | kRButton | kControl));
    EXPECT_TRUE(knob->checkDefaultValue(kLButton | kControl));
    EXPECT_TRUE(knob->checkDefaultValue(kLButton | kControl));
    EXPECT_EQ(listener.log, (Log{"begin", "value 1", "end"}));
    EXPECT_EQ(knob->getValue(), 0.5f);
}

TEST_F(Control, AKnobTurnsWithWheelKeysAndDragAndEndsOnlyWhatItBegan)
{
    auto* knob = new CKnob(CRect(0, 0, 40, 40), &listener, 1, nullptr, nullptr);
    frame->addView(knob);
    host.wheel({20, 20}, 2.f);
    EXPECT_FLOAT_EQ(knob->getValue(), 0.2f);
    host.wheel({20, 20}, -1.f, kShift);
    EXPECT_FLOAT_EQ(knob->getValue(), 0.19f);
    frame->setFocusView(knob);
    host.keyDown({0, VKEY_UP, 0});
    EXPECT_FLOAT_EQ(knob->getValue(), 0.29f);
    EXPECT_FALSE(host.keyDown({'x', 0, 0}));
    listener.log.clear();
    CPoint where(20, 20);
    knob->onMouseUp(where, kLButton);
    EXPECT_TRUE(listener.log.empty());

    // Straight up is the middle of the range, beyond the gap the nearer end.
    host.mouseDown({20, 2});
    EXPECT_NEAR(knob->getValue(), 0.5f, 1e-6f);
    host.mouseMove({24, 39}, kLButton);
    EXPECT_EQ(knob->getValue(), 1.f);
    host.mouseUp({24, 39});
    // 200 pixels up are the whole range.
    host.mouseDown({20, 20}, kLButton | kAlt);
    host.mouseMove({20, 70}, kLButton | kAlt);
    EXPECT_NEAR(knob->getValue(), 0.75f, 1e-6f);
    host.mouseUp({20, 70});
    EXPECT_EQ(listener.log.front(), "begin");
    EXPECT_EQ(listener.log.back(), "end");
}

TEST_F(Control, CopiesStandAloneAndKnowTheirType)
{
    auto* box = new CViewContainer(CRect(0, 0, 50, 50));
    box->addView(new CTextEdit(CRect(0, 0, 10, 10), &listener, 3, "name"));
    frame->addView(box);
    const auto copy = owned(static_cast<CViewContainer*>(box->newCopy()));
    EXPECT_TRUE(copy->isTypeOf("CViewContainer"));
    EXPECT_TRUE(copy->isTypeOf("CView"));
    EXPECT_FALSE(copy->isTypeOf("CControl"));
    EXPECT_FALSE(copy->isAttached());
    ASSERT_EQ(copy->getNbViews(), 1u);
    EXPECT_NE(copy->getView(0), box->getView(0));
    EXPECT_STREQ(static_cast<CTextEdit*>(copy->getView(0))->getText(), "name");
    EXPECT_EQ(copy->getView(0)->getParentView(), nullptr);
}

TEST_F(Control, AddingAdoptsAndRemovingGivesBack)
{
    auto* v = addProbe(CRect(0, 0, 5, 5), "v");
    EXPECT_EQ(v->getNbReference(), 2);
    frame->removeView(v, false);
    EXPECT_EQ(v->getNbReference(), 1);
    EXPECT_FALSE(frame->removeView(v));
    v->forget();
    EXPECT_EQ(log, (Log{"v dies"}));
    const auto bitmap = owned(filmstrip(9003, 1));
    frame->addView(new CMovieBitmap(CRect(0, 0, 10, 10), nullptr, 0, bitmap));
    EXPECT_EQ(bitmap->getNbReference(), 2);
    frame->removeAll();
    EXPECT_EQ(bitmap->getNbReference(), 1);
}

}  // namespace
