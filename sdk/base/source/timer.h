// Timer: periodic callbacks on the thread that created it.
#pragma once

#include "base/source/fobject.h"

namespace Steinberg {

class Timer;

class ITimerCallback {
public:
    virtual ~ITimerCallback() = default;
    virtual void onTimer(Timer* timer) = 0;
};

class Timer : public FObject {
public:
    // Starts a timer of that period; the caller owns the only reference. Null if no event loop can
    // supply timers, which every caller must handle. On Windows the callbacks come while the
    // creating thread dispatches messages, on Linux from the injected event loop.
    static Timer* create(ITimerCallback* callback, uint32 milliseconds);

    // Stops the callbacks; may be called any number of times, also from inside the callback.
    virtual void stop() = 0;
};

#if !SMTG_OS_WINDOWS
// On Linux the code that runs an event loop injects its timers here; null for none.
using CreateTimerFunc = Timer* (*)(ITimerCallback* callback, uint32 milliseconds);
void InjectCreateTimerFunction(CreateTimerFunc create);
#endif

}  // namespace Steinberg
