// The loop turned by hosts' idle calls.
#include "vstgui/platform/x11/idlerunloop.h"

#include "vstgui/platform/x11/steadyclock.h"

#include <algorithm>

namespace VSTGUI {
namespace X11 {

// Made first in the library and destroyed last, since singletons that own timers end late.
__attribute__((init_priority(101))) IdleRunLoop IdleRunLoop::only;

IdleRunLoop& IdleRunLoop::instance()
{
    return only;
}

bool IdleRunLoop::mayPump() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return !pumping && (events.empty() || owner == std::this_thread::get_id());
}

void IdleRunLoop::pump()
{
    if (!mayPump())
        return;
    pumping = true;
    std::vector<IEventHandler*> handlers;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        handlers = events;
    }
    for (IEventHandler* handler : handlers) {
        std::unique_lock<std::mutex> lock(mutex);
        const bool registered = std::find(events.begin(), events.end(), handler) != events.end();
        lock.unlock();
        if (registered)
            handler->onEvent();
    }
    fireTimers();
    pumping = false;
}

bool IdleRunLoop::takeDue(ITimerHandler* handler)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const uint64_t now = steadyMilliseconds();
    for (TimerSource& timer : timers) {
        if (timer.handler == handler && timer.due <= now) {
            timer.due = now + timer.period;
            return true;
        }
    }
    return false;
}

void IdleRunLoop::fireTimers()
{
    std::vector<ITimerHandler*> handlers;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const TimerSource& timer : timers)
            handlers.push_back(timer.handler);
    }
    for (ITimerHandler* handler : handlers) {
        if (takeDue(handler))
            handler->onTimer();
    }
}

int IdleRunLoop::millisecondsToNextTimer(int limit) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    uint64_t wait = static_cast<uint64_t>(std::max(limit, 0));
    const uint64_t now = steadyMilliseconds();
    for (const TimerSource& timer : timers)
        wait = std::min(wait, timer.due > now ? timer.due - now : 0);
    return static_cast<int>(wait);
}

bool IdleRunLoop::registerEventHandler(int, IEventHandler* handler)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!handler)
        return false;
    if (events.empty())
        owner = std::this_thread::get_id();
    events.push_back(handler);
    return true;
}

bool IdleRunLoop::unregisterEventHandler(IEventHandler* handler)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto it = std::find(events.begin(), events.end(), handler);
    if (it == events.end())
        return false;
    events.erase(it);
    return true;
}

bool IdleRunLoop::registerTimer(uint64_t milliseconds, ITimerHandler* handler)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!handler)
        return false;
    timers.push_back({handler, milliseconds, steadyMilliseconds() + milliseconds});
    return true;
}

bool IdleRunLoop::unregisterTimer(ITimerHandler* handler)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto it = std::find_if(timers.begin(), timers.end(), [&](const TimerSource& timer) {
        return timer.handler == handler;
    });
    if (it == timers.end())
        return false;
    timers.erase(it);
    return true;
}

}  // namespace X11
}  // namespace VSTGUI
