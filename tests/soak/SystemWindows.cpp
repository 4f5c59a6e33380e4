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

const double kBlockPatience = 10.0;  // by the clock, in which neighbours have their turns
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

// A thread's processor time comes in steps of some milliseconds, and whether it has waited is not
// told.
Effortmeter::Effortmeter() : clockBefore(clockSeconds()), processorBefore(0.0), waitsBefore(0) { }

Effort Effortmeter::stop() const
{
    const double clock = clockSeconds() - clockBefore;
    return {clock, clock, false};
}
