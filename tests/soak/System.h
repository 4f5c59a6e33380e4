// What the soak asks of the system it runs on.
#pragma once

#include <array>
#include <chrono>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// What the process holds at this moment; -1 for what the system does not tell: bytes handed out by
// the allocator, open files and connections (on Windows handles), threads.
using Holdings = std::array<long long, 3>;

// Bytes that count against this process alone. Quick enough to be asked every few seconds.
long long memoryHeld();
// Other threads may run, but not allocate.
Holdings holdingsAtRest();

// Loads the libraries of the system that hosts have by themselves and that leave something behind
// when they go with the plug-in.
void loadHostsLibraries();

// The longest that any block may take beyond its own real time, in seconds. It is long, for the
// time in which a virtual machine stands still may count as the thread's.
extern const double kBlockPatience;
// What the calling thread has used in all its life.
struct ThreadUse {
    double processor;  // seconds; on Windows by the clock, in which neighbours have their turns
    long waits;        // times it gave its processor up by itself: for a lock, a file, a sleep
};
ThreadUse threadUse();

inline double clockSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
