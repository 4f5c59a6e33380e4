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

CVSTGUITimer::CVSTGUITimer(CBaseObject* target, uint32_t fireTime, bool doStart)
    : CVSTGUITimer(
        [target](CVSTGUITimer* timer) {
            if (target)
                target->notify(timer, kMsgTimer);
        },
        fireTime, doStart)
{
}

CVSTGUITimer::CVSTGUITimer(const CallbackFunc& callback, uint32_t fireTime, bool doStart)
    : callback(callback), fireTime(fireTime)
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

bool CVSTGUITimer::setFireTime(uint32_t newFireTime)
{
    if (fireTime == newFireTime)
        return false;
    fireTime = newFireTime;
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
