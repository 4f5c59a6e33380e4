#include "editor/StripEditorQB9.h"

#include "BitmapNumbers.h"
#include "editor/EditorBitmap.h"
#include "params/ids/ParameterTraits.h"

#include "editor/controls/CAnimDriveKnob.h"
#include "editor/controls/CAnimFreqKnob.h"
#include "editor/controls/CAnimGainKnob.h"
#include "editor/controls/CPoweredButton.h"

using namespace VSTGUI;
using param::Control;

namespace {

constexpr int32_t kLevelFrames = 101, kHighPassFrames = 12;
constexpr int32_t kKnobSize = 82;  // pixels, of one frame
constexpr CCoord kKnobInset = 15;  // pixels, from the view's edge to the picture

}  // namespace

StripEditorQB9::StripEditorQB9(IControlListener* listener, unsigned tagBase)
    : StripEditor(listener), tagBase(tagBase)
{
}

bool StripEditorQB9::attach(CFrame* parent, const CPoint& origin)
{
    if (!StripEditor::attach(parent, origin))
        return false;
    container->setBackground(editorBitmap(bitmaps::kQb9Background));

    const auto tagOf = [this](Control control) {
        return static_cast<int32_t>(param::besideOf(tagBase, control));
    };
    const auto addLevelKnob = [&](auto*& knob, const CRect& rect, Control control) {
        using Knob = std::remove_reference_t<decltype(*knob)>;
        knob = new Knob(rect, listener, tagOf(control), kLevelFrames, kKnobSize,
                        editorBitmap(bitmaps::kLevelKnob), CPoint(0, 0), kKnobInset);
        knob->setValue(0.5f);
        knob->setDefaultValue(0.5f);
        knob->setInnerRadius(21);
        knob->setValue2(0);
        knob->setDefaultValue2(0);
        container->addView(knob);
    };
    addLevelKnob(drive, {7, 29, 119, 141}, Control::Drive);
    addLevelKnob(output, {7, 230, 119, 342}, Control::Output);

    highPass = new CAnimFreqKnob({7, 128, 119, 240}, listener, tagOf(Control::HighPass),
                                 kHighPassFrames, kKnobSize, editorBitmap(bitmaps::kHighPassDial),
                                 CPoint(0, 0), kKnobInset);
    highPass->setOverlayBitmap(editorBitmap(bitmaps::kHighPassLabels));
    highPass->setValue(0);
    highPass->setDefaultValue(0);
    highPass->setInnerRadius(50);
    highPass->setWheelStep(1.0f / 12.0f);
    highPass->setWheelFine(1);
    highPass->setFineFactor(1);
    highPass->setDragRange(1.0f / 120.0f);
    container->addView(highPass);

    const auto addButton = [&](CPoweredButton*& button, const CRect& rect, Control control,
                               int32_t bitmap) {
        button = new CPoweredButton(rect, listener, tagOf(control), editorBitmap(bitmap), true);
        container->addView(button);
    };
    addButton(boost28k, {20, 345, 62, 379}, Control::Boost28k, bitmaps::k28kButton);
    addButton(transformer, {21, 381, 61, 415}, Control::Transformer, bitmaps::kTransformerButton);
    addButton(amplifier, {61, 381, 103, 415}, Control::Amplifier, bitmaps::kAmplifierButton);
    addButton(phase, {62, 345, 104, 379}, Control::Phase, bitmaps::kPhaseButton);
    return true;
}

void StripEditorQB9::detach()
{
    drive = nullptr;
    output = nullptr;
    highPass = nullptr;
    boost28k = transformer = amplifier = phase = nullptr;
    StripEditor::detach();
}

void StripEditorQB9::setParameter(int32_t id, double value)
{
    for (CControl* const control : std::initializer_list<CControl*>{
             drive, highPass, output, boost28k, phase, transformer, amplifier})
        if (control && control->getTag() == id)
            show(control, value);
}

// Knobs have no power state.
void StripEditorQB9::setPower(int32_t state)
{
    for (CPoweredButton* const button : {phase, transformer, amplifier, boost28k})
        showPower(button, state);
}
