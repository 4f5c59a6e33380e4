// Timer on Linux: made by the event loop that was injected, if any.
#include "base/source/timer.h"

namespace Steinberg {

namespace {
CreateTimerFunc createTimer = nullptr;
}

void InjectCreateTimerFunction(CreateTimerFunc create)
{
    createTimer = create;
}

Timer* Timer::create(ITimerCallback* callback, uint32 milliseconds)
{
    return createTimer ? createTimer(callback, milliseconds) : nullptr;
}

}  // namespace Steinberg
