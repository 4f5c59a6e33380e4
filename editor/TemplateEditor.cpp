// TemplateEditor: opening, closing, and showing the parameters.
#include "editor/TemplateEditor.h"

#include "BitmapNumbers.h"
#include "Product.h"
#include "editor/EditorLayout.h"
#include "params/ids/ParameterIds.h"
#include "params/lookup/Truncate.h"
#include "presets/ZKRPresetSystemController3.h"

#include "editor/controls/CZKRTextEdit.h"

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

namespace {

const CRect kLabelRect(33, 455, 791, 487);
const CColor kHintColor(223, 222, 223, 255);

}  // namespace

TemplateEditor::TemplateEditor(ZKRPresetSystemController3* presets)
    : ZKRPresetSystemEditor3(presets)
{
}

IPlugView* TemplateEditor::create(ZKRPresetSystemController3& presets)
{
    return new TemplateEditor(&presets);
}

int32 TemplateEditor::roundedParameter(ParamID id) const
{
    return switchValue(controller->getParamNormalized(id));
}

tresult PLUGIN_API TemplateEditor::getSize(ViewRect* size)
{
    if (!frame)
        rect = ViewRect(0, 0,
                        editorWidth(layoutModeOf(roundedParameter(kQB11), roundedParameter(k2x))),
                        kEditorHeight);
    return ZKRPresetSystemEditor3::getSize(size);
}

bool PLUGIN_API TemplateEditor::open(void* parent, const PlatformType& type)
{
    bitmaps.emplace();
    frame = new ZKRFrame(CRect(0, 0, editorWidth(0), kEditorHeight), this);
    frame->setBackgroundColor(kGreyCColor);
    frame->setBackground(editorBitmap(bitmaps::kFrameBackground));
    if (!frame->open(parent, type, frameConfig())) {
        frame->forget();
        frame = nullptr;
        bitmaps.reset();
        return false;
    }

    label = new CChannelLabel(kLabelRect, this, kMS, editorBitmap(bitmaps::kChannelLabel));
    label->setValue(0);
    frame->addView(label);

    preampL = std::make_unique<StripEditorQB9>(this, kDriveL);
    equaliserL = std::make_unique<StripEditorT46>(this, kProcL);
    preampR = std::make_unique<StripEditorQB9>(this, kDriveR);
    equaliserR = std::make_unique<StripEditorT46>(this, kProcR);
    secondaryL = std::make_unique<StripEditorT46>(this, kProcL2);
    secondaryR = std::make_unique<StripEditorT46>(this, kProcR2);

    createPresetPanel(frame);
    presetName()->setTextOffset(CPoint(0, 0));

    hintLabel = new CTextLabel(kHintRect, product::kWebAddress);
    hintLabel->setFont(kNormalFontSmall);
    hintLabel->setFontColor(kHintColor);
    hintLabel->setBackColor(kTransparentCColor);
    hintLabel->setFrameColor(kTransparentCColor);
    frame->addView(hintLabel);

    mainPanel = std::make_unique<MainPanel>(this);
    separator = std::make_unique<StripSeparator>(this);

    infoRect = CRect(0, 0, editorWidth(0), kEditorHeight);
    info = new CInfo(infoRect, this, kTagInfo);
    infoShown = 0;

    showAllParameters();
    captureLinkOffsets(roundedParameter(kLink));
    layoutMode = -1;
    updateLayout();
    lastHoverTag = kNoHover;
    return true;
}

void PLUGIN_API TemplateEditor::close()
{
    if (!frame)
        return;
    // Ends typing in the name field while the panel still exists, so that the name is taken over.
    frame->setFocusView(nullptr);
    label = nullptr;
    forEachStrip([](StripEditor& strip) { strip.detach(); });
    mainPanel.reset();
    preampL.reset();
    preampR.reset();
    equaliserL.reset();
    equaliserR.reset();
    secondaryL.reset();
    secondaryR.reset();
    separator.reset();
    hintLabel = nullptr;
    closePresetPanel();
    hideInfo();
    if (info)
        info->forget();
    info = nullptr;
    auto* const closing = static_cast<ZKRFrame*>(frame);
    frame = nullptr;
    // Not when the editor is being destroyed, which closes a window that the host has left open.
    if (getNbReference() > 0)
        closing->keep(std::make_shared<IPtr<TemplateEditor>>(this));
    closing->close();
    bitmaps.reset();
}

void TemplateEditor::showAllParameters()
{
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        setParameter(id, controller->getParamNormalized(id));
}

void TemplateEditor::setPower(double value)
{
    const int32 state = switchValue(value);
    forEachStrip([&](StripEditor& strip) { strip.setPower(state); });
}

void TemplateEditor::takeUpPostponed()
{
    const IPtr<TemplateEditor> alive(this);
    AttachedEditor::takeUpPostponed();
}

void TemplateEditor::setParameter(ParamID id, ParamValue value)
{
    // The host may close and release the editor when it is asked to resize the window.
    const IPtr<TemplateEditor> alive(this);
    const auto tag = static_cast<int32>(id);
    updatePresetPanel(tag, value);
    switch (id) {
    case kPower:
        setPower(value);
        break;
    case kMS:
        show(label, value);
        break;
    case kQB11:
        preampOnShown = switchValue(value);
        updateLayout();
        // Makes the next tick write the hint again if the mouse is on this button.
        lastHoverTag = k2x;
        break;
    case k2x:
        secondaryOnShown = switchValue(value);
        updateLayout();
        lastHoverTag = kQB11;
        break;
    case kLink:
        linkOn = switchValue(value);
        captureLinkOffsets(linkOn);
        break;
    case kLatency:
        if (info)
            info->setLatency(value);
        break;
    default:
        break;
    }
    forEachStrip([&](StripEditor& strip) { strip.setParameter(tag, value); });
}

}  // namespace Vst
}  // namespace Steinberg
