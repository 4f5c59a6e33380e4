// Ticks through the platform's timer.
#include "vstgui/lib/cvstguitimer.h"

#include <algorithm>

namespace VSTGUI {

const IdStringPtr CVSTGUITimer::kMsgTimer = "timer fired";

namespace {

IPlatformTimer::Factory timerFactory = nullptr;

}  // namespace

IPlatformTimer* IPlatformTimer::create(IPlatformTimerCallback* callback)
{
    return timerFactory ? timerFactory(callback) : createNative(callback);
}

IPlatformTimer::Factory IPlatformTimer::setFactory(Factory factory)
{
    return std::exchange(timerFactory, factory);
}

CVSTGUITimer::CVSTGUITimer(CBaseObject* target, uint32_t time, bool doStart)
    : CVSTGUITimer(
        [target](CVSTGUITimer* timer) {
            if (target)
                target->notify(timer, kMsgTimer);
        },
        time, doStart)
{
}

CVSTGUITimer::CVSTGUITimer(const CallbackFunc& function, uint32_t time, bool doStart)
    : callback(function), fireTime(time)
{
    if (doStart)
        CVSTGUITimer::start();
}

CVSTGUITimer::~CVSTGUITimer()
{
    CVSTGUITimer::stop();
}

bool CVSTGUITimer::start()
{
    if (platformTimer)
        return true;
    platformTimer = owned(IPlatformTimer::create(this));
    if (platformTimer && !platformTimer->start(std::max(fireTime, 1u)))
        platformTimer = nullptr;
    return platformTimer != nullptr;
}

bool CVSTGUITimer::stop()
{
    if (!platformTimer)
        return false;
    platformTimer->stop();
    platformTimer = nullptr;
    return true;
}

bool CVSTGUITimer::setFireTime(uint32_t milliseconds)
{
    if (fireTime == milliseconds)
        return false;
    fireTime = milliseconds;
    if (stop())
        start();
    return true;
}

void CVSTGUITimer::platformTimerFired()
{
    const CBaseObjectGuard guard(this);
    if (callback)
        callback(this);
}

}  // namespace VSTGUI
