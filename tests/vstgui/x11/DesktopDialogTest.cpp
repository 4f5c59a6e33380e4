// The file dialogs of real desktops, used by keyboard: those of the portal (in its GTK form),
// zenity and kdialog.
#include "tests/support/MockedPrograms.h"
#include "tests/vstgui/x11/User.h"

#include <csignal>
#include <functional>
#include <numeric>
#include <optional>
#include <vector>

namespace {

namespace fs = std::filesystem;
using platform::ChildProcess;

// "Sound" in Chinese.
const std::string kSound = "\xE5\xA3\xB0\xE9\x9F\xB3";
constexpr KeySym kSoundKeys[] = {0x10058F0, 0x10097F3};

// A session bus, which starts the portal when it is asked for.
class SessionBus {
public:
    // The programs on the bus keep their files in the folder.
    explicit SessionBus(const std::string& folder) : folder(folder)
    {
        const std::vector<std::string> command{"dbus-daemon", "--session", "--nofork",
                                               "--print-address"};
        daemon.emplace(ChildProcess::Role::Desktop, command);
        EXPECT_TRUE(daemon->started()) << daemon->startError();
        std::string output;
        EXPECT_TRUE(pumpUntil([&] {
            daemon->readOutput(output);
            return output.find('\n') != std::string::npos;
        }));
        setenv("DBUS_SESSION_BUS_ADDRESS", output.substr(0, output.find('\n')).c_str(), 1);
    }
    // Ends the programs with it, and removes their files.
    ~SessionBus()
    {
        daemon.reset();
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        pumpUntil([&] {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
            return !fs::exists(folder);
        });
    }
    // As if it crashed.
    static void endPortal()
    {
        ChildProcess asking(ChildProcess::Role::Desktop,
                            {"/usr/bin/dbus-send", "--session", "--print-reply=literal",
                             "--dest=org.freedesktop.DBus", "/",
                             "org.freedesktop.DBus"
                             ".GetConnectionUnixProcessID",
                             "string:org.freedesktop.portal.Desktop"});
        std::string output;
        while (asking.readOutput(output))
            pump(5);
        ASSERT_EQ(asking.wait(), 0);
        kill(std::stoi(output.substr(output.find("uint32") + 6)), SIGKILL);
    }
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

private:
    const std::string folder;
    std::optional<ChildProcess> daemon;
};

struct Choice : CBaseObject {
    CMessageResult notify(CBaseObject* sender, IdStringPtr) override
    {
        path = static_cast<CNewFileSelector*>(sender)->getSelectedFile(0);
        return kMessageNotified;
    }
    std::string path;
};

struct Provider {
    std::string name;
    const char* replace;  // the key for "Replace" or "Yes"
    bool opensField;      // a slash opens the field for the path to load
};

class DesktopDialog : public OpenFrame, public testing::WithParamInterface<Provider> {
protected:
    DesktopDialog()
    {
        const std::string own = files / "own";
        fs::create_directory(own);
        fs::permissions(own, fs::perms::owner_all);
        for (const auto& [name, value] : {std::pair<const char*, std::string>{"HOME", own},
                                          {"XDG_RUNTIME_DIR", own},
                                          {"XDG_CURRENT_DESKTOP", "GNOME"},
                                          {"GSETTINGS_BACKEND", "memory"},
                                          {"NO_AT_BRIDGE", "1"},
                                          {"LC_ALL", "C.UTF-8"}})
            setenv(name, value.c_str(), 1);
        if (GetParam().name == "portal")
            bus.emplace(own);
        // The only programs that can be found.
        programs.emplace();
        for (const std::string name : {"xdotool", GetParam().name.c_str()})
            fs::create_symlink("/usr/bin/" + name, programs->folder / name);
        desktop.addKeys({std::begin(kSoundKeys), std::end(kSoundKeys)});
        writeContent(old, "");
        // Dialogs complete a name that only one file begins with.
        writeContent(files / "older.zkb", "");
        writeContent(sound, "");
    }
    ~DesktopDialog() override { unsetenv("XDG_RUNTIME_DIR"); }

