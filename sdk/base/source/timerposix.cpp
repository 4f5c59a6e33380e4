// Timer on Linux: created by the injected event loop, if any.
#include "base/source/timer.h"

#include <atomic>

namespace Steinberg {

namespace {
// Atomic, since hosts create instances on several threads.
std::atomic<CreateTimerFunc> createTimer{nullptr};
}  // namespace

void InjectCreateTimerFunction(CreateTimerFunc create)
{
    createTimer = create;
}

Timer* Timer::create(ITimerCallback* callback, uint32 milliseconds)
{
    const CreateTimerFunc create = createTimer;
    return create ? create(callback, milliseconds) : nullptr;
}

}  // namespace Steinberg
