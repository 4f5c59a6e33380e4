// Linux: /proc, the allocator's own count, and the clocks of a thread.
#include "System.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <malloc.h>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

const double kBlockPatience = kSanitized ? 2.0 : 0.25;
const bool kProcessorTimeIsExact = true;

namespace {

std::int64_t entriesOf(const char* folder)
{
    std::int64_t count = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        (void)entry;
        ++count;
    }
    return error ? -1 : count;
}

double clockSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

long waits()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

}  // namespace

// Resident pages without those of files.
std::int64_t memoryHeld()
{
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (!file)
        return -1;
    long long size = 0, resident = 0, shared = 0;
    const int read = std::fscanf(file, "%lld %lld %lld", &size, &resident, &shared);
    std::fclose(file);
    return read == 3 ? (resident - shared) * sysconf(_SC_PAGESIZE) : -1;
}

Holdings holdingsAtRest()
{
    Holdings held;
    held.memory = memoryHeld();
    if (!kSanitized) {
        // Sanitizers bring an allocator of their own.
        const struct mallinfo2 heap = mallinfo2();
        held.heap = static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
    }
    held.descriptors = entriesOf("/proc/self/fd");
    held.threads = entriesOf("/proc/self/task");
    return held;
}

void loadHostsLibraries() { }

Effortmeter::Effortmeter()
    : clockBefore(clockSeconds()), processorBefore(processorSeconds()), waitsBefore(waits())
{
}

Effort Effortmeter::stop() const
{
    const double processor = processorSeconds() - processorBefore;
    return {clockSeconds() - clockBefore, processor, waits() != waitsBefore};
}
