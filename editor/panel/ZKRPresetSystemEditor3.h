// ZKRPresetSystemEditor3: base of the editor, with the row of small controls at the bottom, which
// select and name presets, load and save files, set the defaults and use the compare slots.
//
// The panel and the controller communicate by ids from 1000, which are no parameters. The panel
// sets such an id on the controller, which calls updatePresetPanel of every open editor.
#pragma once

#include "presets/PresetTags.h"

#include "public.sdk/source/vst/vstguieditor.h"

#include "vstgui/vstgui.h"

#include <array>
#include <functional>
#include <memory>

namespace platform {
class DocumentOpening;
}

class CSaveLoadButton;
class CZKKickButton;
class CZKRockerSwitch;
class CZKRTextEdit;

namespace Steinberg {
namespace Vst {

class ZKRPresetSystemController3;

class ZKRPresetSystemEditor3 : public VSTGUIEditor, public VSTGUI::IControlListener {
public:
    explicit ZKRPresetSystemEditor3(ZKRPresetSystemController3* presets);
    ~ZKRPresetSystemEditor3() override;

    // Ask for a file and pass it to the controller. No effect without a frame.
    virtual void chooseBankToLoad(bool reversed);
    virtual void chooseBankToSave();
    virtual void choosePresetToLoad(bool reversed);
    virtual void choosePresetToSave();

    void createPresetPanel(VSTGUI::CFrame* panelFrame);
    // Forgets the controls, which belong to the frame.
    void closePresetPanel();

    // Shows a change of the presets; ids below 1000 are ignored.
    void updatePresetPanel(int32 tag, double value);

    // Loads or saves the file that was chosen.
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;

    // VSTGUI::IControlListener
    void valueChanged(VSTGUI::CControl* control) override;
    void controlBeginEdit(VSTGUI::CControl* control) override;
    void controlEndEdit(VSTGUI::CControl* control) override;

protected:
    // The button or rocker with that tag; null for other tags and without a panel.
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
    // Shows a message if the manual could not be opened, once the desktop has answered.
    void reportManual();

    CZKRTextEdit* nameField = nullptr;
    VSTGUI::COptionMenu* menu = nullptr;
    // The rocker and the buttons, in the order of kRows.
    std::array<VSTGUI::CControl*, 12> buttons{};
    std::function<void(const char* path)> useFile;  // of the last file dialog
    std::unique_ptr<platform::DocumentOpening> manual;  // until the desktop has answered
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> manualTimer;
};

}  // namespace Vst
}  // namespace Steinberg
