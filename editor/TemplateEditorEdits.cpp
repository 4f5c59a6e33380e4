// TemplateEditor: how a control's movement becomes edits of parameters, and the link of the two
// channels.
#include "TemplateEditor.h"

#include "ParameterIds.h"
#include "Truncate.h"

#include "controls/CAnimCoaxT46Knob.h"

#include <algorithm>

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

namespace {

// The left ids of the continuous pairs; the right one is the next id.
constexpr std::array<ParamID, TemplateEditor::kLinkedPairs> kLeftIds{
    kLFreqL,  kLGainL,  kMFreqL,  kMGainL,  kHFreqL,  kHGainL,  kDriveL, kHpfL,
    kOutputL, kLFreqL2, kLGainL2, kMFreqL2, kMGainL2, kHFreqL2, kHGainL2};

// Left on even ids, right on odd ones.
constexpr ParamID partnerOf(ParamID id)
{
    return id ^ 1u;
}

constexpr bool isLeft(ParamID id)
{
    return (id & 1u) == 0;
}

std::size_t pairOf(ParamID id)
{
    const ParamID left = isLeft(id) ? id : partnerOf(id);
    return static_cast<std::size_t>(std::find(kLeftIds.begin(), kLeftIds.end(), left)
                                    - kLeftIds.begin());
}

constexpr bool isBetween(int32 tag, ParameterId first, ParameterId last)
{
    return tag >= static_cast<int32>(first) && tag <= static_cast<int32>(last);
}

enum class Edit { None, Plain, Continuous, Coaxial, Switch };

// What kind of parameter a control edits.
Edit editOf(int32 tag)
{
    switch (tag) {
    case kBpsCh1:
    case kBpsCh2:
    case kChannel:
        return Edit::Plain;
    case kDriveL:
    case kDriveR:
    case kHpfL:
    case kHpfR:
    case kOutputL:
    case kOutputR:
        return Edit::Continuous;
    case kLGainL:
    case kLGainR:
    case kMGainL:
    case kMGainR:
    case kHGainL:
    case kHGainR:
    case kLGainL2:
    case kLGainR2:
    case kMGainL2:
    case kMGainR2:
    case kHGainL2:
    case kHGainR2:
        return Edit::Coaxial;
    case kHShelfL:
    case kHShelfR:
    case kHShlfL2:
    case kHShlfR2:
        return Edit::Switch;
    default:
        // Switches of the strips' channels: 28k to amplifier, process and low shelf.
        return isBetween(tag, k28kL, kLShelfR) || isBetween(tag, kProcL2, kLShlfR2) ? Edit::Switch
                                                                                    : Edit::None;
    }
}

}  // namespace

// The law of a gain knob leaves 0..1 by a hair at its ends.
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
    switch (tag) {
    case kPower:
        write(id, value);
        return setPower(value);
    case kMS:
        write(id, value);
        show(label, value);
        if (mainPanel)
            mainPanel->setParameter(kMS, value);
        return;
    case kQB11:
    case k2x:
        write(id, value);
        return updateLayout();
    case kLink:
        write(id, value);
        linkOn = switchValue(value);
        return captureLinkOffsets(linkOn);
    case kTagInfo:
        return toggleInfo();
    case kTagBothBypass:
        write(kBpsCh1, value);
        return write(kBpsCh2, value);
    default:
        break;
    }

    switch (editOf(tag)) {
    case Edit::None:
        return;
    case Edit::Plain:
        return write(id, value);
    case Edit::Switch:
        setLinkedByDelta(id, value, partnerOf(id));
        for (auto& [processId, strip] :
             {std::pair{kProcL, equaliserL.get()}, std::pair{kProcR, equaliserR.get()},
              std::pair{kProcL2, secondaryL.get()}, std::pair{kProcR2, secondaryR.get()}})
            if (id == processId && strip)
                strip->setLedState(value);
        return;
    case Edit::Continuous:
    case Edit::Coaxial: {
        auto* const knob = dynamic_cast<CAnimCoaxT46Knob*>(control);
        if (!knob)
            return;
        // The ring of a coaxial knob is the frequency, two below the gain.
        const bool ring = editOf(tag) == Edit::Coaxial && knob->getRingIsOuter();
        return editContinuous(ring ? id - 2 : id,
                              ring ? static_cast<double>(knob->getValue2()) : value,
                              knob->getCtrlHeld());
    }
    }
}

void TemplateEditor::editContinuous(ParamID id, double value, bool unlinkFirst)
{
    double& entry = linkOffsets[pairOf(id)];
    if (unlinkFirst)
        entry = 0.0;
    setLinkedByOffset(id, value, partnerOf(id), isLeft(id) ? entry : -entry);
}

// The offset is kept while the partner stands at its limit, so the distance comes back.
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
    for (std::size_t i = 0; i < kLinkedPairs; ++i)
        linkOffsets[i] = link ? controller->getParamNormalized(kLeftIds[i])
                - controller->getParamNormalized(partnerOf(kLeftIds[i]))
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
