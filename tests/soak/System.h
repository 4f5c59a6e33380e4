// What the soak asks of the system it runs on.
#pragma once

#include <cstdint>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// What the process holds at this moment; -1 for what the system does not tell.
struct Holdings {
    std::int64_t memory = -1;       // bytes that count against this process alone
    std::int64_t heap = -1;         // bytes handed out by the allocator; only in holdingsAtRest
    std::int64_t descriptors = -1;  // open files and connections; on Windows handles
    std::int64_t threads = -1;
    std::int64_t drawing = -1;  // GDI objects
};

// Quick enough to be asked every few seconds.
std::int64_t memoryHeld();
// Everything. Other threads may run, but not allocate.
Holdings holdingsAtRest();

// Loads the libraries of the system that hosts have by themselves and that leave something behind
// when they go with the plug-in.
void loadHostsLibraries();

// The longest that any block may take beyond its own real time, in seconds. It is long, for the
// time in which a virtual machine stands still may count as the thread's.
extern const double kBlockPatience;
// Whether Effort::processor is that also for short blocks; otherwise it is time by the clock then,
// in which neighbours have their turns.
extern const bool kProcessorTimeIsExact;

// One block's cost on the calling thread.
struct Effort {
    double clock;      // seconds from beginning to end
    double processor;  // of these, seconds on a processor
    bool waited;       // the thread gave its processor up by itself: for a lock, a file, a sleep
};

class Effortmeter {
public:
    Effortmeter();
    Effort stop() const;

private:
    const double clockBefore, processorBefore;
    const long waitsBefore;  // how often the thread has waited in all its life
};
