// The row of keys at the editor's bottom.
#include "EditorStage.h"

#include "Files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

const CPoint kSaveBank(8, 496), kDefaultBank(33, 495), kLoadBank(59, 496), kSavePreset(74, 496),
    kDefaultPreset(100, 495), kLoadPreset(126, 496), kName(197, 496), kMenu(264, 494),
    kPrevious(276, 496), kNext(297, 496), kStoreA(310, 496), kRecallA(333, 496), kStoreB(350, 496),
    kRecallB(372, 496);

TEST_F(Editor, TheRockerStepsThroughThePresetsAndStopsAtTheEnds)
{
    window->click(kPrevious);
    EXPECT_EQ(controller.getCurrentPreset(), 0);
    EXPECT_EQ(controller.host.edits.size(), 58u) << "the first preset is published all the same";
    for (int i = 1; i < 30; ++i)
        window->click(kNext);
    EXPECT_EQ(controller.getCurrentPreset(), 23);
    window->click(kPrevious);
    EXPECT_EQ(controller.getCurrentPreset(), 22);
    EXPECT_EQ(controller.bank(),
              Bytes(reinterpret_cast<const uint8*>(factoryBank().data()),
                    reinterpret_cast<const uint8*>(&factoryBank()[0] + 24)));
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
    window->click(kMenu);
    EXPECT_EQ(controller.getCurrentPreset(), 19);
    EXPECT_EQ(window->width(), 894);
    window->screen.onMenu = [](VSTGUI::COptionMenu&) { return -1; };
    heard();
    window->click(kMenu);
    EXPECT_TRUE(heard().empty());
    EXPECT_EQ(controller.getCurrentPreset(), 19);
}

TEST_F(Editor, ANameThatIsTypedIsThePresetsNameIn23Bytes)
{
    Window second(controller);
    window->click(kName);
    EXPECT_STREQ(window->screen.textBoxText(), "Default");
    window->screen.typeText("Zwölf Boxkämpfer jagen Viktor");
    EXPECT_EQ(controller.name(0), "Default");
    window->screen.pressReturnInTextBox();
    const std::string kept = std::string("Zwölf Boxkämpfer jagen Viktor").substr(0, 23);
    EXPECT_EQ(controller.name(0), kept);
    window->screen.setPointer({600, 600});
    EXPECT_EQ(window->screen.paint().rgba, second.screen.paint().rgba);
    window->click(kName);
    EXPECT_EQ(window->screen.textBoxText(), kept);
    window->screen.typeText("never");
    window->screen.pressEscapeInTextBox();
    EXPECT_EQ(controller.name(0), kept);
    controller.setSelectedName("By the host");
    window->click(kName);
    EXPECT_STREQ(window->screen.textBoxText(), "By the host");
}

TEST_F(Editor, DefaultKeysWantADoubleClickAndControlClears)
{
    window->click(kDefaultBank);
    window->click(kDefaultPreset);
    EXPECT_TRUE(store.values.empty() || !store.values.count("DefaultBank"));
    window->doubleClick(kDefaultBank);
    window->doubleClick(kDefaultPreset);
    EXPECT_EQ(store.values["DefaultBank"].size(), 48617u);
    EXPECT_EQ(store.values["DefaultPreset"].size(), 2065u);
    window->doubleClick(kDefaultBank, VSTGUI::kControl);
    window->doubleClick(kDefaultPreset, VSTGUI::kControl);
    EXPECT_EQ(store.values.count("DefaultBank") + store.values.count("DefaultPreset"), 0u);
}

TEST_F(Editor, CompareSlotsKeepAPresetEach)
{
    window->click(kStoreA);
    set(kLGainL, 0.9);
    window->click(kStoreB);
    window->click(kRecallA);
    EXPECT_EQ(value(kLGainL), 0.5);
    window->click(kNext);
    window->click(kRecallB);
    EXPECT_NEAR(value(kLGainL), 0.9, 1e-6);
    EXPECT_EQ(controller.getCurrentPreset(), 1);
    window->click(kName);
    EXPECT_STREQ(window->screen.textBoxText(), "Default") << "the name came along";
}

TEST_F(Editor, FilesAreChosenInDialogs)
{
    const fs::path folder =
        fs::temp_directory_path() / ("zkrt46-panel-" + std::to_string(std::rand()));
    fs::create_directories(folder);
    const auto at = [&](const char* name) { return (folder / name).u8string(); };
    VSTGUI::FileDialogRequest asked;
    std::vector<std::string> answer;
    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest& request) {
        asked = request;
        return answer;
    };
    const Bytes factory = controller.bank();
    const auto expectAsked = [&](const char* title, const char* extension, bool save) {
        EXPECT_EQ(asked.title, title);
        ASSERT_EQ(asked.extensions.size(), 1u);
        EXPECT_STREQ(asked.extensions[0].getExtension(), extension);
        EXPECT_EQ(asked.kind == VSTGUI::FileDialogRequest::Kind::saveFile, save);
    };

    answer = {at("mine.zkb")};
    window->click(kSaveBank);
    expectAsked("Save bank", "zkb", true);
    EXPECT_EQ(fs::file_size(folder / "mine.zkb"), 48617u);
    set(kLGainL, 0.9);
    controller.setSelectedName("Another");
    answer = {at("one.zkr")};
    window->click(kSavePreset);
    expectAsked("Save preset", "zkr", true);
    EXPECT_EQ(fs::file_size(folder / "one.zkr"), 2065u);

    answer = {at("mine.zkb")};
    window->click(kLoadBank);
    expectAsked("Load bank", "zkb", false);
    EXPECT_EQ(asked.initialDirectory, at(""));
    EXPECT_EQ(controller.bank(), factory);
    window->click(kName);
    EXPECT_STREQ(window->screen.textBoxText(), "Default") << "the name was not read again";
    window->screen.pressEscapeInTextBox();
    window->click(kNext);
    answer = {at("one.zkr")};
    window->click(kLoadPreset);
    EXPECT_NEAR(value(kLGainL), 0.9, 1e-6);
    answer = {};
    heard();
    window->click(kLoadPreset, VSTGUI::kRButton);
    expectAsked("Load preset (endian-reversed)", "zkr", false);
    window->click(kLoadBank, VSTGUI::kRButton);
    EXPECT_EQ(asked.title, "Load bank (endian-reversed)");
    window->click(kSaveBank);
    EXPECT_EQ(asked.defaultSaveName, "mine.zkb");
    EXPECT_TRUE(heard().empty()) << "a cancelled dialog changed something";

    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest&) {
        window->close();
        return std::vector<std::string>{at("mine.zkb")};
    };
    const Bytes before = controller.bank();
    window->click(kLoadBank);
    EXPECT_EQ(controller.bank(), before) << "the host closed the editor under the dialog";
    fs::current_path(fs::temp_directory_path());
    fs::remove_all(folder);
}

}  // namespace
