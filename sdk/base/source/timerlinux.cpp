// Timer on Linux: made by the event loop that was injected, if any.
#include "base/source/timer.h"

#include <atomic>

namespace Steinberg {

namespace {
// Hosts make instances on several threads.
std::atomic<CreateTimerFunc> createTimer{nullptr};
}

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
