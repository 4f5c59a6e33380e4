#include "editor/StripEditorT46.h"

#include "BitmapNumbers.h"
#include "editor/EditorBitmap.h"
#include "params/ids/ParameterTraits.h"

#include "editor/controls/CAnimCoaxT46CustomKnob.h"
#include "editor/controls/CPowerLED.h"
#include "editor/controls/CPoweredButton.h"

using namespace VSTGUI;
using param::Control;

namespace {

constexpr int32_t kRingFrames = 24, kKnobFrames = 129;
constexpr int32_t kKnobSize = 71;  // pixels, of one frame
constexpr CCoord kLedHeight = 22;

void showRing(CAnimCoaxT46CustomKnob* knob, double value)
{
    if (!knob)
        return;
    knob->setValue2(static_cast<float>(value));
    knob->setDirty();
}

}  // namespace

StripEditorT46::StripEditorT46(IControlListener* listener, unsigned tagBase)
    : StripEditor(listener), tagBase(tagBase)
{
}

bool StripEditorT46::attach(CFrame* parent, const CPoint& origin)
{
    if (!StripEditor::attach(parent, origin))
        return false;
    container->setBackground(editorBitmap(bitmaps::kT46Background));

    const auto tagOf = [this](Control control) {
        return static_cast<int32_t>(param::besideOf(tagBase, control));
    };
    // A knob's tag is the id of its gain; its ring sets the frequency.
    const auto addKnob = [&](const CRect& rect, Control control, int32_t labels) {
        auto* const knob = new CAnimCoaxT46CustomKnob(rect, listener, tagOf(control), kKnobFrames,
                                                      kKnobSize, editorBitmap(bitmaps::kCoaxKnob),
                                                      CPoint(0, 0), 25, 12, 25, 18);
        knob->setOverlayBitmap(editorBitmap(labels));
        // The middle knob gets its first value from the parameters.
        if (control != Control::MidGain)
            knob->setValue(0.5f);
        knob->setDefaultValue(0.5f);
        knob->setInnerRadius(21);
        knob->setOuterBitmap(editorBitmap(bitmaps::kCoaxRing), kRingFrames);
        knob->setValue2(0);
        knob->setDefaultValue2(0);
        container->addView(knob);
        return knob;
    };
    highBand = addKnob({2, 36, 123, 137}, Control::HighGain, bitmaps::kHighBandLabels);
    midBand = addKnob({2, 138, 123, 239}, Control::MidGain, bitmaps::kMidBandLabels);
    lowBand = addKnob({2, 240, 123, 341}, Control::LowGain, bitmaps::kLowBandLabels);

    const auto addButton = [&](const CRect& rect, Control control, int32_t bitmap) {
        auto* const button =
            new CPoweredButton(rect, listener, tagOf(control), editorBitmap(bitmap), true);
        container->addView(button);
        return button;
    };
    lowShelf = addButton({9, 372, 46, 426}, Control::LowShelf, bitmaps::kLowShelfButton);
    highShelf = addButton({45, 372, 80, 426}, Control::HighShelf, bitmaps::kHighShelfButton);
    process = addButton({80, 372, 116, 426}, Control::Process, bitmaps::kProcessButton);

    led =
        new CPowerLED({86, 346, 107, 368}, nullptr, 0, 2, kLedHeight, editorBitmap(bitmaps::kLed));
    container->addView(led);
    return true;
}

void StripEditorT46::detach()
{
    highBand = midBand = lowBand = nullptr;
    lowShelf = highShelf = process = nullptr;
    led = nullptr;
    StripEditor::detach();
}

void StripEditorT46::setParameter(int32_t id, double value)
{
    for (CAnimCoaxT46CustomKnob* const knob : {highBand, midBand, lowBand}) {
        if (!knob)
            continue;
        if (knob->getTag() == id)
            show(knob, value);
        else if (param::ringOf(static_cast<unsigned>(knob->getTag())) == static_cast<unsigned>(id))
            showRing(knob, value);
    }
    for (CPoweredButton* const button : {lowShelf, highShelf, process})
        if (button && button->getTag() == id)
            show(button, value);
    if (process && process->getTag() == id)
        show(led, value);
}

// Knobs have no power state.
void StripEditorT46::setPower(int32_t state)
{
    showPower(led, state);
    for (CPoweredButton* const button : {highShelf, lowShelf, process})
        showPower(button, state);
}

void StripEditorT46::setLedState(double value)
{
    show(led, value);
}
