// Opening and closing without a trace, and timers.
#include "RecordingFrame.h"
#include "TestHost.h"
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>
#include <winternl.h>

using namespace VSTGUI;

namespace {

// Wine does not answer how many objects a process has, but keeps the table of GDI objects where
// Windows keeps it: in the process environment block, an entry of 24 bytes each.
int countGdiObjects()
{
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return static_cast<int>(count);
    struct Entry {
        void* object;
        WORD owner;
        WORD count;
        WORD upper;
        WORD type;
        void* user;
    };
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                              sizeof process, nullptr);
    const auto* const block = reinterpret_cast<const char*>(process.PebBaseAddress);
    const auto* const table = *reinterpret_cast<Entry* const*>(block + 0xF8);
    int used = 0;
    for (int i = 0; i < 0x4000; ++i)
        used += table[i].type != 0;
    return used;
}

int countWindows()
{
    int count = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
    if (count > 0)
        return count;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM result) -> BOOL {
            ++*reinterpret_cast<int*>(result);
            EnumChildWindows(
                window,
                [](HWND, LPARAM inner) -> BOOL {
                    ++*reinterpret_cast<int*>(inner);
                    return TRUE;
                },
                result);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

// With text, a picture and an open text box.
void openAndClose(HWND host)
{
    auto* frame = new CFrame(CRect(0, 0, 200, 150), nullptr);
    auto* edit = new CTextEdit(CRect(20, 40, 180, 70), nullptr, 1, "text");
    frame->addView(edit);
    const auto picture = owned(new CBitmap(CResourceDescription(10016)));
    frame->setBackground(picture);
    frame->open(host);
    UpdateWindow(static_cast<HWND>(frame->getPlatformFrame()->getPlatformRepresentation()));
    edit->takeFocus();
    frame->close();
}

}  // namespace

TEST(Life, HundredOpeningsLeaveNothingBehind)
{
    TestHost host;
    openAndClose(host.handle());
    pump(20);
    const int gdi = countGdiObjects();
    const int windows = countWindows();
    ASSERT_GT(gdi, 0);
    ASSERT_GT(windows, 0);
    for (int i = 0; i < 100; ++i)
        openAndClose(host.handle());
    pump(20);
    EXPECT_EQ(countGdiObjects(), gdi);
    EXPECT_EQ(countWindows(), windows);
}

TEST(Life, ClassOfTheWindowIsGoneWithTheLastFrame)
{
    TestHost host;
    wchar_t name[64]{};
    WNDCLASSW description;
    {
        RecordingFrame first(host.handle());
        RecordingFrame second(host.handle());
        GetClassNameW(first.window(), name, 64);
        first.close();
        EXPECT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), name, &description));
    }
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), name, &description));
}

TEST(Life, WindowThatIsNoneIsRefused)
{
    TestHost host;
    RecordingFrame frame(reinterpret_cast<HWND>(static_cast<intptr_t>(0x1234567)));
    EXPECT_FALSE(frame.isOpen());
}

TEST(Timer, TicksUntilStoppedAlsoFromInsideATick)
{
    int ticks = 0;
    const auto timer = owned(new CVSTGUITimer(
        [&](CVSTGUITimer* self) {
            if (++ticks == 3)
                self->stop();
        },
        15));
    EXPECT_TRUE(pumpUntil([&] { return ticks == 3; }));
    pump(100);
    EXPECT_EQ(ticks, 3);
    EXPECT_FALSE(timer->stop());
}

TEST(Timer, TickThatIsOnItsWayDoesNotArriveAfterTheStop)
{
    int ticks = 0;
    const auto timer = owned(new CVSTGUITimer([&](CVSTGUITimer*) { ++ticks; }, 10));
    MSG message;
    while (!PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE))
        Sleep(1);
    timer->stop();
    DispatchMessageW(&message);
    EXPECT_EQ(ticks, 0);
}
