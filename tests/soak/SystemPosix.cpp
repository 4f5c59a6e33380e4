// Linux: /proc, mallinfo2, and thread clocks.
#include "tests/soak/System.h"

#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

const double kBlockPatience = kSanitized ? 2.0 : 0.25;

namespace {

long long entriesOf(const char* folder)
{
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

}  // namespace

// Resident pages that are not backed by files.
long long memoryHeld()
{
    long long size = 0, resident = 0, shared = 0;
    std::ifstream("/proc/self/statm") >> size >> resident >> shared;
    return (resident - shared) * sysconf(_SC_PAGESIZE);
}

Resources resourcesAtRest()
{
    // Sanitizers replace the allocator.
    const struct mallinfo2 heap = mallinfo2();
    return {kSanitized ? -1 : static_cast<long long>(heap.uordblks + heap.hblkhd),
            entriesOf("/proc/self/fd"), entriesOf("/proc/self/task")};
}

void loadHostsLibraries() { }

ThreadUse threadUse()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return {static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec),
            usage.ru_nvcsw};
}
