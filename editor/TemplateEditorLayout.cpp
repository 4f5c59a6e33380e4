// TemplateEditor: which strips are shown, and the positions of everything that moves with them.
#include "editor/TemplateEditor.h"

#include "editor/EditorLayout.h"
#include "params/ids/ParameterIds.h"

#include <vector>

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

namespace {

constexpr CCoord kFirstStripX = 42, kStripY = 7;
constexpr CCoord kStripWidth = 125, kSeparatorWidth = 13, kMainPanelWidth = 89;

}  // namespace

void TemplateEditor::updateLayout()
{
    if (!frame)
        return;
    const int32 mode = layoutModeOf(roundedParameter(kQB11), roundedParameter(k2x));
    if (mode == layoutMode)
        return;
    // Stored first, since showAllParameters calls this function again.
    layoutMode = mode;
    const int32 width = editorWidth(mode);

    placeStrips(mode);
    if (mainPanel)
        mainPanel->attach(frame, CPoint(width - kMainPanelWidth, 0));
    if (label)
        label->setLayoutMode(mode);
    infoRect = CRect(0, 0, width, kEditorHeight);
    hideInfo();
    placeManualButton(width);
    if (hintLabel) {
        const CRect& place = mode == 3 ? kWideHintRect : kHintRect;
        hintLabel->setViewSize(place);
        hintLabel->setMouseableArea(place);
    }
    refreshHoverRects();
    showAllParameters();
    // Another thread has switched a module meanwhile, and that nested call has done the layout.
    if (layoutMode != mode)
        return;
    frame->setSize(width, kEditorHeight);
    const CPoint size(width, kEditorHeight);
    setEditorSizeConstrains(size, size);
    requestResize(size);
}

void TemplateEditor::placeStrips(int32 mode)
{
    const bool preamp = mode & 1, secondary = mode & 2;
    std::vector<StripEditor*> shown;
    const auto addChannel = [&](StripEditor* first, StripEditor* second, StripEditor* third) {
        if (preamp)
            shown.push_back(first);
        shown.push_back(second);
        if (secondary)
            shown.push_back(third);
    };
    addChannel(preampL.get(), equaliserL.get(), secondaryL.get());
    shown.push_back(separator.get());
    addChannel(preampR.get(), equaliserR.get(), secondaryR.get());

    forEachStrip([](StripEditor& strip) { strip.detach(); });
    CCoord x = kFirstStripX;
    for (StripEditor* const strip : shown) {
        if (strip)
            strip->attach(frame, CPoint(x, kStripY));
        x += strip == separator.get() ? kSeparatorWidth : kStripWidth;
    }
}

// 16 pixels from the right edge in the smallest window, 22 in the others.
void TemplateEditor::placeManualButton(int32 width)
{
    CControl* const button = presetControl(kManualTag);
    if (!button)
        return;
    const CRect place = width == editorWidth(0) ? CRect(378, 488, 390, 503)
                                                : CRect(width - 22, 488, width - 10, 503);
    button->setViewSize(place);
    button->setMouseableArea(place);
}

// The view is not released: the editor owns the hidden panel.
void TemplateEditor::hideInfo()
{
    if (infoShown && frame && info)
        frame->removeView(info, false);
    infoShown = 0;
}

}  // namespace Vst
}  // namespace Steinberg
