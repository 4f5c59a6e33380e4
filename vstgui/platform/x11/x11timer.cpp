#include "vstgui/platform/x11/x11timer.h"

#include "vstgui/platform/iplatformframe.h"
#include "vstgui/platform/x11/idlerunloop.h"
#include "vstgui/platform/x11/steadyclock.h"
#include "vstgui/platform/x11/x11connection.h"

#include <algorithm>

namespace VSTGUI {

IPlatformTimer* IPlatformTimer::createNative(IPlatformTimerCallback* callback)
{
    return new X11::X11Timer(callback);
}

uint32_t IPlatformFrame::getTicks()
{
    return static_cast<uint32_t>(X11::steadyMilliseconds());
}

namespace X11 {

X11Timer::~X11Timer()
{
    X11Timer::stop();
}

bool X11Timer::start(uint32_t milliseconds)
{
    stop();
    TimerHub& hub = TimerHub::instance();
    period = milliseconds;
    due = steadyMilliseconds() + period;
    if (!hub.loop->registerTimer(period, this))
        return false;
    hub.running.push_back(this);
    return true;
}

bool X11Timer::stop()
{
    TimerHub& hub = TimerHub::instance();
    const auto it = std::find(hub.running.begin(), hub.running.end(), this);
    if (it == hub.running.end())
        return false;
    hub.running.erase(it);
    hub.loop->unregisterTimer(this);
    return true;
}

void X11Timer::onTimer()
{
    const CBaseObjectGuard guard(this);
    due = steadyMilliseconds() + period;
    callback->platformTimerFired();
    X11Connection::handleQueued();
}

TimerHub::TimerHub() : loop(&IdleRunLoop::instance()) { }

TimerHub& TimerHub::instance()
{
    static TimerHub hub;
    return hub;
}

bool TimerHub::onIdleLoop() const
{
    return loop == &IdleRunLoop::instance();
}

void TimerHub::useLoop(IRunLoop* newLoop)
{
    const SharedPointer<IRunLoop> next(newLoop ? newLoop : &IdleRunLoop::instance());
    if (next == loop)
        return;
    for (X11Timer* timer : running) {
        loop->unregisterTimer(timer);
        next->registerTimer(timer->period, timer);
    }
    loop = next;
}

void TimerHub::fireDue()
{
    if (onIdleLoop()) {
        IdleRunLoop::instance().fireTimers();
        return;
    }
    for (X11Timer* timer : std::vector<X11Timer*>(running)) {
        const bool stillRunning = std::find(running.begin(), running.end(), timer) != running.end();
        if (stillRunning && timer->due <= steadyMilliseconds())
            timer->onTimer();
    }
}

int TimerHub::millisecondsToNext(int limit) const
{
    if (onIdleLoop())
        return IdleRunLoop::instance().millisecondsToNextTimer(limit);
    uint64_t wait = static_cast<uint64_t>(limit);
    const uint64_t now = steadyMilliseconds();
    for (const X11Timer* timer : running)
        wait = std::min(wait, timer->due > now ? timer->due - now : 0);
    return static_cast<int>(wait);
}

}  // namespace X11
}  // namespace VSTGUI
