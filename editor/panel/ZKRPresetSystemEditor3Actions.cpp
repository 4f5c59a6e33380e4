// ZKRPresetSystemEditor3: what the panel's controls do.
#include "editor/panel/ZKRPresetSystemEditor3.h"

#include "editor/controls/CZKKickButton.h"
#include "editor/controls/CZKRTextEdit.h"
#include "editor/panel/NameField.h"
#include "platform/Documents.h"
#include "presets/ZKRPresetSystemController3.h"

#include <algorithm>
#include <string>

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

// One of the four file dialogs.
struct ZKRPresetSystemEditor3::FileDialog {
    CNewFileSelector::Style style;
    const char *title, *reversedTitle;
    const char *description, *extension;
    char* (ZKRPresetSystemController3::*lastName)();
};

namespace {

bool isParameter(const CControl* control)
{
    return control->getTag() >= 0 && static_cast<unsigned>(control->getTag()) < kPresetParamCount;
}

}  // namespace

// The host is told only of gestures on parameters.
void ZKRPresetSystemEditor3::controlBeginEdit(CControl* control)
{
    if (isParameter(control))
        controller->beginEdit(static_cast<ParamID>(control->getTag()));
}

void ZKRPresetSystemEditor3::controlEndEdit(CControl* control)
{
    if (isParameter(control))
        controller->endEdit(static_cast<ParamID>(control->getTag()));
}

void ZKRPresetSystemEditor3::notifyPanels(int32 tag, double value)
{
    presets->setParamNormalized(static_cast<ParamID>(tag), value);
}

void ZKRPresetSystemEditor3::valueChanged(CControl* control)
{
    // On Windows a dialog blocks, and the host may close the editor meanwhile.
    const IPtr<ZKRPresetSystemEditor3> alive(this);
    const float value = control->getValue();
    const bool storing = value >= 0.75f;
    const int32 tag = control->getTag();
    switch (tag) {
    case kNameTag:
        nameEdited(value);
        break;
    case kRockerTag:
        stepPreset(value);
        break;
    case kLoadBankTag:
        chooseBankToLoad(value == 0.5f);
        notifyPanels(tag);
        break;
    case kSaveBankTag:
        chooseBankToSave();
        break;
    case kLoadPresetTag:
        choosePresetToLoad(value == 0.5f);
        notifyPanels(tag);
        break;
    case kSavePresetTag:
        choosePresetToSave();
        break;
    case kMenuTag:
        menuChosen();
        break;
    case kDefaultBankTag:
        storing ? presets->storeDefaultBank() : presets->clearDefaultBank();
        notifyPanels(tag);
        break;
    case kDefaultPresetTag:
        storing ? presets->storeDefaultPreset() : presets->clearDefaultPreset();
        notifyPanels(tag);
        break;
    case kStoreATag:
        presets->storeMemoA();
        break;
    case kStoreBTag:
        presets->storeMemoB();
        break;
    case kRecallATag:
        presets->loadMemoA();
        notifyPanels(tag);
        break;
    case kRecallBTag:
        presets->loadMemoB();
        notifyPanels(tag);
        break;
    case kManualTag:
        openManual();
        break;
    default:
        break;
    }
}

void ZKRPresetSystemEditor3::nameEdited(float fieldValue)
{
    const int32 index = presetOf(fieldValue);
    if (index == presets->getCurrentPreset()) {
        if (nameField)
            presets->setCurrentPresetName(std::string(nameField->getText()).c_str());
    } else {
        presets->setCurrentPreset(index);
    }
    notifyPanels(kNameTag, static_cast<double>(fieldValue));
}

void ZKRPresetSystemEditor3::stepPreset(float rockerValue)
{
    if (rockerValue == 0.5f)
        return;
    const int32 step = rockerValue > 0.5f ? 1 : -1;
    const int32 index = std::clamp(presets->getCurrentPreset() + step, int32(0), kPresetCount - 1);
    char name[kPresetNameSize + 1] = {};
    presets->getPresetName(name, index);
    if (menu && nameField) {
        menu->setCurrent(index);
        nameField->setText(name);
    }
    presets->setCurrentPreset(index);
    presets->setCurrentPresetName(name);
    notifyPanels(kRockerTag);
}

void ZKRPresetSystemEditor3::menuChosen()
{
    // Left without a choice.
    if (menu->getLastResult() < 0)
        return;
    const auto index = static_cast<int32>(menu->getValue() + 0.5f);
    menu->setCurrent(index);
    const CMenuItem* const entry = menu->getEntry(index);
    if (!entry)
        return;
    const std::string title(entry->getTitle());
    presets->setCurrentPreset(index);
    presets->setCurrentPresetName(title.c_str());
    if (nameField)
        nameField->setText(title.c_str());
    notifyPanels(kMenuTag);
}

