// What a run is asked for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct SoakOptions {
    std::string library;
    int instances = 8;
    double minutes = 1.0;
    std::uint32_t seed = 0;
    std::vector<int> blockSizes{16, 32, 64, 100, 128, 256, 441, 512, 1024, 2048, 4096};
    int audioThreads = 2;
    bool editors = false;
    double growthMiB = 32.0;    // that the process may gain after its first third
    double hangSeconds = 30.0;  // that a thread may stand still
};
