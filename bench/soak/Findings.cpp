// Printing of failures.
#include "Findings.h"

#include <cstdarg>
#include <cstdio>

void Findings::add(const std::string& step, const std::string& seen)
{
    constexpr int kMostPrinted = 12;
    const std::lock_guard<std::mutex> guard(printing);
    if (++found > kMostPrinted)
        return;
    std::fflush(stdout);
    std::fprintf(stderr, "FAILURE seed %u, %s: %s\n", runSeed, step.c_str(), seen.c_str());
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
