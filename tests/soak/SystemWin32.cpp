// Windows: process counters, heap walks and the clock. Wine leaves some of the counters at 0; where
// possible they are counted here instead.
#include "tests/soak/System.h"

#include <vector>

#include <windows.h>
// After windows.h, whose types it needs.
#include <psapi.h>
#include <tlhelp32.h>

const double kBlockPatience = 10.0;  // wall-clock time, which includes other processes

namespace {

long long heapBytes()
{
    std::vector<HANDLE> heaps(256);
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    if (count == 0 || count > heaps.size())
        return -1;
    heaps.resize(count);
    long long bytes = 0;
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

long long countHandles()
{
    DWORD told = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &told) && told > 0)
        return told;
    constexpr std::uintptr_t kStep = 4, kEnd = 0x4000;
    long long count = 0;
    for (std::uintptr_t value = kStep; value < kEnd; value += kStep) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) ? 1 : 0;
    }
    return count;
}

long long countThreads()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return -1;
    long long count = 0;
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL more = Thread32First(snapshot, &thread); more; more = Thread32Next(snapshot, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    CloseHandle(snapshot);
    return count;
}

}  // namespace

long long memoryHeld()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    if (!GetProcessMemoryInfo(GetCurrentProcess(),
                              reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                              sizeof counters))
        return -1;
    const SIZE_T told = counters.PrivateUsage ? counters.PrivateUsage : counters.PagefileUsage;
    return static_cast<long long>(told);
}

Resources resourcesAtRest()
{
    return {heapBytes(), countHandles(), countThreads()};
}

// Wine's file dialogs load its print spooler, which leaks a mutex each time it is unloaded.
void loadHostsLibraries()
{
    LoadLibraryW(L"comctl32.dll");
    LoadLibraryW(L"comdlg32.dll");
}

// Windows reports processor time of threads in steps of some milliseconds, and no waits.
ThreadUse threadUse()
{
    return {clockSeconds(), 0};
}
