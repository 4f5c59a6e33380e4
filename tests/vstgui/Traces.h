// What this process has of the system that a frame could leave behind.
#pragma once

#include <vector>

using Traces = std::vector<int>;

Traces traces();
