// The row of keys at the bottom under mouse and keyboard: menu, name, files, manual.
#include "EditorOnScreen.h"
#include "FactoryBank.h"
#include "TemporaryFolder.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;
using hands::Key;

struct Panel : EditorOnScreen {
    // The programs that a desktop brings are scripts that write down what they are asked; no others
    // are found.
    Panel() { setPath(folder.path().string()); }
    ~Panel() override
    {
        host.reset();
        setPath(path);
    }

    static void setPath(const std::string& value)
    {
#ifdef _WIN32
        (void)value;
#else
        setenv("PATH", value.c_str(), 1);
#endif
    }
    // The last command of the script is its answer.
    void installHelper(const std::string& name, const std::string& answer)
    {
        const std::string file = folder / name;
        writeContent(file,
                     "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + (folder / "asked") + "'\n" + answer);
        fs::permissions(file, fs::perms::owner_all);
    }
    std::string asked() const
    {
        return contentOf(folder / "asked");
    }

    void click(Place where)
    {
        Host::user([&](User& user) { user.click(where); });
    }
    // Types into the name's box; the pauses let a slow system follow.
    void typeName(User& user, const std::string& name)
    {
        clickToOpen(user, field);
        user.type(name);
        user.pause(100);
    }
    // Presses a key that opens a file dialog, and answers that.
    void chooseFile(Place key, const std::string& title, const std::string& answer,
                    hands::Button button = hands::Button::Left)
    {
        installHelper("zenity", "echo '" + answer + "'");
        Host::user([&](User& user) {
            user.click(key, button);
            if (!kOnWindows)
                return;
            EXPECT_TRUE(user.waitFor([&] { return titleInFront() == title; })) << title;
            user.pause(200);
            // Not typed: the system would add endings of its own to it.
            fillFieldInFront(answer);
            user.tap(Key::Return);
            EXPECT_TRUE(user.waitFor([&] { return titleInFront() != title; })) << title;
        });
        EXPECT_TRUE(kOnWindows || asked().find("--title=" + title) != std::string::npos) << asked();
    }

    // Whether a message of the toolkit's own, without dialogs of the system, shows this line.
    bool messageShows(const std::string& line) const
    {
        return findText(host->picture(), line, kInk, kPaper).has_value();
    }
    void closeMessage(User& user, const std::vector<std::string>& lines)
    {
        for (const std::string& line : lines)
            EXPECT_TRUE(user.waitFor([&] { return messageShows(line); })) << line;
        user.click(host->at(197, 262 + 10 * static_cast<double>(lines.size())));
        EXPECT_TRUE(user.waitFor([&] { return !messageShows(lines[0]); })) << lines[0];
    }

    // Of texts in menus and messages.
    const VSTGUI::CColor kInk{20, 20, 20}, kPaper{250, 250, 250}, kHighlight{51, 120, 215};

    const TemporaryFolder folder;
    const std::string path = std::getenv("PATH") ? std::getenv("PATH") : "";

    const Place saveBank = host->at(8, 496), loadBank = host->at(59, 496),
                savePreset = host->at(74, 496), loadPreset = host->at(126, 496),
                previous = host->at(276, 496), next = host->at(297, 496),
                manual = host->at(384, 496);
};

TEST_F(Panel, TheMenuShowsThePresetsAndOneIsChosenByKeysAnotherByTheMouse)
{
    const int firstDown = kOnWindows ? 1 : 0;  // Windows highlights nothing at first
    VSTGUI::Pixels shown;
    Host::user([&](User& user) {
        clickToOpen(user, menu);
        shown = screenshot(host->at(0, 0), 700, 740);
        for (int i = 0; i < 3 + firstDown; ++i)
            user.tap(Key::Down);
        user.tap(Key::Return);
    });
    const std::string fourth = host->programName();
    EXPECT_EQ(fourth, factoryBank()[3].name);
    // The system's own menus are the system's matter.
    VSTGUI::CPoint above;
    for (std::size_t i = 0; !kOnWindows && i < 12; ++i) {
        const std::string name = factoryBank()[i].name;
        SCOPED_TRACE(name);
        const auto place = i == 0 ? findText(shown, name, VSTGUI::kWhiteCColor, kHighlight)
                                  : findText(shown, name, kInk, kPaper);
        ASSERT_TRUE(place.has_value());
        EXPECT_TRUE(i == 0 || *place == VSTGUI::CPoint(above.x, above.y + 20));
        above = *place;
    }
    Host::user([&](User& user) {
        clickToOpen(user, menu);
        user.tap(Key::Escape);
    });
    EXPECT_EQ(host->programName(), fourth);
    Host::user([&](User& user) {
        clickToOpen(user, menu);
        user.click({menu.x + 60, menu.y + 12});
    });
    EXPECT_EQ(host->programName(), "Default") << "the first entry lies over the key";
    click(next);
    const std::string second = host->programName();
    EXPECT_NE(second, "Default");
    click(next);
    click(previous);
    EXPECT_EQ(host->programName(), second);
}

TEST_F(Panel, ANameIsTypedTakenOverAndGivenUp)
{
    const VSTGUI::CRect box(139, 488, 255, 504);
    Host::idleFor(200);
    const VSTGUI::Pixels before = host->picture();
    VSTGUI::Pixels shown;
    const struct {
        std::string typed;
        std::function<void(User&)> end;
        std::string name;
    } rows[] = {
        {"Loud", [](User& user) { user.tap(Key::Return); }, "Loud"},
        {"never", [](User& user) { user.tap(Key::Escape); }, "Loud"},
        {"Tab", [](User& user) { user.tap(Key::Tab); }, "Tab"},
        {"Elsewhere", [&](User& user) { user.click(host->at(20, 200)); }, "Elsewhere"},
    };
    const auto keysHeardIn = [&](const std::function<void(User&)>& script) {
        host->window->keysHeard();
        Host::user(script);
        return host->window->keysHeard();
    };
    const auto typeAfterAClick = [&](User& user) {
        user.click(host->at(kKnobX, kKnobY));
        user.pause(100);
        user.tap(Key::Tab);
        user.type("a");
    };
    // Keys are the host's unless a name is typed.
    host->window->takeKeyboard();
    EXPECT_EQ(keysHeardIn(typeAfterAClick), 2);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        const std::string old = host->programName();
        EXPECT_EQ(keysHeardIn([&](User& user) { typeName(user, row.typed); }), 0);
        EXPECT_EQ(host->programName(), old);
        shown = host->picture();
        EXPECT_EQ(difference(shown, before, {box}).pixels, 0);
        EXPECT_GT(difference(shown, before).pixels, 20);
        EXPECT_EQ(keysHeardIn([&](User& user) {
                      row.end(user);
                      user.pause(100);
                      user.type("b");
                  }),
                  1);
        EXPECT_EQ(host->programName(), row.name);
    }
    EXPECT_EQ(keysHeardIn(typeAfterAClick), 2);
    EXPECT_EQ(host->programName(), "Elsewhere") << "keys of the host's have renamed the preset";
}

