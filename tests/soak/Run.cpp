// Printing of failures.
#include "Run.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>

void Run::fail(const std::string& step, const std::string& seen)
{
    constexpr int kMostPrinted = 12;
    static std::mutex printing;
    const std::lock_guard<std::mutex> guard(printing);
    if (++failures > kMostPrinted)
        return;
    std::fflush(stdout);
    std::fprintf(stderr, "FAILURE seed %u, %s: %s\n", seed, step.c_str(), seen.c_str());
    std::fflush(stderr);
}

std::string textOf(const char* pattern, ...)
{
    char text[400];
    va_list values;
    va_start(values, pattern);
    std::vsnprintf(text, sizeof text, pattern, values);
    va_end(values);
    return text;
}
