// Menus and file dialogs of the system, which run message loops of their own, and what may happen
// meanwhile.
#include "TestHost.h"
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>
#include <objbase.h>
#include <thread>

using namespace VSTGUI;

namespace {

HWND openMenu()
{
    return FindWindowW(L"#32768", nullptr);
}

// Does the steps one after the other, one each 60 ms, from inside whatever loop is running.
class Script {
public:
    explicit Script(std::vector<std::function<void()>> scriptSteps)
        : steps(std::move(scriptSteps)),
          timer(owned(new CVSTGUITimer([this](CVSTGUITimer*) { tick(); }, 60)))
    {
    }
    ~Script() { timer->stop(); }
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    bool finished() const { return next == steps.size(); }

private:
    void tick()
    {
        if (!finished())
            steps[next++]();
    }

    std::vector<std::function<void()>> steps;
    size_t next{0};
    SharedPointer<CVSTGUITimer> timer;
};

struct Modal : testing::Test, IControlListener {
    Modal()
    {
        for (const char* title : {"first & one", "second", "-", "third", "fourth", "fifth"})
            menu->addEntry(title);
        menu->setNbItemsPerColumn(3);
        menu->setCurrent(1);
        frame->addView(menu);
        EXPECT_TRUE(frame->open(host.handle()));
        pump();
    }
    ~Modal() override { close(); }

    void close()
    {
        if (frame)
            frame->close();
        frame = nullptr;
    }
    void valueChanged(CControl* control) override
    {
        chosen.push_back(static_cast<int>(control->getValue()));
    }

