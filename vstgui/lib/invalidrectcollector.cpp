#include "vstgui/lib/invalidrectcollector.h"

#include "vstgui/lib/cframe.h"

#include <algorithm>

namespace VSTGUI {

namespace {

constexpr uint32_t kMaxWait = 16;  // ms

bool contains(const CRect& outer, const CRect& inner)
{
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right
        && outer.bottom >= inner.bottom;
}

}  // namespace

InvalidRectCollector::InvalidRectCollector(CFrame* frame)
    : frame(frame), outermost(!frame->collector), lastFlush(IPlatformFrame::getTicks())
{
    if (outermost)
        frame->collector = this;
}

InvalidRectCollector::~InvalidRectCollector()
{
    if (!outermost)
        return;
    flush();
    if (frame->collector == this)
        frame->collector = nullptr;
}

void InvalidRectCollector::add(const CRect& rect)
{
    for (const CRect& r : rects) {
        if (contains(r, rect))
            return;
    }
    rects.erase(std::remove_if(rects.begin(), rects.end(),
                               [&](const CRect& r) { return contains(rect, r); }),
                rects.end());
    rects.push_back(rect);
    if (IPlatformFrame::getTicks() - lastFlush > kMaxWait)
        flush();
}

void InvalidRectCollector::flush()
{
    if (IPlatformFrame* window = frame->getPlatformFrame()) {
        for (const CRect& rect : rects)
            window->invalidRect(rect);
    }
    rects.clear();
    lastFlush = IPlatformFrame::getTicks();
}

}  // namespace VSTGUI
