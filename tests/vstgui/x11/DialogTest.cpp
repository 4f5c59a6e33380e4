// File dialogs through a helper program that stands in for the desktop's.
#include "HostWindow.h"

#include "vstgui/vstgui.h"

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace VSTGUI;
namespace fs = std::filesystem;

namespace {

class Dialog : public ::testing::Test {
protected:
    Dialog() : folder(fs::temp_directory_path() / ("zkr-dialog-" + std::to_string(getpid())))
    {
        fs::create_directories(folder / "bin");
        EXPECT_TRUE(frame->open(host.handle()));
        setenv("PATH", (folder / "bin").c_str(), 1);
        setenv("LD_LIBRARY_PATH", "/of/the/host", 1);
    }
    ~Dialog() override
    {
        setenv("PATH", path.c_str(), 1);
        unsetenv("LD_LIBRARY_PATH");
        if (frame)
            frame->close();
        fs::remove_all(folder);
    }

    // A shell script that first writes its arguments and environment down.
    void installHelper(const std::string& name, const std::string& script)
    {
        const fs::path file = folder / "bin" / name;
        std::ofstream(file) << "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > '"
                            << (folder / "arguments").string()
                            << "'\nprintf '%s' \"$LD_LIBRARY_PATH\" > '"
                            << (folder / "environment").string() << "'\n"
                            << script << "\n";
        fs::permissions(file, fs::perms::owner_all);
    }

    std::string contents(const char* name)
    {
        std::ifstream file(folder / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    SharedPointer<CNewFileSelector> loadSelector()
    {
        auto s = owned(CNewFileSelector::create(frame));
        s->setTitle("Load \"bank\"; $(x)");
        s->setInitialDirectory(folder.c_str());
        s->addFileExtension(CFileExtension("ZKR Bank", "zkb"));
        return s;
    }

    std::string path{std::getenv("PATH")};
    fs::path folder;
    HostWindow host{100, 80, 200, 200};
    CFrame* frame{new CFrame(CRect(0, 0, 200, 200), nullptr)};
};

TEST_F(Dialog, ZenityIsAskedWithoutAShellAndItsPathTaken)
{
    installHelper("zenity", "echo 'Gtk-WARNING: noise'; echo '/tmp/B\xC3\xA4nk 1.zkb'");
    const auto s = loadSelector();
    ASSERT_TRUE(s->runModal());
    ASSERT_EQ(s->getNumSelectedFiles(), 1u);
    EXPECT_STREQ(s->getSelectedFile(0), "/tmp/B\xC3\xA4nk 1.zkb");
    EXPECT_EQ(contents("arguments"),
              "--file-selection\n--title=Load \"bank\"; $(x)\n--filename=" + folder.string()
                  + "/\n--file-filter=ZKR Bank | *.zkb\n");
    EXPECT_EQ(contents("environment"), "");
}

TEST_F(Dialog, KdialogComesFirstAndSavesUnderTheGivenName)
{
    installHelper("zenity", "echo /wrong");
    installHelper("kdialog", "echo /tmp/new");
    const auto s = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
    s->setTitle("Save preset");
    s->setInitialDirectory("/no/such/folder");
    s->setDefaultSaveName("--help");
    s->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
    ASSERT_TRUE(s->runModal());
    EXPECT_STREQ(s->getSelectedFile(0), "/tmp/new.zkr");
    EXPECT_EQ(contents("arguments"),
              "--title\nSave preset\n--getsavefilename\n./--help\nZKR Preset (*.zkr)\n");
}

TEST_F(Dialog, ACancelNoHelperAndNonsenseAreNoChoice)
{
    const auto started = X11::steadyMilliseconds();
    EXPECT_FALSE(loadSelector()->runModal());
    EXPECT_LT(X11::steadyMilliseconds() - started, 1000u) << "the message was waited for";
    installHelper("zenity", "exit 1");
    EXPECT_FALSE(loadSelector()->runModal());
    installHelper("zenity", "echo relative/path");
    EXPECT_FALSE(loadSelector()->runModal());
}

TEST_F(Dialog, TheFrameMayCloseWhileTheDialogIsOpen)
{
    installHelper("zenity", "exec /bin/sleep 60");
    const auto s = loadSelector();
    const auto started = X11::steadyMilliseconds();
    const auto closing = owned(new CVSTGUITimer(
        [&](CVSTGUITimer* timer) {
            timer->stop();
            std::exchange(frame, nullptr)->close();
        },
        100));
    EXPECT_FALSE(s->runModal());
    EXPECT_LT(X11::steadyMilliseconds() - started, 5000u);
}

}  // namespace
