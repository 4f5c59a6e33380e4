// An equaliser band's knob: the law of its gain, the ten steps of its ring, and their labels.
#include "CAnimCoaxT46CustomKnob.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

// A point inside each label, from the view's corner; step 0 is off.
const CPoint kOnLabel[10] = {{60, 5},  {95, 8},  {108, 26}, {109, 48}, {105, 72},
                             {92, 91}, {60, 93}, {30, 90},  {13, 71},  {11, 48}};

struct BandKnob : ControlStage {
    BandKnob()
        : knob(new CAnimCoaxT46CustomKnob(CRect(2, 36, 123, 137), &listener, 28, 129, 71, nullptr,
                                          CPoint(0, 0), 25, 12, 25, 18))
    {
        knob->setOuterBitmap(filmstrip(71, 71, 24), 24);
        // Lit labels: each pixel tells where in the picture it comes from.
        knob->setOverlayBitmap(paintedBitmap(121, 101, [](int32_t x, int32_t y) {
            return CColor(200, static_cast<uint8_t>(x), static_cast<uint8_t>(y), 255);
        }));
        knob->setInnerRadius(21);
        knob->setDefaultValue(0.5f);
        add(knob);
        knob->setValue(0.5f);
    }

    CPoint inView(CPoint p) const { return p + CPoint(2, 36); }
    int step() const { return static_cast<int>(knob->getValue2() * 9 + 0.5f); }
    bool isLit(CPoint p)
    {
        const CColor color = seen(static_cast<int>(p.x) + 2, static_cast<int>(p.y) + 36);
        return color == CColor(200, static_cast<uint8_t>(p.x), static_cast<uint8_t>(p.y), 255);
    }

    const CPoint inner = CPoint(62.5, 83.5);  // centre of the picture
    const CPoint ring = CPoint(62.5, 53.5);
    CAnimCoaxT46CustomKnob* knob;
};

TEST_F(BandKnob, LawAgreesWithItsFormulaAndMirrorsAtTheMiddle)
{
    // 0.195897 exp(1.78416 (0.561501 ln 5.09949 t)) and
    // 0.560488 ln(5.10473 (0.196098 exp(1.78094 t))), worked in double precision.
    const struct {
        float x, position, value;
    } rows[] = {
        {0.51f, 0.510358f, 0.509655f}, {0.6f, 0.600598f, 0.599493f}, {0.75f, 0.751050f, 0.749222f},
        {0.9f, 0.901557f, 0.898951f},  {1.0f, 1.0f, 0.998771f},
    };
    for (const auto& row : rows) {
        EXPECT_NEAR(knob->positionFromValue(row.x), row.position, 2e-6) << row.x;
        EXPECT_NEAR(knob->valueFromPosition(row.x), row.value, 2e-6) << row.x;
        EXPECT_NEAR(knob->positionFromValue(1 - row.x), 1 - row.position, 2e-6) << row.x;
        EXPECT_NEAR(knob->valueFromPosition(1 - row.x), 1 - row.value, 2e-6) << row.x;
    }
    EXPECT_NEAR(knob->positionFromValue(0.5f), 0.499667, 2e-6);  // mirrored: not quite the middle
    EXPECT_EQ(knob->valueFromPosition(0.5f), 0.5f);
    EXPECT_EQ(knob->positionFromValue(1.2f), 1.f);
    EXPECT_EQ(knob->positionFromValue(-0.2f), 0.f);

    knob->setValue(0.9f);  // position 0.901557
    EXPECT_NEAR(knob->getValue(), 0.900506, 3e-6);
}

TEST_F(BandKnob, WheelMovesTheParameterAndNotThePosition)
{
    wheel(inner, 1);  // 0.499994 + 1/32, through the law and back: 0.531273
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0.5313", "end"}));
    knob->setValue(0.75f);  // reads 0.750270; a step of 1/32 less
    wheel(inner, -1);
    EXPECT_NEAR(knob->getValue(), 0.719248, 3e-6);
    knob->setValue(0.75f);
    wheel(inner, -1, kShift);  // 1/320
    EXPECT_NEAR(knob->getValue(), 0.747412, 3e-6);
    knob->setValue(1);
    wheel(inner, 1);
    EXPECT_NEAR(knob->getValue(), 0.998771, 2e-6);
}

TEST_F(BandKnob, WheelAndDragStepTheRing)
{
    for (int notch = 1; notch <= 10; ++notch) {
        wheel(ring, 1, notch % 2 ? kShift : 0);  // as coarse with Shift
        EXPECT_EQ(step(), std::min(notch, 9));
    }
    EXPECT_EQ(knob->getValue2(), 1.f);
    knob->setValue2(0);
    press(ring);
    drag(ring - CPoint(0, 32));
    EXPECT_FLOAT_EQ(knob->getValue2(), 32 / 96.f);
    release(ring);
    EXPECT_EQ(listener.heard().back(), "end");
}

