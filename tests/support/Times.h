// How often a test repeats a race between two threads.
#pragma once

#include <cstdlib>

// ZKR_TIMES, or 2000.
inline int times()
{
    const char* const asked = std::getenv("ZKR_TIMES");
    return asked ? std::atoi(asked) : 2000;
}