void ZKRPresetSystemEditor3::chooseFile(const FileDialog& dialog, bool reversed)
{
    if (!frame)
        return;
    const auto selector = VSTGUI::owned(CNewFileSelector::create(frame, dialog.style));
    if (!selector)
        return;
    const bool saving = dialog.style == CNewFileSelector::kSelectSaveFile;
    selector->setTitle(reversed ? dialog.reversedTitle : dialog.title);
    selector->setInitialDirectory(presets->getCurrDir());
    const CFileExtension extension(dialog.description, dialog.extension);
    if (saving) {
        selector->setDefaultSaveName((presets->*dialog.lastName)());
        selector->setDefaultExtension(extension);
    } else {
        selector->addFileExtension(extension);
        selector->setAllowMultiFileSelection(false);
    }
    const bool isBank = dialog.lastName == &ZKRPresetSystemController3::getCurrBank;
    useFile = [this, saving, isBank, reversed](const char* path) {
        if (saving)
            isBank ? presets->saveBank(path) : presets->savePreset(path);
        else
            isBank ? presets->loadBank(path, reversed) : presets->loadPreset(path, reversed);
    };
    selector->run(this);
}

CMessageResult ZKRPresetSystemEditor3::notify(CBaseObject* sender, IdStringPtr message)
{
    if (message != CNewFileSelector::kSelectEndMessage)
        return VSTGUIEditor::notify(sender, message);
    const auto* const selector = static_cast<CNewFileSelector*>(sender);
    if (selector->getNumSelectedFiles() == 1)
        useFile(selector->getSelectedFile(0));
    return kMessageNotified;
}

void ZKRPresetSystemEditor3::chooseBankToLoad(bool reversed)
{
    chooseFile({CNewFileSelector::kSelectFile, "Load bank", "Load bank (endian-reversed)",
                "ZKR Bank", "zkb", &ZKRPresetSystemController3::getCurrBank},
               reversed);
}

void ZKRPresetSystemEditor3::chooseBankToSave()
{
    chooseFile({CNewFileSelector::kSelectSaveFile, "Save bank", nullptr, "ZKR Bank", "zkb",
                &ZKRPresetSystemController3::getCurrBank},
               false);
}

void ZKRPresetSystemEditor3::choosePresetToLoad(bool reversed)
{
    chooseFile({CNewFileSelector::kSelectFile, "Load preset", "Load preset (endian-reversed)",
                "ZKR Preset", "zkr", &ZKRPresetSystemController3::getCurrPreset},
               reversed);
}

void ZKRPresetSystemEditor3::choosePresetToSave()
{
    chooseFile({CNewFileSelector::kSelectSaveFile, "Save preset", nullptr, "ZKR Preset", "zkr",
                &ZKRPresetSystemController3::getCurrPreset},
               false);
}

void ZKRPresetSystemEditor3::openManual()
{
    constexpr uint32_t kPeriodMs = 50;
    IPlatformFrame* const window = frame ? frame->getPlatformFrame() : nullptr;
    manual = platform::openDocument(window ? window->getPlatformRepresentation() : nullptr,
                                    presets->getManualPath());
    if (!manualTimer)
        manualTimer = VSTGUI::owned(
            new CVSTGUITimer([this](CVSTGUITimer*) { reportManual(); }, kPeriodMs, false));
    manualTimer->start();
    reportManual();
}

void ZKRPresetSystemEditor3::reportManual()
{
    const auto result = manual ? manual->result() : std::nullopt;
    if (!result)
        return;
    manualTimer->stop();
    manual.reset();
    if (*result == platform::OpenResult::Opened)
        return;
    IPlatformFrame* const window = frame ? frame->getPlatformFrame() : nullptr;
    if (!window)
        return;
    // The message may wait for the user, and the host may close the editor meanwhile.
    const IPtr<ZKRPresetSystemEditor3> alive(this);
    if (*result == platform::OpenResult::NoViewer)
        window->showMessage("Make sure Acrobat Reader is installed", "Could not open manual file");
    else
        window->showMessage("Could not open user manual", "");
    // The message window got the button's release.
    if (auto* const button = static_cast<CZKKickButton*>(presetControl(kManualTag)))
        button->release();
}

}  // namespace Vst
}  // namespace Steinberg
