// Leaks of system resources, and timers.
#include "tests/vstgui/OpenFrame.h"
#include "tests/vstgui/Traces.h"

#include <windows.h>
#include <winternl.h>

namespace {

// Wine does not implement the count of GDI objects, but keeps their table where Windows has it: in
// the process environment block, with entries of 24 bytes.
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

}  // namespace

Traces traces()
{
    return {countGdiObjects(), countWindows()};
}

TEST_F(OpenFrame, TheLastFrameUnregistersTheWindowClass)
{
    EXPECT_GT(countGdiObjects(), 0);
    EXPECT_GT(countWindows(), 0);
    wchar_t name[64]{};
    WNDCLASSW description;
    GetClassNameW(static_cast<HWND>(frame->getPlatformFrame()->getPlatformRepresentation()), name,
                  64);
    auto* const second = new CFrame(CRect(0, 0, 50, 50), nullptr);
    EXPECT_TRUE(second->open(host.handle()));
    closeFrame();
    EXPECT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), name, &description));
    second->close();
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), name, &description));
}

TEST(Timer, AQueuedTickIsNotDeliveredAfterTheStop)
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
