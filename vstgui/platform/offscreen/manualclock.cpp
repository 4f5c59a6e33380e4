#include "vstgui/platform/offscreen/manualclock.h"

#include <algorithm>
#include <vector>

namespace VSTGUI {

namespace {

class ManualTimer;

struct Clock {
    uint64_t now{0};  // ms
    std::vector<ManualTimer*> running;
};

Clock& theClock()
{
    static Clock instance;
    return instance;
}

class ManualTimer : public IPlatformTimer {
public:
    explicit ManualTimer(IPlatformTimerCallback* callback) : callback(callback) { }

    static IPlatformTimer* create(IPlatformTimerCallback* callback)
    {
        return new ManualTimer(callback);
    }

    bool start(uint32_t milliseconds) override
    {
        stop();
        period = milliseconds;
        due = theClock().now + period;
        theClock().running.push_back(this);
        return true;
    }

    bool stop() override
    {
        auto& running = theClock().running;
        const auto it = std::find(running.begin(), running.end(), this);
        if (it == running.end())
            return false;
        running.erase(it);
        return true;
    }

    void fire()
    {
        const CBaseObjectGuard guard(this);
        due += period;
        callback->platformTimerFired();
    }

    uint64_t due{0};

protected:
    ~ManualTimer() override { ManualTimer::stop(); }

private:
    IPlatformTimerCallback* callback;
    uint64_t period{1};
};

}  // namespace

ManualClock::ManualClock() : previous(IPlatformTimer::setFactory(&ManualTimer::create)) { }

ManualClock::~ManualClock()
{
    IPlatformTimer::setFactory(previous);
}

void ManualClock::advance(uint32_t milliseconds)
{
    Clock& clock = theClock();
    const uint64_t end = clock.now + milliseconds;
    for (;;) {
        const auto next = std::min_element(
            clock.running.begin(), clock.running.end(),
            [](const ManualTimer* a, const ManualTimer* b) { return a->due < b->due; });
        if (next == clock.running.end() || (*next)->due > end)
            break;
        clock.now = (*next)->due;
        (*next)->fire();
    }
    clock.now = end;
}

}  // namespace VSTGUI
