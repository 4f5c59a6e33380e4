// The system's menus and file dialogs, which run their own message loops, and events during them.
#include "tests/vstgui/OpenFrame.h"

#include <filesystem>
#include <fstream>
#include <objbase.h>
#include <thread>
#include <windows.h>

namespace {

HWND openMenu()
{
    return FindWindowW(L"#32768", nullptr);
}

using Menu = OpenFrame;

// The dialog's window, and the edit box for the name in it.
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

// Whether the dialog shows its edit box.
std::function<bool()> isOpen(LPCWSTR title)
{
    return [title] { return openDialog(title) && nameBox(openDialog(title)); };
}

// Saves under a typed name, over a file.
void expectSaves(CFrame* frame)
{
    const auto selector = owned(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
    selector->setTitle("Keep \303\244");
    selector->setInitialDirectory("C:\\windows");
    selector->setDefaultExtension(CFileExtension("ZKR Preset", "zkr"));
    selector->setDefaultSaveName("unused");
    constexpr LPCWSTR kTitle = L"Keep \u00e4";
    const auto workingFolder = std::filesystem::current_path();
    const std::filesystem::path file(L"C:\\windows\\m\u00fcsli.zkr");
    std::ofstream(file) << "saved before";
    bool asked = false;
    Script script({[] {
                       wchar_t offered[16]{};
                       SendMessageW(nameBox(openDialog(kTitle)), WM_GETTEXT, 16,
                                    reinterpret_cast<LPARAM>(offered));
                       EXPECT_STREQ(offered, L"unused");
                       SendMessageW(nameBox(openDialog(kTitle)), WM_SETTEXT, 0,
                                    reinterpret_cast<LPARAM>(L"m\u00fcsli"));
                   },
                   [] { PostMessageW(openDialog(kTitle), WM_COMMAND, IDOK, 0); }, [] {},
                   [&] {
                       // Has the same title, and lies in front.
                       const HWND question = openDialog(kTitle);
                       asked = question && !nameBox(question);
                       PostMessageW(question, WM_COMMAND, IDYES, 0);
                   }},
                  isOpen(kTitle));
    EXPECT_TRUE(selector->run(nullptr));
    EXPECT_TRUE(pumpUntil([&] { return script.finished(); }));
    EXPECT_TRUE(asked) << "overwritten without a question";
    std::filesystem::remove(file);
    EXPECT_EQ(std::filesystem::current_path(), workingFolder);
    EXPECT_EQ(selector->getNumSelectedFiles(), 1u);
    EXPECT_STRCASEEQ(selector->getSelectedFile(0), "C:\\windows\\m\303\274sli.zkr");
}

}  // namespace

TEST_F(Menu, OpensAtItsControlWithColumnsCheckAndPlainAmpersand)
{
    addMenu();
    RECT place{};
    wchar_t title[32]{};
    std::vector<UINT> states;
    Script script({[&] {
                       const HWND list = openMenu();
                       GetWindowRect(list, &place);
                       const auto handle =
                           reinterpret_cast<HMENU>(SendMessageW(list, MN_GETHMENU, 0, 0));
                       GetMenuStringW(handle, 0, title, 32, MF_BYPOSITION);
                       for (UINT entry = 0; entry < 5; ++entry)
                           states.push_back(GetMenuState(handle, entry, MF_BYPOSITION)
                                            & (MF_CHECKED | MF_SEPARATOR | MF_MENUBREAK));
                   },
                   [] { tap(userinput::Key::Escape); }},
                  [] { return openMenu() != nullptr; });
    click(60, 40);
    EXPECT_TRUE(pumpUntil([&] { return script.finished() && !openMenu(); }));
    EXPECT_EQ(place.left, kHost.x + 20);
    EXPECT_EQ(place.top, kHost.y + 30);
    EXPECT_STREQ(title, L"first && one");
    EXPECT_EQ(states, (std::vector<UINT>{0, MF_CHECKED, MF_SEPARATOR, MF_MENUBREAK, 0}));
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(FileDialog, ReturnsTheChosenFileAndClosesWithItsOwner)
{
    struct Dialogs : OpenFrame {
        void TestBody() override
        {
            expectSaves(frame);
            EXPECT_FALSE(reads([] { PostMessageW(openDialog(L"Read"), WM_COMMAND, IDCANCEL, 0); }));
            EXPECT_TRUE(IsWindowEnabled(static_cast<HWND>(host.handle())));
            EXPECT_FALSE(reads([&] { closeFrame(); }));
            EXPECT_TRUE(IsWindowEnabled(static_cast<HWND>(host.handle())));
            open();
            EXPECT_FALSE(reads([&] { host.destroy(); }));
        }
        bool reads(const Script::Step& end)
        {
            const auto selector = owned(CNewFileSelector::create(frame));
            selector->setTitle("Read");
            Script script({end}, isOpen(L"Read"));
            const bool chosen = selector->run(nullptr);
            EXPECT_TRUE(script.finished());
            EXPECT_EQ(openDialog(L"Read"), nullptr);
            EXPECT_EQ(selector->getNumSelectedFiles(), 0u);
            return chosen;
        }
    };
    // The shell's dialog does not work in a multithreaded apartment, which gets the classic one.
    for (const DWORD kind : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED})
        std::thread([kind] {
            SCOPED_TRACE(kind);
            ASSERT_EQ(CoInitializeEx(nullptr, kind), S_OK);
            Dialogs().TestBody();
            CoUninitialize();
        }).join();
}
