// File dialogs, with a mock of the desktop's helper program.
#include "tests/support/MockedPrograms.h"
#include "tests/vstgui/OpenFrame.h"

namespace {

class Dialog : public OpenFrame {
protected:
    SharedPointer<CNewFileSelector> loadSelector()
    {
        auto s = owned(CNewFileSelector::create(frame));
        s->setTitle("Load \"bank\"; $(x)");
        s->setInitialDirectory(programs.folder.path().c_str());
        s->addFileExtension(CFileExtension("ZKR Bank", "zkb"));
        return s;
    }

    MockedPrograms programs;
};

TEST_F(Dialog, ZenityIsRunWithoutAShellAndItsPathIsUsed)
{
    programs.install("zenity",
                     "test -z \"$LD_LIBRARY_PATH\" || exit 1\n"
                     "echo 'Gtk-WARNING: noise'; echo '/tmp/B\xC3\xA4nk 1.zkb'");
    setenv("LD_LIBRARY_PATH", "/of/the/host", 1);
    const auto s = loadSelector();
    ASSERT_TRUE(s->runModal()) << "or the program got the host's search path for libraries";
    unsetenv("LD_LIBRARY_PATH");
    ASSERT_EQ(s->getNumSelectedFiles(), 1u);
    EXPECT_STREQ(s->getSelectedFile(0), "/tmp/B\xC3\xA4nk 1.zkb");
    EXPECT_EQ(programs.asked(),
              "--file-selection\n--title=Load \"bank\"; $(x)\n--filename=" + (programs.folder / "")
                  + "\n--file-filter=ZKR Bank | *.zkb\n");
}

TEST_F(Dialog, KdialogIsPreferredAndBothGetTheDefaultName)
{
    const auto s = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
    s->setTitle("Save preset");
    s->setInitialDirectory("/no/such/folder");
    s->setDefaultSaveName("--help");
    s->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
    programs.install("zenity", "echo /wrong");
    ASSERT_TRUE(s->runModal());
    EXPECT_EQ(programs.asked(),
              "--file-selection\n--title=Save preset\n--save\n--confirm-overwrite\n"
              "--filename=--help\n--file-filter=ZKR Preset | *.zkr\n");
    programs.install("kdialog", "echo /a.b/.new");
    ASSERT_TRUE(s->runModal());
    EXPECT_STREQ(s->getSelectedFile(0), "/a.b/.new.zkr");
    EXPECT_EQ(programs.asked(),
              "--title\nSave preset\n--getsavefilename\n./--help\nZKR Preset (*.zkr)\n");
    EXPECT_TRUE(loadSelector()->runModal());
    EXPECT_NE(programs.asked().find("--getopenfilename\n"), std::string::npos);
}

TEST_F(Dialog, TheReleaseThatItTakesLeavesNoButtonPressed)
{
    programs.install("zenity", "exec /bin/sleep 0.3");
    record.onPress = [&] {
        loadSelector()->runModal();
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    };
    click(20, 20);
    pump(100);
    movePointer(30, 30);
    EXPECT_TRUE(pumpUntil([&] { return record.has("move 30,30"); }, 1000));
}

TEST_F(Dialog, ASecondOneDoesNotOpenMeanwhile)
{
    programs.install("zenity", "/bin/sleep 0.5; echo /one");
    const auto second = loadSelector();
    Script script({[&] { EXPECT_FALSE(second->runModal()); }});
    EXPECT_TRUE(loadSelector()->runModal());
    EXPECT_TRUE(script.finished());
}

TEST_F(Dialog, CancelNoHelperAndInvalidOutputChooseNothing)
{
    // Without a helper a message is shown, and the call returns at once.
    EXPECT_FALSE(loadSelector()->runModal());
    for (const char* const script : {"echo /path; exit 1", "echo relative/path"}) {
        programs.install("zenity", script);
        EXPECT_FALSE(loadSelector()->runModal()) << script;
    }
}

TEST_F(Dialog, TheFrameMayCloseWhileTheDialogIsOpen)
{
    programs.install("zenity", "exec /bin/sleep 1000");
    Script script({[&] { closeFrame(); }});
    EXPECT_FALSE(loadSelector()->runModal());
    EXPECT_TRUE(script.finished());
}

}  // namespace