    SharedPointer<Choice> ask(CNewFileSelector::Style style, const std::string& name = "")
    {
        const auto selector = owned(CNewFileSelector::create(frame, style));
        const CFileExtension extension("ZKR Bank", "zkb");
        selector->setTitle("Bank");
        selector->setInitialDirectory(files.path().c_str());
        selector->setDefaultSaveName(name.c_str());
        if (style == CNewFileSelector::kSelectSaveFile)
            selector->setDefaultExtension(extension);
        else
            selector->addFileExtension(extension);
        auto choice = owned(new Choice);
        EXPECT_TRUE(selector->run(choice));
        return choice;
    }
    // Waits for a window of a dialog other than `previous`, and gives it the keyboard.
    ::Window nextWindow(::Window previous = None)
    {
        ::Window window = None;
        EXPECT_TRUE(pumpUntil([&] {
            window = desktop.windowInFrontOf(host);
            return window != None && window != previous;
        }));
        awaitStill();
        desktop.focus(window);
        return window;
    }
    // Waits until the screen stands still, and differs from `before` by more than a caret.
    static void awaitStill(const std::vector<uint8_t>& before = {})
    {
        const auto differ = [](const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
            constexpr int kCaret = 400;  // bytes
            return std::inner_product(a.begin(), a.end(), b.begin(), 0, std::plus<>(),
                                      std::not_equal_to<>())
                > kCaret;
        };
        EXPECT_TRUE(pumpUntil([&] {
            const std::vector<uint8_t> earlier = screen();
            pump(250);
            const std::vector<uint8_t> now = screen();
            return !differ(now, earlier) && (before.empty() || differ(now, before));
        }));
    }
    static std::vector<uint8_t> screen() { return screenshot({0, 0}, 1024, 768).rgba; }
    bool closes(const Choice& choice)
    {
        return pumpUntil(
            [&] { return choice.getNbReference() == 1 && desktop.windowInFrontOf(host) == None; });
    }

    TemporaryFolder files;
    const std::string old = files / "old.zkb", sound = files / (kSound + ".zkb");
    Desktop desktop;
    std::optional<SessionBus> bus;
    std::optional<MockedPrograms> programs;
};

TEST_P(DesktopDialog, LoadsSavesAsksAndCancels)
{
    constexpr auto kLoad = CNewFileSelector::kSelectFile;
    constexpr auto kSave = CNewFileSelector::kSelectSaveFile;
    const std::string replace = std::string("key ") + GetParam().replace;
    const struct {
        const char* what;
        CNewFileSelector::Style style;
        std::string offered;            // the default name
        std::string typed;              // before the keys
        std::vector<std::string> keys;  // for each window that opens
        std::string chosen;
    } scenes[] = {
        {"load",
         kLoad,
         "",
         GetParam().opensField ? sound.substr(1) : kSound + ".zkb",
         {"key Return"},
         sound},
        {"cancel a load", kLoad, "", "", {"key Escape"}, ""},
        {"save", kSave, kSound + "2", "", {"key Return"}, files / (kSound + "2.zkb")},
        {"type a name", kSave, "new", kSound, {"key Return", "key Escape"}, ""},
        {"replace", kSave, "old.zkb", "", {"key Return", replace}, old},
        {"do not replace", kSave, "old.zkb", "", {"key Return", "key Escape", "key Escape"}, ""},
        {"replace after our question", kSave, "old", "", {"key Return", "key Tab Return"}, old},
    };
    for (const auto& scene : scenes) {
        SCOPED_TRACE(scene.what);
        const auto choice = ask(scene.style, scene.offered);
        ::Window window = None;
        for (const std::string& keys : scene.keys) {
            window = nextWindow(window);
            if (keys == scene.keys.front() && !scene.typed.empty()) {
                const std::vector<uint8_t> before = screen();
                const bool opens = scene.style == kLoad && GetParam().opensField;
                user(opens ? "key slash" : "key ctrl+a");
                if (opens)
                    awaitStill(before);
                user("type --delay 3 {}", scene.typed);
            }
            user(keys);
        }
        EXPECT_TRUE(closes(*choice));
        EXPECT_EQ(choice->path, scene.chosen);
    }
    // The portal ends, but the dialog is of another program and stays.
    if (bus) {
        const auto choice = ask(kSave);
        nextWindow();
        bus->endPortal();
        EXPECT_TRUE(pumpUntil([&] { return choice->getNbReference() == 1; }));
        user("key Escape");
        EXPECT_TRUE(closes(*choice));
        EXPECT_EQ(choice->path, "");
    }
    // The editor, then the host's window is closed while the dialog is open.
    for (const bool editor : {true, false}) {
        SCOPED_TRACE(editor);
        const auto choice = ask(kSave);
        nextWindow();
        editor ? closeFrame() : host.destroy();
        EXPECT_TRUE(closes(*choice));
        if (editor)
            open();
    }
}

INSTANTIATE_TEST_SUITE_P(Each, DesktopDialog,
                         testing::Values(Provider{"portal", "alt+r", true},
                                         Provider{"zenity", "alt+r", true},
                                         Provider{"kdialog", "alt+y", false}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
