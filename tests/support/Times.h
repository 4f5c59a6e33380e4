// How often and how long tests repeat races between threads, and the like.
#pragma once

#include <cstdlib>

// The number that an environment variable holds, or a usual one.
inline int asked(const char* variable, int usual)
{
    const char* const text = std::getenv(variable);
    return text ? std::atoi(text) : usual;
}

inline int times()
{
    return asked("ZKR_TIMES", 2000);
}
