// IPlatformTimer: a periodic timer on the user-interface thread.
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
    // Fires no more after stop, even if stopped during a tick, and stops when deleted. Several
    // missed ticks come as one. False when the system gives no timer.
    virtual bool start(uint32_t milliseconds) = 0;
    virtual bool stop() = 0;

    // The system's timer, not running; the caller owns it. Implemented by each platform.
    static IPlatformTimer* createNative(IPlatformTimerCallback* callback);

    // Calls the current factory; without one, createNative.
    static IPlatformTimer* create(IPlatformTimerCallback* callback);
    using Factory = IPlatformTimer* (*)(IPlatformTimerCallback* callback);
    // For timers created from now on; null for the system's. Returns the previous factory.
    static Factory setFactory(Factory factory);
};

}  // namespace VSTGUI
