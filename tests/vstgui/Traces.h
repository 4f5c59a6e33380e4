// Counts of system resources of this process that a frame could leak.
#pragma once

#include <vector>

using Traces = std::vector<int>;

Traces traces();
