// File dialogs, with a mock of the desktop's helper program.
#include "tests/support/TemporaryFolder.h"
#include "tests/vstgui/OpenFrame.h"

namespace {

class Dialog : public OpenFrame {
protected:
    Dialog()
    {
        std::filesystem::create_directory(folder.path() / "bin");
        setenv("PATH", (folder.path() / "bin").c_str(), 1);
        setenv("LD_LIBRARY_PATH", "/of/the/host", 1);
    }
    ~Dialog() override
    {
        setenv("PATH", path.c_str(), 1);
        unsetenv("LD_LIBRARY_PATH");
    }

    // Installs a shell script that first records its arguments and environment.
    void installHelper(const std::string& name, const std::string& script)
    {
        const std::string file = folder / "bin/" + name;
        writeContent(file,
                     "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > '"
                         + (folder / "arguments") + "'\nprintf '%s' \"$LD_LIBRARY_PATH\" > '"
                         + (folder / "environment") + "'\n" + script + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    SharedPointer<CNewFileSelector> loadSelector()
    {
        auto s = owned(CNewFileSelector::create(frame));
        s->setTitle("Load \"bank\"; $(x)");
        s->setInitialDirectory(folder.path().c_str());
        s->addFileExtension(CFileExtension("ZKR Bank", "zkb"));
        return s;
    }

    std::string path{std::getenv("PATH")};
    TemporaryFolder folder;
};

TEST_F(Dialog, ZenityIsRunWithoutAShellAndItsPathIsUsed)
{
    installHelper("zenity", "echo 'Gtk-WARNING: noise'; echo '/tmp/B\xC3\xA4nk 1.zkb'");
    const auto s = loadSelector();
    ASSERT_TRUE(s->runModal());
    ASSERT_EQ(s->getNumSelectedFiles(), 1u);
    EXPECT_STREQ(s->getSelectedFile(0), "/tmp/B\xC3\xA4nk 1.zkb");
    EXPECT_EQ(contentOf(folder / "arguments"),
              "--file-selection\n--title=Load \"bank\"; $(x)\n--filename=" + folder.path().string()
                  + "/\n--file-filter=ZKR Bank | *.zkb\n");
    EXPECT_EQ(contentOf(folder / "environment"), "");
}

TEST_F(Dialog, KdialogIsPreferredAndGetsTheDefaultName)
{
    installHelper("zenity", "echo /wrong");
    installHelper("kdialog", "echo /a.b/.new");
    const auto s = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
    s->setTitle("Save preset");
    s->setInitialDirectory("/no/such/folder");
    s->setDefaultSaveName("--help");
    s->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
    ASSERT_TRUE(s->runModal());
    EXPECT_STREQ(s->getSelectedFile(0), "/a.b/.new.zkr");
    EXPECT_EQ(contentOf(folder / "arguments"),
              "--title\nSave preset\n--getsavefilename\n./--help\nZKR Preset (*.zkr)\n");
}

TEST_F(Dialog, CancelNoHelperAndInvalidOutputChooseNothing)
{
    // Without a helper a message is shown, and the call returns at once.
    EXPECT_FALSE(loadSelector()->runModal());
    for (const char* const script : {"echo /path; exit 1", "echo relative/path"}) {
        installHelper("zenity", script);
        EXPECT_FALSE(loadSelector()->runModal()) << script;
    }
}

TEST_F(Dialog, TheFrameMayCloseWhileTheDialogIsOpen)
{
    installHelper("zenity", "exec /bin/sleep 1000");
    Script script({[&] { closeFrame(); }});
    EXPECT_FALSE(loadSelector()->runModal());
    EXPECT_TRUE(script.finished());
}

}  // namespace
