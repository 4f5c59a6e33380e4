// Aborts a fuzzer on a finding, so that libFuzzer keeps the input.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "finding: %s\n", what);
    std::abort();
}