TEST_F(Panel, FilesAreSavedAndLoadedThroughTheSystemsDialogs)
{
    const std::string bank = folder / "mine.zkb", preset = folder / "one.zkr";
    chooseFile(saveBank, "Save bank", bank);
    EXPECT_EQ(fs::file_size(bank), 48617u);
    host->automate(kLGainL, 0.9);
    Host::idleFor(60);
    chooseFile(savePreset, "Save preset", preset);
    EXPECT_EQ(fs::file_size(preset), 2065u);
    chooseFile(loadBank, "Load bank", bank);
    EXPECT_EQ(host->value(kLGainL), 0.5f);
    chooseFile(loadPreset, "Load preset", preset);
    EXPECT_NEAR(host->value(kLGainL), 0.9, 1e-6);
    // Bytes of the usual order are refused where the other one is asked for.
    chooseFile(loadBank, "Load bank (endian-reversed)", bank, hands::Button::Right);
    EXPECT_NEAR(host->value(kLGainL), 0.9, 1e-6);
}

TEST_F(Panel, TheManualOpensOrAMessageTellsWhyNot)
{
    const std::string file = folder / "manual.nobody-reads-this";
    writeContent(file, "manual");
    const struct {
        std::string manual;
        const char* opener;  // what xdg-open answers
        std::string caption, text;
    } rows[] = {
        {file, "/bin/sleep 1; exit 3", "Could not open manual file",
         "Make sure Acrobat Reader is installed"},
        {folder / "none.pdf", "exit 0", "", "Could not open user manual"},
    };
    for (const auto& row : rows) {
        platform::userSettings().writeText("ManualPath", row.manual);
        installHelper("xdg-open", row.opener);
        Host::user([&](User& user) {
            const int turns = Host::turns;
            user.click(manual);
            if (!kOnWindows) {
                user.pause(500);
                EXPECT_GT(Host::turns - turns, 10) << "the host stood still for the opener";
                return closeMessage(user, {row.text});
            }
            EXPECT_TRUE(user.waitFor([&] { return messageInFront() == row.text; })) << row.text;
            EXPECT_EQ(titleInFront(), row.caption);
            user.tap(Key::Return);
        });
    }
    if (!kOnWindows) {
        platform::userSettings().writeText("ManualPath", file);
        installHelper("xdg-open", "exit 0");
        Host::user([&](User& user) {
            user.click(manual);
            EXPECT_TRUE(user.waitFor([&] { return asked() == file + "\n"; }));
        });
    }
    click(next);
    EXPECT_NE(host->programName(), "Default") << "the editor works on after the messages";
}

TEST_F(Panel, WithoutAProgramForFileDialogsAMessageNamesThem)
{
    if (kOnWindows)
        GTEST_SKIP() << "Windows has dialogs of its own";
    const std::vector<std::string> lines{"Files are chosen with the program zenity or kdialog,",
                                         "and neither of them is installed.",
                                         "Install one of the two to load and save files."};
    for (const Place& key : {loadBank, savePreset})
        Host::user([&](User& user) {
            user.click(key);
            closeMessage(user, lines);
        });
    // The message goes with the editor.
    Host::user([&](User& user) {
        user.click(loadBank);
        EXPECT_TRUE(user.waitFor([&] { return messageShows(lines[0]); }));
    });
    host->closeEditor();
    Host::idleFor(60);
    EXPECT_FALSE(messageShows(lines[0]));
}

}  // namespace
