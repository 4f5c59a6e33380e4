// ZKRPresetSystemEditor3: the editor's base with the row of small controls at its bottom, which
// picks and names presets, loads and saves files, sets the defaults and works the compare slots.
//
// The panel and the controller talk through parameter ids of 1000 and above, which name no
// parameter: what is done here is told to the controller, and comes back to the panel of every open
// editor through updatePresetPanel.
#pragma once

#include "presets/PresetTags.h"

#include "public.sdk/source/vst/vstguieditor.h"

#include "vstgui/vstgui.h"

#include <array>
#include <memory>

namespace platform {
class DocumentOpening;
}

class CSaveLoadButton;
class CZKKickButton;
class CZKRRockerSwitch;
class CZKRTextEdit;

namespace Steinberg {
namespace Vst {

class ZKRPresetSystemController3;

class ZKRPresetSystemEditor3 : public VSTGUIEditor, public VSTGUI::IControlListener {
public:
    explicit ZKRPresetSystemEditor3(ZKRPresetSystemController3* presetController);
    ~ZKRPresetSystemEditor3() override;

    // Ask for a file and hand it to the controller. Nothing without a frame.
    virtual void chooseBankToLoad(bool reversed);
    virtual void chooseBankToSave();
    virtual void choosePresetToLoad(bool reversed);
    virtual void choosePresetToSave();

    void createPresetPanel(VSTGUI::CFrame* panelFrame);
    // Forgets the controls, which belong to the frame.
    void closePresetPanel();

    // Something of the presets has changed; ids below 1000 are not meant for the panel.
    void updatePresetPanel(int32 tag, double value);

    // VSTGUI::IControlListener
    void valueChanged(VSTGUI::CControl* control) override;
    void controlBeginEdit(VSTGUI::CControl* control) override;
    void controlEndEdit(VSTGUI::CControl* control) override;

protected:
    // The panel's control of that tag; null without a panel, and for other tags.
    VSTGUI::CControl* presetControl(int32 tag) const;
    CZKRTextEdit* presetName() const { return nameField; }

    ZKRPresetSystemController3* presets;

private:
    struct FileDialog;

    void setEntryTitle(int32 index);
    void refreshPanel(float fieldValue, const char* name);
    float selectedFieldValue() const;

    void nameEdited(float fieldValue);
    void stepPreset(float rockerValue);
    void menuChosen();
    void notifyPanels(int32 tag, double value = 0.0);
    void chooseFile(const FileDialog& dialog, bool reversed);
    void openManual();
    // Tells the user of a manual that did not open, once the desktop has answered.
    void reportManual();

    CZKRTextEdit* nameField = nullptr;
    VSTGUI::COptionMenu* menu = nullptr;
    // The buttons and the rocker, in the order of the table that makes them.
    std::array<VSTGUI::CControl*, 12> buttons{};
    std::unique_ptr<platform::DocumentOpening> manual;  // until the desktop has answered
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> manualTimer;
};

}  // namespace Vst
}  // namespace Steinberg
