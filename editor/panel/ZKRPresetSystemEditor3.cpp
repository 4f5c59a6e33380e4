// ZKRPresetSystemEditor3: the panel's controls, and showing the presets in them.
#include "editor/panel/ZKRPresetSystemEditor3.h"

#include "BitmapNumbers.h"
#include "editor/controls/CSaveLoadButton.h"
#include "editor/controls/CZKKickButton.h"
#include "editor/controls/CZKRockerSwitch.h"
#include "editor/controls/CZKRTextEdit.h"
#include "editor/panel/IdleUpdate_ZKR_Handler.h"
#include "editor/panel/NameField.h"
#include "platform/Documents.h"
#include "presets/ZKRPresetSystemController3.h"

#include <string>

using namespace VSTGUI;

namespace Steinberg {
namespace Vst {

namespace {

enum class Kind { Rocker, File, Kick, DoubleKick };

struct PanelRow {
    PresetTag tag;
    Kind kind;
    CRect rect;
    bitmaps::Number bitmap;
    int32 frames;
};

// clang-format off
const std::array<PanelRow, 12> kRows{{
//   tag                kind              left top right bottom    bitmap, frames
    {kRockerTag,        Kind::Rocker,     {271, 489, 302, 503},    bitmaps::kPresetRocker, 5},
    {kLoadBankTag,      Kind::File,       { 53, 489,  65, 503},    bitmaps::kLoadKey, 3},
    {kSaveBankTag,      Kind::File,       {  2, 489,  14, 503},    bitmaps::kSaveKey, 3},
    {kDefaultBankTag,   Kind::DoubleKick, { 15, 488,  51, 503},    bitmaps::kDefaultBankKey, 3},
    {kLoadPresetTag,    Kind::File,       {120, 489, 132, 503},    bitmaps::kLoadKey, 3},
    {kSavePresetTag,    Kind::File,       { 68, 489,  80, 503},    bitmaps::kSaveKey, 3},
    {kDefaultPresetTag, Kind::DoubleKick, { 79, 488, 121, 503},    bitmaps::kDefaultPresetKey, 3},
    {kRecallATag,       Kind::Kick,       {327, 489, 339, 503},    bitmaps::kLoadKey, 3},
    {kStoreATag,        Kind::Kick,       {304, 489, 316, 503},    bitmaps::kSaveKey, 3},
    {kRecallBTag,       Kind::Kick,       {366, 489, 378, 503},    bitmaps::kLoadKey, 3},
    {kStoreBTag,        Kind::Kick,       {344, 489, 356, 503},    bitmaps::kSaveKey, 3},
    {kManualTag,        Kind::Kick,       {378, 488, 390, 503},    bitmaps::kManualKey, 3},
}};
// clang-format on

const CRect kNameRect(139, 489, 255, 503);
const CRect kMenuRect(258, 488, 270, 500);
constexpr int32 kEntriesPerColumn = 12;

const CColor kInk(0x24, 0x24, 0x20, 255);
const CColor kPaper(0xD1, 0xE3, 0xEE, 255);
const CColor kMenuBack(0x1E, 0x21, 0x25, 255);
const CColor kMenuEdge(0x6A, 0x71, 0x76, 255);
constexpr double kNameFontSize = 11.0;

}  // namespace

ZKRPresetSystemEditor3::ZKRPresetSystemEditor3(ZKRPresetSystemController3* presets)
    : VSTGUIEditor(static_cast<EditController*>(presets)), presets(presets)
{
    rect = ViewRect(0, 0, 312, 487);
    IdleUpdate_ZKR_Handler::instance();
}

ZKRPresetSystemEditor3::~ZKRPresetSystemEditor3() = default;

void ZKRPresetSystemEditor3::createPresetPanel(CFrame* panelFrame)
{
    char name[kPresetNameSize + 1] = {};
    presets->getCurrentPresetName(name);
    CBitmap* const background = panelFrame->getBackground();

    const auto font = VSTGUI::owned(new CFontDesc("Arial", kNameFontSize));
    CRect nameRect = kNameRect;
    const double middle = (nameRect.top + nameRect.bottom) / 2.0;
    nameRect.top = middle - kNameFontSize / 2.0 - 2.0;
    nameRect.bottom = middle + kNameFontSize / 2.0 + 2.0;
    nameField = new CZKRTextEdit(nameRect, this, kNameTag, name, background);
    nameField->setBackOffset(nameRect.getTopLeft());
    nameField->setFont(font);
    nameField->setFontColor(kInk);
    nameField->setBackColor(kPaper);
    nameField->setFrameColor(kInk);
    nameField->setHoriAlign(kCenterText);
    nameField->setMaxCharacters(static_cast<int32>(kPresetNameSize));
    nameField->setValue(selectedFieldValue());
    panelFrame->addView(nameField);

    menu = new COptionMenu(kMenuRect, this, kMenuTag, background, nullptr,
                           COptionMenu::kPopupStyle | COptionMenu::kCheckStyle
                               | COptionMenu::kNoTextStyle | COptionMenu::kNoDrawStyle);
    menu->setBackOffset(kMenuRect.getTopLeft());
    menu->setNbItemsPerColumn(kEntriesPerColumn);
    menu->setWantsFocus(false);
    menu->setFontColor(kPaper);
    menu->setBackColor(kMenuBack);
    menu->setFrameColor(kMenuEdge);
    for (int32 index = 0; index < kPresetCount; ++index) {
        char title[kPresetNameSize + 1] = {};
        presets->getPresetName(title, index);
        // Not by its title alone: a preset may be called "-", which would add a separator.
        menu->addEntry(new CMenuItem(title));
    }
    menu->setCurrent(presets->getCurrentPreset());
    panelFrame->addView(menu);

    for (std::size_t i = 0; i < kRows.size(); ++i) {
        const PanelRow& row = kRows[i];
        const auto bitmap = VSTGUI::owned(new CBitmap(CResourceDescription(row.bitmap)));
        const auto frameHeight =
            static_cast<CCoord>(static_cast<int32>(bitmap->getHeight()) / row.frames);
        switch (row.kind) {
        case Kind::Rocker:
            buttons[i] = new CZKRockerSwitch(row.rect, this, row.tag, frameHeight, bitmap);
            break;
        case Kind::File:
            buttons[i] = new CSaveLoadButton(row.rect, this, row.tag, frameHeight, bitmap);
            break;
        case Kind::Kick:
        case Kind::DoubleKick:
            buttons[i] = new CZKKickButton(row.rect, this, row.tag, frameHeight, bitmap,
                                           row.kind == Kind::DoubleKick);
            break;
        }
        panelFrame->addView(buttons[i]);
    }
}

void ZKRPresetSystemEditor3::closePresetPanel()
{
    nameField = nullptr;
    menu = nullptr;
    buttons.fill(nullptr);
    if (manualTimer)
        manualTimer->stop();
    manual.reset();
}

CControl* ZKRPresetSystemEditor3::presetControl(int32 tag) const
{
    for (CControl* const button : buttons)
        if (button && button->getTag() == tag)
            return button;
    return nullptr;
}

float ZKRPresetSystemEditor3::selectedFieldValue() const
{
    return fieldValueOf(presets->getCurrentPreset());
}

void ZKRPresetSystemEditor3::setEntryTitle(int32 index)
{
    char name[kPresetNameSize + 1] = {};
    presets->getPresetName(name, index);
    if (CMenuItem* const entry = menu->getEntry(index))
        entry->setTitle(name);
}

void ZKRPresetSystemEditor3::updatePresetPanel(int32 tag, double value)
{
    if (tag < kNameTag || !menu || !nameField)
        return;
    const int32 selected = presets->getCurrentPreset();
    const auto refreshFromBank = [&](float fieldValue) {
        char name[kPresetNameSize + 1] = {};
        presets->getPresetName(name, selected);
        refreshPanel(fieldValue, name);
    };
    switch (tag) {
    case kNameTag:
    case kRecallATag:
    case kRecallBTag:
        setEntryTitle(selected);
        refreshFromBank(tag == kNameTag ? static_cast<float>(value) : selectedFieldValue());
        break;
    case kRockerTag:
    case kMenuTag:
        if (const CMenuItem* const entry = menu->getEntry(selected))
            refreshPanel(selectedFieldValue(), std::string(entry->getTitle()).c_str());
        break;
    case kLoadBankTag:
    case kDefaultBankTag:
    case kDefaultPresetTag:
        for (int32 index = 0; index < kPresetCount; ++index)
            setEntryTitle(index);
        refreshFromBank(selectedFieldValue());
        break;
    default:
        break;
    }
}

void ZKRPresetSystemEditor3::refreshPanel(float fieldValue, const char* name)
{
    const int32 selected = presets->getCurrentPreset();
    menu->setCurrent(selected);
    menu->setValue(static_cast<float>(selected));
    nameField->setValue(fieldValue);
    nameField->setText(name);
    nameField->setDirty();
}

}  // namespace Vst
}  // namespace Steinberg
