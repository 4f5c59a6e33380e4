// The row of keys at the bottom under mouse and keyboard: menu, name, files, manual.
#include "EditorOnScreen.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using hands::Key;

struct Panel : EditorOnScreen {
    Panel() : folder(fs::temp_directory_path() / "zkrt46-panel-on-screen")
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
        // The programs that a desktop brings, as scripts that write down what they are asked; no
        // others are found.
        if (!kOnWindows)
            setPath(folder.string());
    }
    ~Panel() override
    {
        host.reset();
        if (!kOnWindows)
            setPath(path);
        // Saving and loading move it.
        fs::current_path(start);
        fs::remove_all(folder);
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
        const fs::path file = folder / name;
        std::ofstream(file) << "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" << (folder / "asked").string()
                            << "'\n"
                            << answer << "\n";
        fs::permissions(file, fs::perms::owner_all);
    }
    std::string asked() const
    {
        std::ifstream file(folder / "asked");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void click(Place where, hands::Button button = hands::Button::Left)
    {
        Host::user([&](User& user) { user.click(where, button); });
    }
    // Presses a key that opens a file dialog, and answers that.
    void chooseFile(Place key, const std::string& title, const fs::path& answer,
                    hands::Button button = hands::Button::Left)
    {
        installHelper("zenity", "echo '" + answer.string() + "'");
        Host::user([&](User& user) {
            user.click(key, button);
            if (!kOnWindows)
                return;
            EXPECT_TRUE(user.waitFor([&] { return titleInFront() == title; })) << title;
            user.pause(200);
            // Not typed: the system would add endings of its own to it.
            fillFieldInFront(answer.string());
            user.tap(Key::Return);
            EXPECT_TRUE(user.waitFor([&] { return titleInFront() != title; })) << title;
        });
        EXPECT_TRUE(kOnWindows || asked().find("--title=" + title) != std::string::npos) << asked();
    }

    // Where a message of the toolkit's own is shown.
    VSTGUI::Pixels middle() const
    {
        return screenshot(host->at(12, 171), 370, 163);
    }
    void closeMessage(User& user, const std::string& picture, int lines)
    {
        VSTGUI::Pixels shown;
        user.waitFor([&] { return looksLike(shown = middle(), picture); });
        expectPicture(shown, picture);
        user.click(host->at(197, 262 + 10 * lines));
        EXPECT_TRUE(user.waitFor([&] { return !looksLike(middle(), picture); })) << picture;
    }

    const fs::path folder, start = fs::current_path();
    const std::string path = std::getenv("PATH") ? std::getenv("PATH") : "";

    const Place saveBank = host->at(8, 496), loadBank = host->at(59, 496),
                savePreset = host->at(74, 496), loadPreset = host->at(126, 496),
                field = host->at(197, 496), menu = host->at(264, 494),
                previous = host->at(276, 496), next = host->at(297, 496),
                manual = host->at(384, 496);
};