    TestHost host;
    CFrame* frame{new CFrame(CRect(0, 0, 200, 150), nullptr)};
    COptionMenu* menu{new COptionMenu(CRect(20, 30, 120, 50), this, 1, nullptr, nullptr,
                                      kPopupStyle | kCheckStyle | kNoTextStyle | kNoDrawStyle)};
    std::vector<int> chosen;
};

using Menu = Modal;
using FileDialog = Modal;

// The dialog's window and, in it, the box for the name.
HWND openDialog(LPCWSTR title)
{
    return FindWindowW(L"#32770", title);
}

HWND nameBox(HWND dialog)
{
    HWND found = nullptr;
    EnumChildWindows(
        dialog,
        [](HWND child, LPARAM result) -> BOOL {
            wchar_t name[16];
            GetClassNameW(child, name, 16);
            if (lstrcmpiW(name, L"Edit") != 0 || !IsWindowVisible(child))
                return TRUE;
            *reinterpret_cast<HWND*>(result) = child;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

}  // namespace

TEST_F(Menu, OpensAtItsControlWithColumnsCheckAndPlainAmpersand)
{
    bool seen = false;
    Script script({[&] {
                       const HWND list = openMenu();
                       ASSERT_NE(list, nullptr);
                       RECT place;
                       GetWindowRect(list, &place);
                       EXPECT_EQ(place.left, kHostX + 20);
                       EXPECT_EQ(place.top, kHostY + 30);
                       const auto handle =
                           reinterpret_cast<HMENU>(SendMessageW(list, MN_GETHMENU, 0, 0));
                       wchar_t title[32]{};
                       GetMenuStringW(handle, 0, title, 32, MF_BYPOSITION);
                       EXPECT_STREQ(title, L"first && one");
                       EXPECT_EQ(GetMenuState(handle, 0, MF_BYPOSITION) & MF_CHECKED, 0u);
                       EXPECT_NE(GetMenuState(handle, 1, MF_BYPOSITION) & MF_CHECKED, 0u);
                       EXPECT_NE(GetMenuState(handle, 2, MF_BYPOSITION) & MF_SEPARATOR, 0u);
                       EXPECT_NE(GetMenuState(handle, 3, MF_BYPOSITION) & MF_MENUBARBREAK, 0u);
                       EXPECT_EQ(GetMenuState(handle, 4, MF_BYPOSITION) & MF_MENUBARBREAK, 0u);
                       seen = true;
                   },
                   [] { TestHost::pressKey(VK_ESCAPE); }});
    host.click(60, 40);
    ASSERT_TRUE(pumpUntil([&] { return script.finished() && !openMenu(); }));
    EXPECT_TRUE(seen);
    EXPECT_TRUE(chosen.empty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Menu, ReleaseOfThePressThatOpensItIsNoChoice)
{
    Script script({[] { EXPECT_NE(openMenu(), nullptr); }, [&] { host.releaseButton(); },
                   [] { EXPECT_NE(openMenu(), nullptr); }, [] { TestHost::pressKey(VK_ESCAPE); }});
    host.movePointer(40, 38);  // on what becomes the first entry
    host.pressButton();
    ASSERT_TRUE(pumpUntil([&] { return script.finished() && !openMenu(); }));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(Menu, EntryCanBeChosenInOneDragFromThePressThatOpensIt)
{
    Script script({[&] { host.movePointer(40, 65); }, [&] { host.movePointer(42, 60); },
                   [&] { host.releaseButton(); }});
    host.movePointer(40, 38);
    host.pressButton();
    ASSERT_TRUE(pumpUntil([&] { return script.finished() && !chosen.empty(); }));
    EXPECT_EQ(chosen, std::vector<int>{1});
}

TEST_F(Menu, FrameMayCloseWhileItIsOpen)
{
    Script script({[&] { close(); }});
    host.click(60, 40);
    ASSERT_TRUE(pumpUntil([&] { return script.finished() && !openMenu(); }));
    EXPECT_EQ(GetWindow(host.handle(), GW_CHILD), nullptr);
    EXPECT_TRUE(chosen.empty());
}

TEST_F(FileDialog, GivesTheNameTypedWithTheExtension)
{
    const auto selector = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
    selector->setTitle("Keep \303\244");
    selector->setInitialDirectory("C:\\windows");
    selector->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
    selector->setDefaultSaveName("unused");
    Script script({[] {}, [] {},
                   [] {
                       const HWND name = nameBox(openDialog(L"Keep \u00e4"));
                       ASSERT_NE(name, nullptr);
                       SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"m\u00fcsli"));
                   },
                   [] { PostMessageW(openDialog(L"Keep \u00e4"), WM_COMMAND, IDOK, 0); }});
    EXPECT_TRUE(selector->runModal());
    ASSERT_EQ(selector->getNumSelectedFiles(), 1u);
    EXPECT_STRCASEEQ(selector->getSelectedFile(0), "C:\\windows\\m\303\274sli.zkr");
    EXPECT_TRUE(script.finished());
}

TEST_F(FileDialog, CancelledGivesNothing)
{
    const auto selector = owned(CNewFileSelector::create(frame));
    selector->setTitle("Read");
    Script script({[] {}, [] { PostMessageW(openDialog(L"Read"), WM_COMMAND, IDCANCEL, 0); }});
    EXPECT_FALSE(selector->runModal());
    EXPECT_EQ(selector->getNumSelectedFiles(), 0u);
    EXPECT_TRUE(IsWindowEnabled(host.handle()));
}

TEST_F(FileDialog, GoesAwayWithTheFrameOrTheHostsWindow)
{
    const auto selector = owned(CNewFileSelector::create(frame));
    selector->setTitle("Read");
    {
        Script script({[] {}, [&] { close(); }});
        EXPECT_FALSE(selector->runModal());
        EXPECT_TRUE(script.finished());
        EXPECT_EQ(openDialog(L"Read"), nullptr);
        EXPECT_TRUE(IsWindowEnabled(host.handle()));
    }
    frame = new CFrame(CRect(0, 0, 200, 150), nullptr);
    ASSERT_TRUE(frame->open(host.handle()));
    const auto another = owned(CNewFileSelector::create(frame));
    another->setTitle("Read");
    Script script({[] {}, [] {}, [&] { host.destroy(); }});
    EXPECT_FALSE(another->runModal());
    EXPECT_EQ(openDialog(L"Read"), nullptr);
}

TEST(ClassicFileDialog, ServesThreadsThatTheShellsDialogRefuses)
{
    struct There : Modal {
        void TestBody() override
        {
            const auto selector =
                owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
            selector->setTitle("Keep");
            selector->setInitialDirectory("C:\\windows");
            selector->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
            Script script({[] {}, [] {},
                           [] {
                               SendMessageW(nameBox(openDialog(L"Keep")), WM_SETTEXT, 0,
                                            reinterpret_cast<LPARAM>(L"n\u00e4me"));
                               PostMessageW(openDialog(L"Keep"), WM_COMMAND, IDOK, 0);
                           }});
            EXPECT_TRUE(selector->runModal());
            EXPECT_STRCASEEQ(selector->getSelectedFile(0), u8"C:\\windows\\n\u00e4me.zkr");

            Script closing({[] {}, [] {}, [&] { close(); }});
            EXPECT_FALSE(selector->runModal());
            EXPECT_EQ(openDialog(L"Keep"), nullptr);
        }
    };
    std::thread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        There().TestBody();
        CoUninitialize();
    }).join();
}
