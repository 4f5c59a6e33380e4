// InvalidRectCollector: gathers what one event of the system asks to be repainted.
#pragma once

#include "vstgui/lib/crect.h"

#include <vector>

namespace VSTGUI {

class CFrame;

// Lives on the stack for one event; inside another one's event it only keeps
// the frame alive.
class InvalidRectCollector {
public:
    explicit InvalidRectCollector(CFrame* frame);
    ~InvalidRectCollector();
    InvalidRectCollector(const InvalidRectCollector&) = delete;
    InvalidRectCollector& operator=(const InvalidRectCollector&) = delete;

    // Rectangles inside others are dropped; a long event flushes now and then.
    void add(const CRect& rect);
    void flush();

private:
    SharedPointer<CFrame> frame;
    const bool outermost;
    std::vector<CRect> rects;
    uint32_t lastFlush;  // ticks
};

}  // namespace VSTGUI
