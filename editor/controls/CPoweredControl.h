// CPoweredControl: what a control mixes in to know whether the plug-in is switched on.
#pragma once

#include <cstdint>

class CPoweredControl {
public:
    // 0 is off. Does not redraw: that is the caller's.
    virtual void setPower(int32_t state) { power = state; }
    int32_t getPower() const { return power; }

protected:
    ~CPoweredControl() = default;

private:
    int32_t power{0};
};
