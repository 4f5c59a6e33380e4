// IPlatformTimer: a source of ticks on the user-interface thread.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

class IPlatformTimerCallback {
public:
    virtual ~IPlatformTimerCallback() = default;
    virtual void platformTimerFired() = 0;
};

class IPlatformTimer : public CBaseObject {
public:
    // Never fires after stop, not even when stopped inside a tick, and stops when forgotten. Ticks
    // that were missed come once. False when the system gives no timer.
    virtual bool start(uint32_t milliseconds) = 0;
    virtual bool stop() = 0;

    // The system's timer, not running; the caller owns it. Supplied by each platform.
    static IPlatformTimer* createNative(IPlatformTimerCallback* callback);

    // The system's, or what the factory in force makes.
    static IPlatformTimer* create(IPlatformTimerCallback* callback);
    using Factory = IPlatformTimer* (*)(IPlatformTimerCallback* callback);
    // For timers started from now on; null: the system's again. Returns the one before.
    static Factory setFactory(Factory factory);
};

}  // namespace VSTGUI
