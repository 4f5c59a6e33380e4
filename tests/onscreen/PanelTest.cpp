// The row of keys at the bottom, under mouse and keyboard: name, files, manual.
#include "tests/onscreen/EditorOnScreen.h"
#include "tests/support/MockedPrograms.h"

namespace {

namespace fs = std::filesystem;
using userinput::Key;

struct Panel : EditorOnScreen {
    void click(Place where)
    {
        Host::user([&](User& user) { user.click(where); });
    }
    // Presses a key that opens a file dialog, chooses `answer` there and waits for the consequence.
    void chooseFile(Place key, const std::string& title, const std::string& answer,
                    const std::function<bool()>& done,
                    userinput::Button button = userinput::Button::Left)
    {
        programs.install("zenity", "/bin/sleep 0.3; echo '" + answer + "'");
        Host::user([&](User& user) {
            const int turns = Host::turns;
            user.click(key, button);
            if (!kOnWindows) {
                user.pause(200);
                EXPECT_GT(Host::turns - turns, 5) << "the host was blocked by the dialog";
                return;
            }
            EXPECT_TRUE(user.waitFor([&] { return titleInFront() == title; })) << title;
            user.pause(200);
            // Not typed: the system would auto-complete it.
            fillFieldInFront(answer);
            user.tap(Key::Return);
            EXPECT_TRUE(user.waitFor([&] { return titleInFront() != title; })) << title;
        });
        EXPECT_TRUE(Host::soon(done)) << title;
        EXPECT_TRUE(kOnWindows || programs.asked().find("--title=" + title) != std::string::npos)
            << programs.asked();
    }

    // Whether a message box drawn by the toolkit shows this line.
    bool messageShows(const std::string& line) const
    {
        return showsText(host->picture(), line, VSTGUI::CColor(20, 20, 20),
                         VSTGUI::CColor(250, 250, 250));
    }
    void closeMessage(User& user, const std::vector<std::string>& lines)
    {
        for (const std::string& line : lines)
            EXPECT_TRUE(user.waitFor([&] { return messageShows(line); })) << line;
        user.click(host->at(197, 262 + 10 * static_cast<double>(lines.size())));
        EXPECT_TRUE(user.waitFor([&] { return !messageShows(lines[0]); })) << lines[0];
    }

    MockedPrograms programs;
    const TemporaryFolder& folder = programs.folder;
    const Place saveBank = host->at(8, 496), loadBank = host->at(59, 496),
                savePreset = host->at(74, 496), loadPreset = host->at(126, 496),
                next = host->at(297, 496), manual = host->at(384, 496);
};

TEST_F(Panel, ANameIsTypedCommittedAndDiscarded)
{
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
    // Keys go to the host unless a name is being typed.
    const auto typeAfterAClick = [&](User& user) {
        user.click(host->at(kKnobX, kKnobY));
        user.pause(100);
        user.tap(Key::Tab);
        user.type("a");
    };
    host->window->takeKeyboard();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.typed);
        const std::string old = host->programName();
        EXPECT_EQ(keysHeardIn(typeAfterAClick), 2);
        EXPECT_EQ(host->programName(), old);
        EXPECT_EQ(keysHeardIn([&](User& user) {
                      clickToOpen(user, field);
                      user.type(row.typed);
                      user.pause(100);
                  }),
                  0);
        EXPECT_EQ(host->programName(), old);
        EXPECT_EQ(keysHeardIn([&](User& user) {
                      row.end(user);
                      user.pause(100);
                      user.type("b");
                  }),
                  1);
        EXPECT_EQ(host->programName(), row.name);
    }
}

TEST_F(Panel, ANameIsPastedUpToItsLengthInBytesAndCopied)
{
    // "Sound" in Chinese, four times: 24 bytes, one more than a name has.
    std::string name;
    for (int i = 0; i < 4; ++i)
        name += "\xE5\xA3\xB0\xE9\x9F\xB3";
    const auto shortcut = [](User& user, Key letter) {
        userinput::key(Key::Control, true);
        user.tap(letter);
        userinput::key(Key::Control, false);
        user.pause(300);
    };
    setClipboard(name);
    Host::user([&](User& user) {
        clickToOpen(user, field);
        shortcut(user, Key::V);
        user.tap(Key::Return);
    });
    EXPECT_EQ(host->programName(), name.substr(0, 21));
    setClipboard("");
    Host::user([&](User& user) {
        clickToOpen(user, field);
        shortcut(user, Key::C);
        EXPECT_EQ(clipboard(), name.substr(0, 21));
        user.tap(Key::Escape);
    });
}

TEST_F(Panel, FilesAreSavedAndLoadedThroughTheSystemsDialogs)
{
    const std::string bank = folder / "mine.zkb", preset = folder / "one.zkr";
    const auto hasSize = [](const std::string& file, size_t size) {
        return [=] { return fs::exists(file) && fs::file_size(file) == size; };
    };
    const auto gainIs = [&](double gain) {
        return [=] { return std::abs(static_cast<double>(host->value(kLGainL)) - gain) < 1e-6; };
    };
    chooseFile(saveBank, "Save bank", bank, hasSize(bank, 48617));
    host->automate(kLGainL, 0.9);
    Host::idleFor(60);
    chooseFile(savePreset, "Save preset", preset, hasSize(preset, 2065));
    chooseFile(loadBank, "Load bank", bank, gainIs(0.5));
    chooseFile(loadPreset, "Load preset", preset, gainIs(0.9));
    // Files in the usual byte order are refused with the endian-reversed option.
    chooseFile(loadBank, "Load bank (endian-reversed)", bank, gainIs(0.9),
               userinput::Button::Right);
    Host::idleFor(400);
    EXPECT_TRUE(gainIs(0.9)());
}

TEST_F(Panel, DialogsAndTheManualOpenOrAMessageTellsWhyNot)
{
    const std::vector<std::string> noHelper{
        "Files are chosen with the desktop's portal, zenity or kdialog,",
        "and none of them answers.", "Install the program zenity to load and save files."};
    if (!kOnWindows)
        Host::user([&](User& user) {
            user.click(loadBank);
            closeMessage(user, noHelper);
        });
    const std::string file = folder / "manual.nobody-reads-this";
    writeContent(file, "manual");
    const struct {
        std::string manual;
        const char* opener;  // the commands of xdg-open
        std::string caption, text;
    } rows[] = {
        {file, "/bin/sleep 1; exit 3", "Could not open manual file",
         "Make sure Acrobat Reader is installed"},
        {folder / "none.pdf", "exit 0", "", "Could not open user manual"},
    };
    for (const auto& row : rows) {
        platform::userSettings().writeText("ManualPath", row.manual);
        programs.install("xdg-open", row.opener);
        Host::user([&](User& user) {
            const int turns = Host::turns;
            user.click(manual);
            if (!kOnWindows) {
                user.pause(500);
                EXPECT_GT(Host::turns - turns, 10) << "the host was blocked by the opener";
                return closeMessage(user, {row.text});
            }
            EXPECT_TRUE(user.waitFor([&] { return messageInFront() == row.text; })) << row.text;
            EXPECT_EQ(titleInFront(), row.caption);
            user.tap(Key::Return);
        });
    }
    if (!kOnWindows) {
        platform::userSettings().writeText("ManualPath", file);
        programs.install("xdg-open", "exit 0");
        Host::user([&](User& user) {
            user.click(manual);
            EXPECT_TRUE(user.waitFor([&] { return programs.asked() == file + "\n"; }));
        });
    }
    click(next);
    EXPECT_NE(host->programName(), "Default") << "the editor does not work after the messages";
}

}  // namespace
