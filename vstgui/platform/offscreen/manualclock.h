// ManualClock: timers by a clock that only moves when told.
#pragma once

#include "vstgui/platform/iplatformtimer.h"

namespace VSTGUI {

// While one exists, timers that are started use it.
class ManualClock {
public:
    ManualClock();
    ~ManualClock();
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    // Fires what falls due on the way, in order of time.
    void advance(uint32_t milliseconds);

private:
    IPlatformTimer::Factory previous;
};

}  // namespace VSTGUI
