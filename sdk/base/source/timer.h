// Timer: calls back at a steady period, on the thread that made it.
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
    // Starts a timer of that period; the caller owns the one reference. Null where no source of
    // ticks exists, which every owner must accept. On Windows the ticks come while the creating
    // thread dispatches messages, on Linux from whatever was injected.
    static Timer* create(ITimerCallback* callback, uint32 milliseconds);

    // Ends the ticks; may be called any number of times, also from inside the callback.
    virtual void stop() = 0;
};

#if !SMTG_OS_WINDOWS
// Linux has no timers of its own: whoever runs an event loop supplies them here (null: nobody).
using CreateTimerFunc = Timer* (*)(ITimerCallback* callback, uint32 milliseconds);
void InjectCreateTimerFunction(CreateTimerFunc create);
#endif

}  // namespace Steinberg
