// TemplateEditor: the timer's tick, and the effects of the mouse over a control.
#include "editor/TemplateEditor.h"

#include "Product.h"
#include "params/ids/ParameterIds.h"

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

void TemplateEditor::refreshHoverRects()
{
    for (std::size_t i = 0; i < hoverRects.size(); ++i) {
        const int32 tag = kHoverTargets[i];
        if (const CControl* const button = presetControl(tag))
            hoverRects[i] = button->getViewSize();
        else if (mainPanel)
            hoverRects[i] = mainPanel->controlRect(tag);
    }
}

CMessageResult TemplateEditor::notify(CBaseObject* sender, IdStringPtr message)
{
    if (message == CVSTGUITimer::kMsgTimer && frame) {
        takeUpPostponed();
        // A change of size asks the host, which may have closed the editor.
        if (!frame)
            return kMessageNotified;
        if (mainPanel)
            mainPanel->idle();
        followMouse();
    }
    return ZKRPresetSystemEditor3::notify(sender, message);
}

void TemplateEditor::followMouse()
{
    CPoint where;
    hoverTag = kNoHover;
    if (frame->getCurrentMouseLocation(where))
        for (std::size_t i = 0; i < hoverRects.size() && hoverTag == kNoHover; ++i)
            if (hoverRects[i].pointInside(where))
                hoverTag = kHoverTargets[i];
    if (hoverTag == lastHoverTag)
        return;
    leave(lastHoverTag, where);
    enter(hoverTag, where);
    lastHoverTag = hoverTag;
}

// The control that lights up under the mouse; null for those that have a hint instead.
CControl* TemplateEditor::hoverControl(int32 tag) const
{
    if (tag == kTagInfo)
        return mainPanel ? mainPanel->control(tag) : nullptr;
    return presetControl(tag);
}

void TemplateEditor::leave(int32 tag, CPoint where)
{
    if (CControl* const control = hoverControl(tag))
        control->onMouseExited(where, kLButton);
    else if (hintText(tag) && hintLabel)
        hintLabel->setText(product::kWebAddress);
}

void TemplateEditor::enter(int32 tag, CPoint where)
{
    if (CControl* const control = hoverControl(tag))
        control->onMouseEntered(where, kLButton);
    else if (hintText(tag) && hintLabel)
        hintLabel->setText(hintText(tag));
}

const char* TemplateEditor::hintText(int32 tag) const
{
    switch (tag) {
    case kBpsCh1:
        return "Turns off left channel processing.";
    case kBpsCh2:
        return "Turns off right channel processing.";
    case kQB11:
        return preampOnShown ? "Click to disable and hide QB11s" : "Click to enable QB11s";
    case k2x:
        return secondaryOnShown ? "Click to disable and hide secondary T46s"
                                : "Click to enable secondary T46s";
    default:
        return nullptr;
    }
}

}  // namespace Vst
}  // namespace Steinberg
