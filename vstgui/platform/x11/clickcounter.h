// ClickCounter: recognises double clicks.
#pragma once

#include "vstgui/lib/cpoint.h"

#include <cmath>

namespace VSTGUI {
namespace X11 {

class ClickCounter {
public:
    // True for the second press of a double click; a third counts as a single one. `time` is in
    // milliseconds of the X server.
    bool press(unsigned int button, unsigned long time, const CPoint& where)
    {
        const bool second = armed && released && button == lastButton
            && time - lastTime <= kDoubleClickTime && near(where);
        armed = !second;
        released = false;
        lastButton = button;
        lastTime = time;
        lastPoint = where;
        return second;
    }
    void release() { released = true; }
    void move(const CPoint& where) { armed = armed && near(where); }

private:
    static constexpr unsigned long kDoubleClickTime = 400;  // ms
    static constexpr CCoord kDoubleClickDistance = 4;       // pixels in each direction

    bool near(const CPoint& p) const
    {
        return std::fabs(p.x - lastPoint.x) <= kDoubleClickDistance
            && std::fabs(p.y - lastPoint.y) <= kDoubleClickDistance;
    }

    bool armed{false};
    bool released{false};
    unsigned int lastButton{0};
    unsigned long lastTime{0};
    CPoint lastPoint;
};

}  // namespace X11
}  // namespace VSTGUI
