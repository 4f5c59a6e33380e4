#include "vstgui/platform/x11/idlerunloop.h"

#include "vstgui/platform/x11/steadyclock.h"

#include <algorithm>

namespace VSTGUI {
namespace X11 {

// Constructed first in the library and destroyed last, since singletons stop their timers late.
__attribute__((init_priority(101))) IdleRunLoop IdleRunLoop::theInstance;

IdleRunLoop& IdleRunLoop::instance()
{
    return theInstance;
}

bool IdleRunLoop::startPumping(std::vector<IEventHandler*>& handlers)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (pumping || !(events.empty() || owner == std::this_thread::get_id()))
        return false;
    pumping = true;
    handlers = events;
    return true;
}

void IdleRunLoop::pump()
{
    std::vector<IEventHandler*> handlers;
    if (!startPumping(handlers))
        return;
    // Also when a handler throws.
    struct End {
        IdleRunLoop& loop;
        ~End()
        {
            const std::lock_guard<std::mutex> lock(loop.mutex);
            loop.pumping = false;
        }
    } const end{*this};
    for (IEventHandler* handler : handlers)
        callEvent(handler);
    fireTimers();
}

template <typename Callback>
void IdleRunLoop::call(std::unique_lock<std::mutex>& lock, const void* handler, Callback callback)
{
    const Call entry{handler, std::this_thread::get_id()};
    calls.push_back(entry);
    lock.unlock();
    // Also when the callback throws.
    struct End {
        IdleRunLoop& loop;
        std::unique_lock<std::mutex>& lock;
        const Call& entry;
        ~End()
        {
            lock.lock();
            // The latest such entry, since calls may be nested.
            const auto ended =
                std::find_if(loop.calls.rbegin(), loop.calls.rend(), [&](const Call& other) {
                    return other.handler == entry.handler && other.thread == entry.thread;
                });
            loop.calls.erase(std::next(ended).base());
            loop.callEnded.notify_all();
        }
    } const end{*this, lock, entry};
    callback();
}

void IdleRunLoop::waitForCall(std::unique_lock<std::mutex>& lock, const void* handler)
{
    callEnded.wait(lock, [&] {
        return std::none_of(calls.begin(), calls.end(), [&](const Call& other) {
            return other.handler == handler && other.thread != std::this_thread::get_id();
        });
    });
}

void IdleRunLoop::callEvent(IEventHandler* handler)
{
    std::unique_lock<std::mutex> lock(mutex);
    if (std::find(events.begin(), events.end(), handler) != events.end())
        call(lock, handler, [handler] { handler->onEvent(); });
}

void IdleRunLoop::callTimer(ITimerHandler* handler)
{
    std::unique_lock<std::mutex> lock(mutex);
    const uint64_t now = steadyMilliseconds();
    const auto due = std::find_if(timers.begin(), timers.end(), [&](const TimerSource& timer) {
        return timer.handler == handler && timer.due <= now;
    });
    if (due == timers.end())
        return;
    due->due = now + due->period;
    call(lock, handler, [handler] { handler->onTimer(); });
}

void IdleRunLoop::fireTimers()
{
    std::vector<ITimerHandler*> handlers;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const TimerSource& timer : timers)
            handlers.push_back(timer.handler);
    }
    for (ITimerHandler* handler : handlers)
        callTimer(handler);
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
    std::unique_lock<std::mutex> lock(mutex);
    const auto it = std::find(events.begin(), events.end(), handler);
    if (it == events.end())
        return false;
    events.erase(it);
    waitForCall(lock, handler);
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
    std::unique_lock<std::mutex> lock(mutex);
    const auto it = std::find_if(timers.begin(), timers.end(), [&](const TimerSource& timer) {
        return timer.handler == handler;
    });
    if (it == timers.end())
        return false;
    timers.erase(it);
    waitForCall(lock, handler);
    return true;
}

}  // namespace X11
}  // namespace VSTGUI
