// ManualClock: a clock for timers that advances by calls only.
#pragma once

#include "vstgui/platform/iplatformtimer.h"

namespace VSTGUI {

// Timers created while an object of this class exists use it.
class ManualClock {
public:
    ManualClock();
    ~ManualClock();
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    // Fires the timers due in that time, in order.
    void advance(uint32_t milliseconds);

private:
    IPlatformTimer::Factory previous;
};

}  // namespace VSTGUI
