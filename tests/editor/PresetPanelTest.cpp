// The row of keys at the editor's bottom.
#include "tests/editor/EditorStage.h"

#include "platform/Files.h"
#include "tests/support/TemporaryFolder.h"

#include "vstgui/platform/iplatformfont.h"

namespace {

// Offsets of the rocker's halves from its centre.
const CPoint kBack(-10, 0), kForth(10, 0);

TEST_F(Editor, TheRockerStepsThroughThePresetsAndStopsAtTheEnds)
{
    window->click(at(kRockerTag) + kBack);
    EXPECT_EQ(controller.getCurrentPreset(), 0);
    EXPECT_EQ(controller.host.edits.size(), 58u) << "the first preset was not published again";
    for (int i = 1; i < 30; ++i)
        window->click(at(kRockerTag) + kForth);
    EXPECT_EQ(controller.getCurrentPreset(), 23);
    window->click(at(kRockerTag) + kBack);
    EXPECT_EQ(controller.getCurrentPreset(), 22);
    EXPECT_EQ(controller.bank(),
              std::string(reinterpret_cast<const char*>(factoryBank().data()), sizeof(Bank)));
}

TEST_F(Editor, TheMenuListsAllPresetsWithTheSelectedOneChecked)
{
    controller.setCurrentPreset(4);
    controller.setCurrentPresetName("-");
    openWindow();
    window->screen.onMenu = [](VSTGUI::COptionMenu& menu) {
        EXPECT_EQ(menu.getNbEntries(), 24);
        EXPECT_EQ(menu.getCurrentIndex(), 4);
        EXPECT_STREQ(menu.getEntry(14)->getTitle(), "Mastering loudness");
        EXPECT_STREQ(menu.getEntry(4)->getTitle(), "-");
        EXPECT_FALSE(menu.getEntry(4)->isSeparator());
        EXPECT_EQ(menu.getNbItemsPerColumn(), 12);
        return 19;
    };
    window->click(at(kMenuTag), VSTGUI::kMButton);
    EXPECT_EQ(controller.getCurrentPreset(), 4);
    window->click(at(kMenuTag), VSTGUI::kRButton);
    EXPECT_EQ(controller.getCurrentPreset(), 19);
    EXPECT_EQ(window->width(), 894);
    window->screen.onMenu = [](VSTGUI::COptionMenu&) { return -1; };
    heard();
    window->click(at(kMenuTag));
    EXPECT_TRUE(heard().empty());
    EXPECT_EQ(controller.getCurrentPreset(), 19);
}

TEST_F(Editor, ATypedNameIsCutTo23BytesAndRenamesTheSelectedPreset)
{
    const std::string kept = std::string("Zwölf Boxkämpfer jagen Viktor").substr(0, 23);
    Look typing;
    typing.name = " ";
    for (const int preset : {0, 1, kPresetCount - 1}) {
        SCOPED_TRACE(preset);
        controller.setCurrentPreset(preset);
        openWindow();
        window->click(at(kNameTag));
        EXPECT_EQ(window->screen.textBoxText(), controller.name(preset));
        window->screen.typeText("Zwölf Boxkämpfer jagen Viktor");
        EXPECT_NE(controller.name(preset), kept);
        expectShown(typing);
        window->screen.pressReturnInTextBox();
        EXPECT_EQ(controller.getCurrentPreset(), preset);
        EXPECT_EQ(controller.name(preset), kept);
        window->click(at(kNameTag));
        EXPECT_EQ(window->screen.textBoxText(), kept);
        window->screen.typeText("never");
        window->screen.pressEscapeInTextBox();
        EXPECT_EQ(controller.name(preset), kept);
        expectShown();
    }
    // Set by the host, and wider than the field, which shows the start.
    controller.setSelectedName("WWWWWWWWWWWWWWWWWWWWWWW");
    Look shortened;
    const auto font = VSTGUI::owned(new VSTGUI::CFontDesc("Arial", 11));
    for (std::size_t letters = 1; letters < 23; ++letters) {
        const std::string candidate = std::string(letters, 'W') + "\u2026";
        if (font->getPlatformFont()->getStringWidth(candidate.c_str()) <= 255 - 139)
            shortened.name = candidate;
    }
    EXPECT_GT(shortened.name.size(), 5u);
    expectShown(shortened);
    window->click(at(kNameTag));
    EXPECT_STREQ(window->screen.textBoxText(), "WWWWWWWWWWWWWWWWWWWWWWW");
}

TEST_F(Editor, DefaultKeysNeedADoubleClickAndControlClears)
{
    for (const auto& [tag, name, size] : {std::tuple(kDefaultBankTag, "DefaultBank", 48617u),
                                          {kDefaultPresetTag, "DefaultPreset", 2065u}}) {
        window->click(at(tag));
        window->screen.mouseDown(at(tag), VSTGUI::kRButton | VSTGUI::kDoubleClick);
        window->screen.mouseUp(at(tag), VSTGUI::kRButton);
        EXPECT_EQ(store.values.count(name), 0u);
        window->doubleClick(at(tag));
        EXPECT_EQ(store.values[name].size(), size);
        window->doubleClick(at(tag), VSTGUI::kControl);
        EXPECT_EQ(store.values.count(name), 0u);
    }
}

TEST_F(Editor, FilesAreChosenInDialogs)
{
    constexpr int32_t kLeft = VSTGUI::kLButton, kRight = VSTGUI::kRButton;
    constexpr struct {
        int tag;
        int32_t buttons;
        const char *title, *extension, *offered;
    } kRows[] = {
        {kLoadBankTag, kLeft, "Load bank", "zkb", ""},
        {kLoadBankTag, kRight, "Load bank (endian-reversed)", "zkb", ""},
        {kLoadBankTag, kLeft | kRight, "Load bank", "zkb", ""},
        {kLoadBankTag, VSTGUI::kMButton, "", "", ""},
        {kLoadPresetTag, kRight, "Load preset (endian-reversed)", "zkr", ""},
        {kLoadPresetTag, kRight | VSTGUI::kShift, "Load preset", "zkr", ""},
        {kSavePresetTag, kRight, "Save preset", "zkr", "one.zkr"},
        {kSaveBankTag, kLeft, "Save bank", "zkb", "mine.zkb"},
    };
    const TemporaryFolder folder;
    VSTGUI::FileDialogRequest asked;
    Look pressed;
    std::vector<std::string> answer;
    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest& request) {
        asked = request;
        expectShown(pressed);
        return std::exchange(answer, {});
    };
    for (const auto& [tag, name] :
         {std::pair(kSaveBankTag, "mine.zkb"), {kSavePresetTag, "one.zkr"}}) {
        answer = {folder / name};
        pressed.frames = {{tag, 2}};
        window->click(at(tag));
    }
    heard();
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.title << ", " << row.buttons);
        asked = {};
        pressed.frames = {{row.tag, 2}};
        window->screen.mouseMove(at(row.tag));
        window->screen.paint();  // so that the press has to repaint the button
        window->click(at(row.tag), row.buttons);
        EXPECT_EQ(asked.title, row.title);
        EXPECT_EQ(asked.defaultSaveName, row.offered);
        EXPECT_EQ(asked.extensions.size(), *row.title ? 1u : 0u);
        for (const auto& type : asked.extensions) {
            EXPECT_STREQ(type.getExtension(), row.extension);
            EXPECT_EQ(asked.initialDirectory, folder / "");
            EXPECT_EQ(asked.kind == VSTGUI::FileDialogRequest::Kind::saveFile, *row.offered != 0);
        }
    }
    EXPECT_TRUE(heard().empty()) << "a cancelled dialog changed something";

    // The menu follows a bank that is loaded, to its last entry.
    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest&) {
        return std::vector<std::string>{folder / "last.zkb"};
    };
    for (const auto& [name, tag] : {std::pair("Last", kSaveBankTag), {"Init", kLoadBankTag}}) {
        controller.setCurrentPreset(23);
        controller.setCurrentPresetName(name);
        controller.setCurrentPreset(0);
        window->click(at(tag));
    }
    window->screen.onMenu = [](VSTGUI::COptionMenu& menu) {
        EXPECT_STREQ(menu.getEntry(23)->getTitle(), "Last");
        return -1;
    };
    window->click(at(kMenuTag));

    set(kLGainL, 0.9);
    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest&) {
        window->close();
        return std::vector<std::string>{folder / "mine.zkb"};
    };
    window->click(at(kLoadBankTag));
    EXPECT_NEAR(value(kLGainL), 0.9, 1e-6) << "the host closed the editor during the dialog";
}

}  // namespace
