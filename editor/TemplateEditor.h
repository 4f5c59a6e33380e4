// TemplateEditor: the plug-in's editor view. It shows the strips that the parameters QB11 and 2x
// switch on, resizes the host's window to them, turns control movements into parameter edits, and
// keeps the two channels linked.
#pragma once

#include "editor/CChannelLabel.h"
#include "editor/CInfo.h"
#include "editor/EditorBitmap.h"
#include "editor/MainPanel.h"
#include "editor/StripEditorQB9.h"
#include "editor/StripEditorT46.h"
#include "editor/StripSeparator.h"
#include "editor/ZKRFrame.h"
#include "editor/panel/ZKRPresetSystemEditor3.h"
#include "params/AttachedEditor.h"
#include "params/ids/ParameterIds.h"

#include <array>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>

class CAnimCoaxT46Knob;

namespace Steinberg {
namespace Vst {

class TemplateEditor : public ZKRPresetSystemEditor3, public AttachedEditor {
public:
    explicit TemplateEditor(ZKRPresetSystemController3* presets);

    // A new editor with one reference, which the host takes over.
    static IPlugView* create(ZKRPresetSystemController3& presets);

    // VSTGUIEditor
    bool PLUGIN_API open(void* parent, const VSTGUI::PlatformType& type) override;
    void PLUGIN_API close() override;
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;
    // Before it is opened, the size that it would have if it were opened now.
    tresult PLUGIN_API getSize(ViewRect* size) override;
    // Empty: the host is told of each gesture once, by controlBeginEdit and controlEndEdit.
    void beginEdit(int32_t) override { }
    void endEdit(int32_t) override { }

    // AttachedEditor
    void setParameter(ParamID id, ParamValue value) override;
    void takeUpPostponed() override;
    bool isOnOwnThread() const override { return VSTGUIEditor::isOnOwnThread(); }

    // VSTGUI::IControlListener
    void valueChanged(VSTGUI::CControl* control) override;

protected:
    ParamValue currentValue(ParamID id) const override
    {
        return controller->getParamNormalized(id);
    }

private:
    // Tags of the controls with a hover picture or a hint, in the order of the search.
    static constexpr int32 kHoverTargets[]{
        kTagInfo,          kSaveBankTag,   kDefaultBankTag, kLoadBankTag, kSavePresetTag,
        kDefaultPresetTag, kLoadPresetTag, kRockerTag,      kStoreATag,   kRecallATag,
        kStoreBTag,        kRecallBTag,    kManualTag,      k2x,          kQB11,
        kBpsCh1,           kBpsCh2};
    static constexpr int32 kNoHover = 58;  // the mouse is over none of them

    // Calls the function for each strip that exists.
    template <class Function>
    void forEachStrip(Function function) const
    {
        for (StripEditor* const strip : std::initializer_list<StripEditor*>{
                 mainPanel.get(), preampL.get(), preampR.get(), equaliserL.get(), equaliserR.get(),
                 secondaryL.get(), secondaryR.get(), separator.get()})
            if (strip)
                function(*strip);
    }

    // TemplateEditor.cpp
    int32 roundedParameter(ParamID id) const;
    void showAllParameters();
    void setPower(double value);

    // TemplateEditorLayout.cpp
    void updateLayout();
    void placeStrips(int32 mode);
    void placeManualButton(int32 width);
    void hideInfo();
    void refreshHoverRects();

    // TemplateEditorEdits.cpp
    void write(ParamID id, double value);
    void editGlobal(ParamID id, double value);
    void editSwitch(ParamID id, double value);
    void editKnob(ParamID knobId, const CAnimCoaxT46Knob& knob);
    void setLinkedByOffset(ParamID id, double value, ParamID partner, double offset);
    void setLinkedByDelta(ParamID id, double value, ParamID partner);
    void captureLinkOffsets(int32 link);
    void toggleInfo();

    // TemplateEditorHover.cpp
    void followMouse();
    void leave(int32 tag, VSTGUI::CPoint where);
    void enter(int32 tag, VSTGUI::CPoint where);
    VSTGUI::CControl* hoverControl(int32 tag) const;
    const char* hintText(int32 tag) const;

    std::optional<BitmapUser> bitmaps;  // while open

    // Owned by the frame.
    CChannelLabel* label = nullptr;
    VSTGUI::CTextLabel* hintLabel = nullptr;
    // Owned by the frame while shown, else by the editor.
    CInfo* info = nullptr;

    // Null while the editor is closed.
    std::unique_ptr<MainPanel> mainPanel;
    std::unique_ptr<StripSeparator> separator;
    std::unique_ptr<StripEditorQB9> preampL, preampR;
    std::unique_ptr<StripEditorT46> equaliserL, equaliserR, secondaryL, secondaryR;

    VSTGUI::CRect infoRect;
    int32 infoShown = 0;
    int32 linkOn = 0;
    // By id: a parameter less that of the other channel, normalised.
    std::array<double, kPresetParamCount> linkOffsets{};
    int32 layoutMode = -1;
    int32 preampOnShown = 0, secondaryOnShown = 0;
    int32 hoverTag = kNoHover, lastHoverTag = kNoHover;
    std::array<VSTGUI::CRect, std::size(kHoverTargets)> hoverRects{};
};

}  // namespace Vst
}  // namespace Steinberg
