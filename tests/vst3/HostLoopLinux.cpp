// The event loop that hosts of Linux turn for their views.
#include "HostFrame.h"

#include <algorithm>
#include <chrono>
#include <poll.h>

namespace vst3 {

namespace {

using Clock = std::chrono::steady_clock;

class Loop : public Linux::IRunLoop {
public:
    tresult PLUGIN_API registerEventHandler(Linux::IEventHandler* handler, int fd) SMTG_OVERRIDE
    {
        events.push_back({handler, fd});
        return kResultTrue;
    }
    tresult PLUGIN_API unregisterEventHandler(Linux::IEventHandler* handler) SMTG_OVERRIDE
    {
        return take(events, handler);
    }
    tresult PLUGIN_API registerTimer(Linux::ITimerHandler* handler, uint64 ms) SMTG_OVERRIDE
    {
        const std::chrono::milliseconds period(ms);
        timers.push_back({handler, period, Clock::now() + period});
        return kResultTrue;
    }
    tresult PLUGIN_API unregisterTimer(Linux::ITimerHandler* handler) SMTG_OVERRIDE
    {
        return take(timers, handler);
    }
    tresult PLUGIN_API queryInterface(const TUID _iid, void** obj) SMTG_OVERRIDE
    {
        QUERY_INTERFACE(_iid, obj, FUnknown::iid, Linux::IRunLoop)
        QUERY_INTERFACE(_iid, obj, Linux::IRunLoop::iid, Linux::IRunLoop)
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() SMTG_OVERRIDE { return 1; }
    uint32 PLUGIN_API release() SMTG_OVERRIDE { return 1; }

    void turn()
    {
        std::vector<pollfd> sources;
        for (const Event& event : events)
            sources.push_back({event.handler.get() ? event.fd : -1, POLLIN, 0});
        poll(sources.data(), sources.size(), 3);
        const std::vector<Event> ready = events;
        for (std::size_t i = 0; i < ready.size(); ++i)
            if (sources[i].revents && holds(events, ready[i].handler))
                ready[i].handler->onFDIsSet(ready[i].fd);
        const std::vector<Timer> all = timers;
        for (const Timer& timer : all)
            if (timer.due <= Clock::now() && holds(timers, timer.handler)) {
                for (Timer& own : timers)
                    if (own.handler == timer.handler)
                        own.due = Clock::now() + own.period;
                timer.handler->onTimer();
            }
    }

    struct Event {
        IPtr<Linux::IEventHandler> handler;
        int fd;
    };
    struct Timer {
        IPtr<Linux::ITimerHandler> handler;
        std::chrono::milliseconds period;
        Clock::time_point due;
    };
    std::vector<Event> events;
    std::vector<Timer> timers;

private:
    template <typename List, typename Handler>
    static auto find(List& list, const Handler& handler)
    {
        return std::find_if(list.begin(), list.end(),
                            [&](const auto& item) { return item.handler == handler; });
    }
    template <typename List, typename Handler>
    static bool holds(List& list, const Handler& handler)
    {
        return find(list, handler) != list.end();
    }
    template <typename List, typename Handler>
    static tresult take(List& list, Handler* handler)
    {
        const auto found = find(list, handler);
        if (found == list.end())
            return kResultFalse;
        list.erase(found);
        return kResultTrue;
    }
};

Loop loop;

}  // namespace

FIDString windowType()
{
    return kPlatformTypeX11EmbedWindowID;
}

FUnknown* eventLoop()
{
    return &loop;
}

std::size_t registrations()
{
    return loop.events.size() + loop.timers.size();
}

void turnLoop()
{
    loop.turn();
}

}  // namespace vst3
