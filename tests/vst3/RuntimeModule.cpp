// A library that makes its C++ runtime lock, wait and keep thread-local values, for UnloadTest.cpp.
#include "shell/Export.h"

#include <mutex>

namespace {

std::mutex mutex;
int starts = 0, catches = 0;
bool stale = false;  // a thread has begun with the values of an earlier one

struct SlowStart {
    SlowStart()
    {
        for (volatile int i = 0; i < 1000000; i = i + 1) { }
        ++starts;
    }
};

}  // namespace

// Throws, catches and counts 100 exceptions. When several threads call it at once, one constructs a
// static object and the others wait for it.
ZKR_EXPORT void useRuntime()
{
    static const SlowStart start;
    thread_local bool used = false;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stale = stale || used;
    }
    used = true;
    for (int i = 0; i < 100; ++i)
        try {
            throw i;
        } catch (int) {
            const std::lock_guard<std::mutex> lock(mutex);
            ++catches;
        }
}

// The count of all threads; -1 if the object was not constructed exactly once, or a thread called
// useRuntime twice.
ZKR_EXPORT int countedByRuntime()
{
    return starts == 1 && !stale ? catches : -1;
}
