// Process and thread statistics of the operating system.
#pragma once

#include <array>
#include <chrono>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// Resources that the process uses now; -1 for an unknown count: bytes allocated on the heap, open
// descriptors (on Windows handles), threads.
using Resources = std::array<long long, 3>;

// Private memory of the process, in bytes. Fast enough to be called every second.
long long memoryHeld();
// Other threads may run, but must not allocate.
Resources resourcesAtRest();

// Loads system libraries that every host has loaded anyway and that leak when they are unloaded
// with the plug-in.
void loadHostsLibraries();

// How much longer than its real time a block may take, in seconds. Generous, since time in which a
// virtual machine is paused may count as the thread's.
extern const double kBlockPatience;
// Usage by the calling thread since it started.
struct ThreadUse {
    double processor;  // processor time in seconds; on Windows wall-clock time
    long waits;        // voluntary context switches: for a lock, a file, a sleep
};
ThreadUse threadUse();

inline double clockSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
