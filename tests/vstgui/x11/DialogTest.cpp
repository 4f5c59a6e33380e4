// File dialogs, with a mock of the desktop's helper program.
#include "tests/support/MockedPrograms.h"
#include "tests/vstgui/x11/User.h"

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
    SharedPointer<CNewFileSelector> saveSelector(const char* folder, const char* name)
    {
        auto s = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
        s->setTitle("Save preset");
        s->setInitialDirectory(folder);
        s->setDefaultSaveName(name);
        s->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
        return s;
    }
    // The file that is chosen; empty after a cancel or without a dialog.
    std::string chosen(CNewFileSelector& selector)
    {
        const auto choice = owned(new Choice);
        if (selector.run(choice))
            pumpUntil([&] { return choice->getNbReference() == 1; });
        return choice->path;
    }

    // The dialog keeps it alive while it is open.
    struct Choice : CBaseObject {
        CMessageResult notify(CBaseObject* sender, IdStringPtr message) override
        {
            EXPECT_EQ(message, CNewFileSelector::kSelectEndMessage);
            const auto* const selector = static_cast<CNewFileSelector*>(sender);
            EXPECT_EQ(selector->getNumSelectedFiles(), 1u);
            path = selector->getSelectedFile(0);
            return kMessageNotified;
        }
        std::string path;
    };

    MockedPrograms programs;
    // The host's window, as the programs are told it.
    const std::string parent = std::to_string(Desktop::asWindow(host.handle()));
};

TEST_F(Dialog, ZenityIsRunWithoutAShellAndItsPathIsUsed)
{
    programs.install("zenity",
                     "test -z \"$LD_LIBRARY_PATH\" || exit 1\n"
                     "echo 'Gtk-WARNING: noise'; echo '/tmp/B\xC3\xA4nk 1.zkb'");
    setenv("LD_LIBRARY_PATH", "/of/the/host", 1);
    EXPECT_EQ(chosen(*loadSelector()), "/tmp/B\xC3\xA4nk 1.zkb")
        << "or the program got the host's search path for libraries";
    unsetenv("LD_LIBRARY_PATH");
    EXPECT_EQ(programs.asked(),
              "--file-selection\n--title=Load \"bank\"; $(x)\n--attach=" + parent + "\n--filename="
                  + (programs.folder / "") + "\n--file-filter=ZKR Bank | *.zkb\n");
}

TEST_F(Dialog, ZenityIsPreferredAndBothGetTheDefaultName)
{
    const auto s = saveSelector("/no/such/folder", "--help");
    programs.install("kdialog", "echo /a.b/.new");
    EXPECT_EQ(chosen(*s), "/a.b/.new.zkr");
    EXPECT_EQ(programs.asked(),
              "--title\nSave preset\n--attach\n" + parent
                  + "\n--getsavefilename\n./--help\nZKR Preset (*.zkr)\n");
    chosen(*loadSelector());
    EXPECT_NE(programs.asked().find("--getopenfilename\n"), std::string::npos);
    programs.install("zenity", "echo /right");
    EXPECT_EQ(chosen(*s), "/right.zkr");
    EXPECT_EQ(programs.asked(),
              "--file-selection\n--title=Save preset\n--attach=" + parent
                  + "\n--save\n--confirm-overwrite\n"
                    "--filename=--help\n--file-filter=ZKR Preset | *.zkr\n");
    // A zenity that shows no dialog.
    programs.install("zenity", "exit 255");
    EXPECT_EQ(chosen(*s), "/a.b/.new.zkr");
}

// The desktop's dialog cannot ask, since it does not know the extension.
TEST_F(Dialog, AFileThatGetsItsExtensionHereIsReplacedOnlyAfterAQuestion)
{
    const std::string file = programs.folder / "one.zkr";
    writeContent(file, "before");
    const struct {
        std::string typed;
        std::vector<userinput::Key> keys;
        std::string written;
        bool questionIsClosed = false;  // through its title bar
    } rows[] = {
        {programs.folder / "one", {}, "", true},
        {programs.folder / "one", {userinput::Key::Return}, ""},
        {programs.folder / "one", {userinput::Key::Tab, userinput::Key::Escape}, ""},
        {programs.folder / "one", {userinput::Key::Tab, userinput::Key::Return}, file},
        {programs.folder / "other", {}, programs.folder / "other.zkr"},
        {programs.folder / "Air +1.5 dB", {}, programs.folder / "Air +1.5 dB.zkr"},
        {programs.folder / "v1.5", {}, programs.folder / "v1.5.zkr"},
        {programs.folder / "St. 1.mp3", {}, programs.folder / "St. 1.mp3"},
        {file, {}, file},
    };
    Desktop desktop;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.typed << ", keys: " << row.keys.size());
        programs.install("zenity", "echo '" + row.typed + "'");
        const auto choice = owned(new Choice);
        ASSERT_TRUE(saveSelector("", "")->run(choice));
        if (!row.keys.empty() || row.questionIsClosed) {
            EXPECT_TRUE(pumpUntil([&] {
                return desktop.titlesInFront(host, row.questionIsClosed) == Log{"Save preset"};
            }));
            EXPECT_EQ(choice->path, "");
            for (const userinput::Key key : row.keys)
                userinput::tap(key);
        }
        EXPECT_TRUE(pumpUntil([&] { return choice->getNbReference() == 1; }));
        EXPECT_EQ(choice->path, row.written);
        EXPECT_EQ(desktop.titlesInFront(host), Log{});
    }
}

TEST_F(Dialog, TheHostGoesOnMeanwhileAndTheFrameGetsNoInput)
{
    programs.install("zenity", "exec /bin/sleep 0.5");
    record.onPress = [&] {
        EXPECT_TRUE(loadSelector()->run(nullptr));
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    };
    click(20, 20);
    EXPECT_TRUE(pumpUntil([&] { return record.has("down 20,20 L"); }));
    record.onPress = nullptr;
    record.events.clear();
    EXPECT_FALSE(loadSelector()->run(nullptr)) << "a second dialog";
    click(25, 25);
    pump(100);
    EXPECT_EQ(record.eventsButMoves(), Log{});
    // Afterwards no button counts as pressed.
    EXPECT_TRUE(pumpUntil([&] {
        movePointer(30, 30);
        movePointer(31, 31);
        return record.has("move 31,31");
    }));
}

TEST_F(Dialog, CancelNoHelperAndInvalidOutputChooseNothing)
{
    // Without a helper a message is shown.
    EXPECT_FALSE(loadSelector()->run(nullptr));
    for (const char* const script : {"echo /path; exit 1", "echo relative/path"}) {
        programs.install("zenity", script);
        EXPECT_EQ(chosen(*loadSelector()), "") << script;
    }
}

TEST_F(Dialog, TheFrameAndTheHostsWindowMayCloseWhileTheDialogIsOpen)
{
    programs.install("zenity", "exec /bin/sleep 1000");
    for (const bool windowFirst : {false, true}) {
        const auto choice = owned(new Choice);
        ASSERT_TRUE(loadSelector()->run(choice));
        pump();
        windowFirst ? host.destroy() : closeFrame();
        EXPECT_TRUE(pumpUntil([&] { return choice->getNbReference() == 1; }));
        EXPECT_EQ(choice->path, "");
        if (!windowFirst)
            open();
    }
}

}  // namespace
