// The event loop that Linux hosts run for their views.
#include "tests/vst3/HostFrame.h"

#include <algorithm>
#include <chrono>
#include <poll.h>
#include <utility>

namespace vst3 {

namespace {

using Clock = std::chrono::steady_clock;

class Loop : public HostObject<Linux::IRunLoop> {
public:
    tresult PLUGIN_API registerEventHandler(Linux::IEventHandler* handler, int fd) override
    {
        registered.push_back({handler, [handler, fd] { handler->onFDIsSet(fd); }, fd, {}, {}});
        return kResultTrue;
    }
    tresult PLUGIN_API unregisterEventHandler(Linux::IEventHandler* handler) override
    {
        return take(handler);
    }
    tresult PLUGIN_API registerTimer(Linux::ITimerHandler* handler, uint64 ms) override
    {
        const std::chrono::milliseconds period(ms);
        registered.push_back(
            {handler, [handler] { handler->onTimer(); }, -1, period, Clock::now() + period});
        return kResultTrue;
    }
    tresult PLUGIN_API unregisterTimer(Linux::ITimerHandler* handler) override
    {
        return take(handler);
    }

    void turn(bool descriptors)
    {
        std::vector<pollfd> sources;
        for (const Registration& each : registered)
            sources.push_back({each.fd, POLLIN, 0});
        poll(sources.data(), sources.size(), 3);
        // A copy: callbacks may register and unregister.
        const std::vector<Registration> all = registered;
        for (std::size_t i = 0; i < all.size(); ++i) {
            const auto now = find(all[i].handler);
            if (now == registered.end()
                || (now->fd >= 0 ? !descriptors || !sources[i].revents : now->due > Clock::now()))
                continue;
            now->due = Clock::now() + now->period;
            all[i].call();
        }
    }

    int count(bool timers) const
    {
        return static_cast<int>(
            std::count_if(registered.begin(), registered.end(),
                          [&](const Registration& each) { return (each.fd < 0) == timers; }));
    }

    struct Registration {
        IPtr<FUnknown> handler;
        std::function<void()> call;
        int fd;  // -1 for a timer
        std::chrono::milliseconds period;
        Clock::time_point due;
    };
    std::vector<Registration> registered;
    std::vector<Registration> unregistered;  // while others are registered

private:
    std::vector<Registration>::iterator find(FUnknown* handler)
    {
        return std::find_if(registered.begin(), registered.end(),
                            [&](const Registration& each) { return each.handler == handler; });
    }
    tresult take(FUnknown* handler)
    {
        const auto found = find(handler);
        if (found == registered.end())
            return kResultFalse;
        unregistered.push_back(*found);
        registered.erase(found);
        // A host may have a call under way while a handler is unregistered.
        if (registered.empty())
            for (const Registration& each : std::exchange(unregistered, {}))
                each.call();
        return kResultTrue;
    }
};

Loop loop;

}  // namespace

const EventLoop eventLoop{kPlatformTypeX11EmbedWindowID, &loop,
                          [](bool ofTimers) { return loop.count(ofTimers); },
                          [] { loop.turn(true); }, [] { loop.turn(false); }};

}  // namespace vst3
