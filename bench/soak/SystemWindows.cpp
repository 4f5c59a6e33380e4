// Windows: counts of the process, a walk through its heaps, and the clock. Wine leaves some of the
// counts at 0; what can be counted by hand is.
#include "System.h"

#include <chrono>
#include <vector>

#include <windows.h>
// After it, since they rely on its types.
#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

const double kBlockPatience = 0.5;
const bool kProcessorTimeIsExact = false;

namespace {

std::int64_t heapBytes()
{
    std::vector<HANDLE> heaps(256);
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    if (count == 0 || count > heaps.size())
        return -1;
    heaps.resize(count);
    std::int64_t bytes = 0;
    for (const HANDLE heap : heaps) {
        HeapLock(heap);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                bytes += entry.cbData;
        HeapUnlock(heap);
    }
    return bytes;
}

std::int64_t countHandles()
{
    DWORD told = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &told) && told > 0)
        return told;
    constexpr std::uintptr_t kStep = 4, kEnd = 0x4000;
    std::int64_t count = 0;
    for (std::uintptr_t value = kStep; value < kEnd; value += kStep) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) ? 1 : 0;
    }
    return count;
}

std::int64_t countThreads()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return -1;
    std::int64_t count = 0;
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL more = Thread32First(snapshot, &thread); more; more = Thread32Next(snapshot, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    CloseHandle(snapshot);
    return count;
}

// Where the count is not told, the table of GDI objects is where it always is: behind the process
// environment block, 24 bytes an entry, of which the type is 0 in an unused one.
std::int64_t countGdiObjects()
{
    if (const DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return told;
    struct Entry {
        void* object;
        WORD owner, uses, upper, type;
        void* user;
    };
    constexpr std::size_t kTableAt = 0xF8, kEntries = 0x4000;
    PROCESS_BASIC_INFORMATION process{};
    if (NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                                  sizeof process, nullptr)
        < 0)
        return -1;
    const auto* const block = reinterpret_cast<const char*>(process.PebBaseAddress);
    const auto* const table = *reinterpret_cast<Entry* const*>(block + kTableAt);
    if (!table)
        return 0;
    std::int64_t count = 0;
    for (std::size_t i = 0; i < kEntries; ++i)
        count += table[i].type != 0 ? 1 : 0;
    return count;
}

double clockSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// In steps of some milliseconds.
double processorSeconds()
{
    FILETIME ignored, kernel, user;
    if (!GetThreadTimes(GetCurrentThread(), &ignored, &ignored, &kernel, &user))
        return 0.0;
    const auto seconds = [](const FILETIME& time) {
        constexpr double kTick = 1e-7;
        return kTick * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
    };
    return seconds(kernel) + seconds(user);
}

// Asking for it at every block would take longer than the block: what was known a moment ago will
// do, since it can only make a block look longer.
double processorSecondsOfLate(double clock)
{
    constexpr double kMoment = 0.05;
    thread_local double asked = 0.0, answer = 0.0;
    if (clock - asked > kMoment) {
        answer = processorSeconds();
        asked = clock;
    }
    return answer;
}

}  // namespace

std::int64_t memoryHeld()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    if (!GetProcessMemoryInfo(GetCurrentProcess(),
                              reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                              sizeof counters))
        return -1;
    const SIZE_T told = counters.PrivateUsage ? counters.PrivateUsage : counters.PagefileUsage;
    return static_cast<std::int64_t>(told);
}

Holdings holdingsAtRest()
{
    Holdings held;
    held.memory = memoryHeld();
    held.heap = heapBytes();
    held.descriptors = countHandles();
    held.threads = countThreads();
    held.drawing = countGdiObjects();
    return held;
}

// With Wine's file dialogs its print spooler comes and goes, and each time leaves a mutex.
void loadHostsLibraries()
{
    LoadLibraryW(L"comctl32.dll");
    LoadLibraryW(L"comdlg32.dll");
}

Effortmeter::Effortmeter()
    : clockBefore(clockSeconds()), processorBefore(processorSecondsOfLate(clockBefore)),
      waitsBefore(0)
{
}

// Only of a long block it is worth knowing how much of it was the thread's own. Whether the rest
// was waiting or other threads' turns is not told; no neighbour takes turns as long as this.
Effort Effortmeter::stop() const
{
    constexpr double kLongestTurn = 20.0;
    const double clock = clockSeconds() - clockBefore;
    if (clock < kBlockPatience)
        return {clock, clock, false};
    return {clock, processorSeconds() - processorBefore, clock > kLongestTurn};
}
