// What the soak asks of the system it runs on.
#pragma once

#include <cstdint>
#include <string>

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

// What is not the plug-in's own and yet stays behind at each unloading of it.
struct Loss {
    std::int64_t heap;         // bytes
    std::int64_t descriptors;  // or handles
};
extern const Loss kLostByUnloading;

// With the plug-in loaded: keeps all other libraries loaded for good where they would go with it,
// and leave something behind.
void keepSystemLibraries(const std::string& plugin);

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