TEST_F(Panel, TheMenuShowsThePresetsAndOneIsChosenByKeysAnotherByTheMouse)
{
    const int firstDown = kOnWindows ? 1 : 0;  // Windows highlights nothing at first
    const std::string picture = kOnWindows ? "menu-windows" : "menu-x11";
    VSTGUI::Pixels shown;
    Host::user([&](User& user) {
        user.click(menu);
        user.waitFor([&] {
            shown = screenshot(host->at(250, 480), 380, 270);
            return looksLike(shown, picture);
        });
        for (int i = 0; i < 3 + firstDown; ++i)
            user.tap(Key::Down);
        user.tap(Key::Return);
    });
    expectPicture(shown, picture);
    const std::string fourth = host->programName();
    EXPECT_NE(fourth, "Default");
    Host::user([&](User& user) {
        user.click(menu);
        user.pause(400);
        user.tap(Key::Escape);
    });
    EXPECT_EQ(host->programName(), fourth);
    Host::user([&](User& user) {
        user.click(menu);
        user.pause(400);
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
    VSTGUI::Pixels shown;
    Host::user([&](User& user) {
        user.click(field);
        user.pause(100);
        user.type("Loud");
        user.pause(250);
        shown = screenshot(host->at(130, 484), 140, 21);
    });
    // A caret may blink.
    expectPicture(shown, kOnWindows ? "name-windows" : "name-x11", 0.3);
    EXPECT_EQ(host->programName(), "Default");
    Host::user([&](User& user) { user.tap(Key::Return); });
    EXPECT_EQ(host->programName(), "Loud");
    Host::user([&](User& user) {
        user.click(field);
        user.pause(100);
        user.type("never");
        user.tap(Key::Escape);
    });
    EXPECT_EQ(host->programName(), "Loud");
    Host::user([&](User& user) {
        user.click(field);
        user.pause(100);
        user.type("Elsewhere");
        user.click(host->at(20, 200));
    });
    EXPECT_EQ(host->programName(), "Elsewhere") << "a press beside the box takes the name over";
}

TEST_F(Panel, KeysAreTheHostsUnlessANameIsTyped)
{
    const Place knob = host->at(42 + 62.5, 7 + 287.5);
    const auto heardAfter = [&](const std::function<void(User&)>& script) {
        host->window->keysHeard();
        Host::user(script);
        return host->window->keysHeard();
    };
    host->window->takeKeyboard();
    const auto typeAfterAClick = [&](User& user) {
        user.click(knob);
        user.pause(100);
        user.tap(Key::Tab);
        user.type("a");
    };
    EXPECT_EQ(heardAfter(typeAfterAClick), 2);
    EXPECT_EQ(heardAfter([&](User& user) {
                  user.click(field);
                  user.pause(100);
                  user.type("mine");
                  user.pause(100);
              }),
              0);
    const std::function<void(User&)> ends[] = {
        [](User& user) { user.tap(Key::Return); },
        [](User& user) { user.tap(Key::Tab); },
        [](User& user) { user.tap(Key::Escape); },
        [&](User& user) { user.click(knob); },
    };
    for (const auto& end : ends)
        EXPECT_EQ(heardAfter([&](User& user) {
                      user.click(field);
                      user.pause(100);
                      user.type("mine");
                      end(user);
                      user.pause(100);
                      user.type("b");
                  }),
                  1)
            << &end - ends;
    EXPECT_EQ(heardAfter(typeAfterAClick), 2);
    EXPECT_EQ(host->programName(), "mine") << "keys of the host's have renamed the preset";
}

TEST_F(Panel, FilesAreSavedAndLoadedThroughTheSystemsDialogs)
{
    const fs::path bank = folder / "mine.zkb", preset = folder / "one.zkr";
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
    host->heard();
    chooseFile(loadBank, "Load bank (endian-reversed)", bank, hands::Button::Right);
    EXPECT_NEAR(host->value(kLGainL), 0.9, 1e-6);
}

TEST_F(Panel, TheManualOpensOrAMessageTellsWhyNot)
{
    const fs::path file = folder / "manual.nobody-reads-this";
    std::ofstream(file) << "manual";
    struct Case {
        fs::path manual;
        const char* opener;  // what xdg-open answers
        std::string caption, text, picture;
    };
    const Case cases[] = {
        {file, "/bin/sleep 1; exit 3", "Could not open manual file",
         "Make sure Acrobat Reader is installed", "no-viewer-x11"},
        {folder / "none.pdf", "exit 0", "", "Could not open user manual", "no-manual-x11"},
    };
    for (const Case& now : cases) {
        platform::userSettings().writeText("ManualPath", now.manual.string());
        installHelper("xdg-open", now.opener);
        Host::user([&](User& user) {
            const int turns = Host::turns;
            user.click(manual);
            if (!kOnWindows) {
                user.pause(500);
                EXPECT_GT(Host::turns - turns, 10) << "the host stood still for the opener";
                return closeMessage(user, now.picture, 1);
            }
            EXPECT_TRUE(user.waitFor([&] { return messageInFront() == now.text; })) << now.text;
            EXPECT_EQ(titleInFront(), now.caption);
            user.tap(Key::Return);
        });
    }
    if (!kOnWindows) {
        platform::userSettings().writeText("ManualPath", file.string());
        installHelper("xdg-open", "exit 0");
        Host::user([&](User& user) {
            user.click(manual);
            EXPECT_TRUE(user.waitFor([&] { return asked() == file.string() + "\n"; }));
        });
    }
    Host::user([&](User& user) { user.click(next); });
    EXPECT_NE(host->programName(), "Default") << "the editor works on after the messages";
}

TEST_F(Panel, WithoutAProgramForFileDialogsAMessageNamesThem)
{
    if (kOnWindows)
        GTEST_SKIP() << "Windows has dialogs of its own";
    for (const Place& key : {loadBank, savePreset})
        Host::user([&](User& user) {
            user.click(key);
            closeMessage(user, "no-helper-x11", 3);
        });
    click(next);
    EXPECT_NE(host->programName(), "Default") << "the editor works on after the messages";
    click(previous);
    // The message goes with the editor.
    Host::user([&](User& user) {
        user.click(loadBank);
        EXPECT_TRUE(user.waitFor([&] { return looksLike(middle(), "no-helper-x11"); }));
    });
    host->closeEditor();
    Host::idleFor(60);
    EXPECT_FALSE(looksLike(middle(), "no-helper-x11"));
}

}  // namespace
