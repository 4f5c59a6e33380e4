// TemplateEditor: how control movements become parameter edits, and the link of the two channels.
#include "editor/TemplateEditor.h"

#include "params/ids/ParameterTraits.h"
#include "params/lookup/Truncate.h"

#include "editor/controls/CAnimCoaxT46Knob.h"

#include <algorithm>
#include <utility>

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

namespace {

bool isSwitch(ParamID id)
{
    const param::Kind kind = param::traitsOf(id).kind;
    return kind == param::Kind::SwitchOff || kind == param::Kind::SwitchOn;
}

}  // namespace

// Rounding in a gain knob's law can leave 0..1 slightly.
void TemplateEditor::write(ParamID id, double value)
{
    const double held = std::clamp(value, 0.0, 1.0);
    controller->setParamNormalized(id, held);
    controller->performEdit(id, held);
}

void TemplateEditor::valueChanged(CControl* control)
{
    // A resize or a dialog may end with the host closing the editor.
    const IPtr<TemplateEditor> alive(this);
    ZKRPresetSystemEditor3::valueChanged(control);

    const int32 tag = control->getTag();
    const auto id = static_cast<ParamID>(tag);
    const double value = static_cast<double>(control->getValue());
    if (tag == kTagInfo)
        return toggleInfo();
    if (tag == kTagBothBypass) {
        write(kBpsCh1, value);
        return write(kBpsCh2, value);
    }
    if (id >= kPresetParamCount)
        return;
    if (param::traitsOf(id).strip == param::Strip::None)
        editGlobal(id, value);
    else if (isSwitch(id))
        editSwitch(id, value);
    else if (auto* const knob = dynamic_cast<CAnimCoaxT46Knob*>(control))
        editKnob(id, *knob);
}

void TemplateEditor::editGlobal(ParamID id, double value)
{
    write(id, value);
    switch (id) {
    case kPower:
        return setPower(value);
    case kMS:
        show(label, value);
        if (mainPanel)
            mainPanel->setParameter(kMS, value);
        return;
    case kQB11:
    case k2x:
        return updateLayout();
    case kLink:
        linkOn = switchValue(value);
        return captureLinkOffsets(linkOn);
    default:
        return;
    }
}

void TemplateEditor::editSwitch(ParamID id, double value)
{
    setLinkedByDelta(id, value, param::partnerOf(id));
    for (auto& [processId, strip] :
         {std::pair{kProcL, equaliserL.get()}, std::pair{kProcR, equaliserR.get()},
          std::pair{kProcL2, secondaryL.get()}, std::pair{kProcR2, secondaryR.get()}})
        if (id == processId && strip)
            strip->setLedState(value);
}

void TemplateEditor::editKnob(ParamID knobId, const CAnimCoaxT46Knob& knob)
{
    const ParamID id = knob.getRingIsOuter() ? param::ringOf(knobId) : knobId;
    const ParamID partner = param::partnerOf(id);
    if (knob.getCtrlHeld())
        linkOffsets[id] = linkOffsets[partner] = 0.0;
    const float value = id == knobId ? knob.getValue() : knob.getValue2();
    setLinkedByOffset(id, static_cast<double>(value), partner, linkOffsets[id]);
}

// Clamping does not change the offset: when the knob moves back, the distance is as before.
void TemplateEditor::setLinkedByOffset(ParamID id, double value, ParamID partner, double offset)
{
    write(id, value);
    if (roundedParameter(kLink))
        write(partner, std::clamp(value - offset, 0.0, 1.0));
}

// The partner moves by the same amount, within 0 to 1: two switches that differ become alike.
void TemplateEditor::setLinkedByDelta(ParamID id, double value, ParamID partner)
{
    const double moved = value - controller->getParamNormalized(id);
    const double partnerValue =
        std::clamp(moved + controller->getParamNormalized(partner), 0.0, 1.0);
    write(id, value);
    if (linkOn)
        write(partner, partnerValue);
}

void TemplateEditor::captureLinkOffsets(int32 link)
{
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        if (param::traitsOf(id).side != param::Side::None)
            linkOffsets[id] = link ? controller->getParamNormalized(id)
                    - controller->getParamNormalized(param::partnerOf(id))
                                   : 0.0;
}

void TemplateEditor::toggleInfo()
{
    if (!frame || !info)
        return;
    if (infoShown) {
        hideInfo();
    } else {
        infoShown = 1;
        frame->addView(info);
        info->setMouseableArea(infoRect);
        info->setViewSize(infoRect, true);
    }
    if (mainPanel)
        mainPanel->setParameter(kTagInfo, infoShown);
}

}  // namespace Vst
}  // namespace Steinberg