TEST_F(BandKnob, ClickOnALabelSetsItsStepInOneGesture)
{
    for (int hit = 9; hit >= 0; --hit) {
        SCOPED_TRACE(hit);
        EXPECT_EQ(press(inView(kOnLabel[hit])), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
        char change[20];
        std::snprintf(change, sizeof change, "ring %.4g", hit / 9.0);
        EXPECT_EQ(listener.heard(), (Calls{"begin", change, "end"}));
        for (int label = 0; label < 10; ++label)
            EXPECT_EQ(isLit(kOnLabel[label]), label == hit) << label;
        EXPECT_EQ(shownFrame(28, 49), 2 * hit);  // only even frames of the ring
    }
    EXPECT_FLOAT_EQ(knob->getValue(), knob->valueFromPosition(knob->positionFromValue(0.5f)));
}

TEST_F(BandKnob, LabelsEndBeforeTheirRightAndBottomEdges)
{
    const struct {
        CPoint where;
        bool hit;
    } rows[] = {
        {{81, 0}, true},   {{80.9, 0}, false}, {{108.9, 14.9}, true},
        {{109, 8}, false}, {{95, 15}, false},
    };
    for (const auto& row : rows) {
        knob->setValue2(0);
        click(inView(row.where));
        EXPECT_EQ(step(), row.hit ? 1 : 0) << row.where.x << ", " << row.where.y;
    }
}

TEST_F(BandKnob, ClickOnOffSwitchesBackToTheLastStep)
{
    click(inView(kOnLabel[0]));  // nothing to go back to
    EXPECT_EQ(step(), 0);
    click(inView(kOnLabel[3]));
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 0);
    click(inView(kOnLabel[0]), kLButton | kDoubleClick);
    EXPECT_EQ(step(), 3);

    // However the step was reached:
    wheel(ring, 1);
    wheel(ring, -1);
    wheel(ring, 1);  // 4
    for (int i = 0; i < 4; ++i)
        wheel(ring, -1);
    EXPECT_EQ(step(), 0);
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 1);  // the last one passed on the way down
    press(ring);
    drag(ring - CPoint(0, 45));
    drag(ring + CPoint(0, 100));
    release(ring);
    EXPECT_EQ(step(), 0);
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 5);      // (1/9 + 45/96) * 9 = 5.2
    knob->setValue2(7 / 9.f);  // by the host
    click(inView(kOnLabel[0]));
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 7);
}

TEST_F(BandKnob, ControlIsLeftToTheListenerAndOnlyADoubleClickResets)
{
    bool held = false;
    listener.onChange = [&](CControl*) { held = knob->getCtrlHeld(); };
    knob->setValue(0.8f);
    press(inner, kLButton | kControl);
    EXPECT_TRUE(held);
    drag(inner - CPoint(0, 4), kLButton | kControl);
    EXPECT_TRUE(held);
    EXPECT_NEAR(knob->getValue(), 0.82, 1e-3);
    drag(inner - CPoint(0, 4));
    EXPECT_FALSE(held);
    release(inner);
    EXPECT_EQ(listener.heard().size(), 8u);  // begin, two a move, end

    click(inView(kOnLabel[2]), kLButton | kControl);
    EXPECT_TRUE(held);
    wheel(inner, 1);
    EXPECT_FALSE(held);
    wheel(inner, 1, kControl);
    EXPECT_TRUE(held);
    click(inner, kLButton | kControl | kDoubleClick);
    EXPECT_EQ(knob->getValue(), 0.5f);
}

TEST_F(BandKnob, OtherButtonsAndWildRingValuesDoNoHarm)
{
    EXPECT_EQ(press(inView(kOnLabel[4]), kRButton), kMouseEventNotHandled);
    EXPECT_EQ(listener.heard(), Calls{});
    knob->setValue2(-3);
    knob->setDirty();
    EXPECT_EQ(shownFrame(28, 49), 0);
    EXPECT_TRUE(isLit(kOnLabel[0]));
    knob->setValue2(40);
    knob->setDirty();
    EXPECT_TRUE(isLit(kOnLabel[9]));
    knob->setMax2(0.449f);  // rounded to tenths
    EXPECT_FLOAT_EQ(knob->getMax2(), 0.4f);
    knob->setMax2(0.46f);
    EXPECT_FLOAT_EQ(knob->getMax2(), 0.5f);
}

}  // namespace
