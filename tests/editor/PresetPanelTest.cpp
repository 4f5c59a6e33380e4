// The row of keys at the editor's bottom.
#include "EditorStage.h"

#include "Files.h"
#include "TemporaryFolder.h"

namespace {

// The rocker's halves, from its middle.
const CPoint kBack(-10, 0), kForth(10, 0);

TEST_F(Editor, TheRockerStepsThroughThePresetsAndStopsAtTheEnds)
{
    window->click(at(kRockerTag) + kBack);
    EXPECT_EQ(controller.getCurrentPreset(), 0);
    EXPECT_EQ(controller.host.edits.size(), 58u) << "the first preset is published all the same";
    for (int i = 1; i < 30; ++i)
        window->click(at(kRockerTag) + kForth);
    EXPECT_EQ(controller.getCurrentPreset(), 23);
    window->click(at(kRockerTag) + kBack);
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
    window->click(at(kMenuTag));
    EXPECT_EQ(controller.getCurrentPreset(), 19);
    EXPECT_EQ(window->width(), 894);
    window->screen.onMenu = [](VSTGUI::COptionMenu&) { return -1; };
    heard();
    window->click(at(kMenuTag));
    EXPECT_TRUE(heard().empty());
    EXPECT_EQ(controller.getCurrentPreset(), 19);
}

TEST_F(Editor, ANameThatIsTypedIsTheSelectedPresetsNameIn23Bytes)
{
    Window second(controller);
    const std::string kept = std::string("Zwölf Boxkämpfer jagen Viktor").substr(0, 23);
    for (int preset = 0; preset < kPresetCount; ++preset) {
        SCOPED_TRACE(preset);
        window->click(at(kNameTag));
        EXPECT_EQ(window->screen.textBoxText(), controller.name(preset));
        window->screen.typeText("Zwölf Boxkämpfer jagen Viktor");
        EXPECT_NE(controller.name(preset), kept);
        window->screen.pressReturnInTextBox();
        EXPECT_EQ(controller.getCurrentPreset(), preset);
        EXPECT_EQ(controller.name(preset), kept);
        window->click(at(kNameTag));
        EXPECT_EQ(window->screen.textBoxText(), kept);
        window->screen.typeText("never");
        window->screen.pressEscapeInTextBox();
        EXPECT_EQ(controller.name(preset), kept);
        window->screen.setPointer({600, 600});
        EXPECT_EQ(window->screen.paint().rgba, second.screen.paint().rgba);
        window->click(at(kRockerTag) + kForth);
        window->screen.mouseMove({200, 300});
    }
    controller.setSelectedName("By the host");
    window->click(at(kNameTag));
    EXPECT_STREQ(window->screen.textBoxText(), "By the host");
}

TEST_F(Editor, DefaultKeysWantADoubleClickAndControlClears)
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

TEST_F(Editor, CompareSlotsKeepAPresetEach)
{
    window->click(at(kStoreATag));
    set(kLGainL, 0.9);
    window->click(at(kStoreBTag));
    window->click(at(kRecallATag));
    EXPECT_EQ(value(kLGainL), 0.5);
    window->click(at(kRockerTag) + kForth);
    window->click(at(kRecallBTag));
    EXPECT_NEAR(value(kLGainL), 0.9, 1e-6);
    EXPECT_EQ(controller.getCurrentPreset(), 1);
    window->click(at(kNameTag));
    EXPECT_STREQ(window->screen.textBoxText(), "Default") << "the name came along";
}

TEST_F(Editor, FilesAreChosenInDialogs)
{
    const TemporaryFolder folder;
    VSTGUI::FileDialogRequest asked;
    std::vector<std::string> answer;
    int button = 0;
    std::string staleName;
    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest& request) {
        asked = request;
        Look pressed;
        pressed.frames[button] = 2;
        pressed.name = staleName;
        expectShown(pressed);
        return answer;
    };
    const auto choose = [&](int tag, const std::string& file, int32_t buttons, const char* title,
                            const char* extension) {
        SCOPED_TRACE(title);
        asked = {};
        button = tag;
        answer.clear();
        if (!file.empty())
            answer = {folder / file};
        window->click(at(tag), buttons);
        EXPECT_EQ(asked.title, title);
        ASSERT_EQ(asked.extensions.size(), *title ? 1u : 0u);
        if (*title) {
            EXPECT_STREQ(asked.extensions[0].getExtension(), extension);
            EXPECT_EQ(asked.kind == VSTGUI::FileDialogRequest::Kind::saveFile, *title == 'S');
        }
    };
    const int32_t left = VSTGUI::kLButton, right = VSTGUI::kRButton;
    const Bytes factory = controller.bank();
    choose(kSaveBankTag, "mine.zkb", left, "Save bank", "zkb");
    EXPECT_EQ(contentOf(folder / "mine.zkb").size(), 48617u);
    set(kLGainL, 0.9);
    controller.setSelectedName("Another");
    choose(kSavePresetTag, "one.zkr", left, "Save preset", "zkr");
    EXPECT_EQ(contentOf(folder / "one.zkr").size(), 2065u);
    choose(kLoadBankTag, "mine.zkb", left, "Load bank", "zkb");
    EXPECT_EQ(asked.initialDirectory, folder / "");
    EXPECT_EQ(controller.bank(), factory);
    expectShown(Look{{{kLoadBankTag, 1}}});
    window->click(at(kRockerTag) + kForth);
    // The panel goes on showing the name of before until something else refreshes it.
    const std::string before = controller.name(1);
    choose(kLoadPresetTag, "one.zkr", left, "Load preset", "zkr");
    staleName = before;
    EXPECT_NEAR(value(kLGainL), 0.9, 1e-6);
    heard();
    choose(kLoadPresetTag, "", right, "Load preset (endian-reversed)", "zkr");
    choose(kLoadPresetTag, "", right | VSTGUI::kShift, "Load preset", "zkr");
    choose(kLoadBankTag, "", right, "Load bank (endian-reversed)", "zkb");
    staleName.clear();
    choose(kLoadBankTag, "", left | right, "Load bank", "zkb");
    choose(kLoadBankTag, "", VSTGUI::kMButton, "", "");
    choose(kSavePresetTag, "", right, "Save preset", "zkr");
    EXPECT_EQ(asked.defaultSaveName, "one.zkr");
    choose(kSaveBankTag, "", left, "Save bank", "zkb");
    EXPECT_EQ(asked.defaultSaveName, "mine.zkb");
    EXPECT_TRUE(heard().empty()) << "a cancelled dialog changed something";

    window->screen.onFileDialog = [&](const VSTGUI::FileDialogRequest&) {
        window->close();
        return std::vector<std::string>{folder / "mine.zkb"};
    };
    const Bytes loaded = controller.bank();
    window->click(at(kLoadBankTag));
    EXPECT_EQ(controller.bank(), loaded) << "the host closed the editor under the dialog";
}

}  // namespace
