// A monotonic clock in milliseconds.
#pragma once

#include <chrono>
#include <cstdint>

namespace VSTGUI {
namespace X11 {

inline uint64_t steadyMilliseconds()
{
    using namespace std::chrono;
    return static_cast<uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

}  // namespace X11
}  // namespace VSTGUI
