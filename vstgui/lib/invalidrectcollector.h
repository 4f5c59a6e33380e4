// InvalidRectCollector: collects the repaint requests of one system event.
#pragma once

#include "vstgui/lib/crect.h"

#include <vector>

namespace VSTGUI {

class CFrame;

// A local object in the event's handler. In a nested event it only keeps the frame alive.
class InvalidRectCollector {
public:
    explicit InvalidRectCollector(CFrame* frame);
    ~InvalidRectCollector();
    InvalidRectCollector(const InvalidRectCollector&) = delete;
    InvalidRectCollector& operator=(const InvalidRectCollector&) = delete;

    // Rectangles inside others are dropped. Flushes when the last flush is over 16 ms ago.
    void add(const CRect& rect);
    void flush();

private:
    SharedPointer<CFrame> frame;
    const bool outermost;
    std::vector<CRect> rects;
    uint32_t lastFlush;  // ms, from IPlatformFrame::getTicks
};

}  // namespace VSTGUI
