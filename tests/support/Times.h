// How often a test repeats what only happens when two threads meet.
#pragma once

#include <cstdlib>

// 2000, or what ZKR_TIMES asks for.
inline int times()
{
    const char* const asked = std::getenv("ZKR_TIMES");
    return asked ? std::atoi(asked) : 2000;
}
