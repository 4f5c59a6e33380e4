// A library that makes its C++ runtime lock, wait and keep thread-local values.
#include "Export.h"

#include <mutex>

namespace {

std::mutex mutex;
int starts = 0, catches = 0;

struct SlowStart {
    SlowStart()
    {
        for (volatile int i = 0; i < 1000000; i = i + 1) { }
        ++starts;
    }
};

}  // namespace

// Throws and catches 100 times and counts it. When several threads call at once, one makes a static
// object and the others wait for it.
ZKR_EXPORT void useRuntime()
{
    static const SlowStart start;
    for (int i = 0; i < 100; ++i)
        try {
            throw i;
        } catch (int) {
            const std::lock_guard<std::mutex> lock(mutex);
            ++catches;
        }
}

// Of all threads; -1 unless the object was made once.
ZKR_EXPORT int countedByRuntime()
{
    return starts == 1 ? catches : -1;
}
