// CPoweredControl: the power state of a control, as a base class beside the control's own.
#pragma once

#include <cstdint>

class CPoweredControl {
public:
    // 0 is off. Does not redraw; the caller does.
    virtual void setPower(int32_t state) { power = state; }
    int32_t getPower() const { return power; }

protected:
    ~CPoweredControl() = default;

private:
    int32_t power{0};
};
