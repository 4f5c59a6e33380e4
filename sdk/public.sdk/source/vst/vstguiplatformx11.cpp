// Opening an editor on Linux, where windows and timers use the host's event loop, if it offers one,
// else one that the idle calls of a VST 2 host run.
#include "public.sdk/source/vst/vstguiplatform.h"

#include "base/source/timer.h"
#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"
#include "vstgui/platform/x11/idlerunloop.h"

#include <algorithm>
#include <vector>

namespace Steinberg {
namespace Vst {

namespace {

namespace X11 = VSTGUI::X11;

// Adapters that are registered with a host: each wraps a handler of the toolkit.
class HostEventHandler : public FObject, public Linux::IEventHandler {
public:
    explicit HostEventHandler(X11::IEventHandler* handler) : handler(handler) { }
    void PLUGIN_API onFDIsSet(Linux::FileDescriptor) override
    {
        if (handler)
            handler->onEvent();
    }

    X11::IEventHandler* handler;  // null once unregistered

    DEFINE_INTERFACES
    DEF_INTERFACE(Linux::IEventHandler)
    END_DEFINE_INTERFACES(FObject)
    DELEGATE_REFCOUNT(FObject)
};

class HostTimerHandler : public FObject, public Linux::ITimerHandler {
public:
    explicit HostTimerHandler(X11::ITimerHandler* handler) : handler(handler) { }
    void PLUGIN_API onTimer() override
    {
        if (handler)
            handler->onTimer();
    }

    X11::ITimerHandler* handler;

    DEFINE_INTERFACES
    DEF_INTERFACE(Linux::ITimerHandler)
    END_DEFINE_INTERFACES(FObject)
    DELEGATE_REFCOUNT(FObject)
};

// Removes the adapter of `handler` from a list and returns it; null if there is none.
template <typename Registered, typename Handler>
IPtr<Registered> takeOut(std::vector<IPtr<Registered>>& list, Handler* handler)
{
    const auto found = std::find_if(list.begin(), list.end(), [handler](const auto& registered) {
        return registered->handler == handler;
    });
    if (found == list.end())
        return nullptr;
    const IPtr<Registered> taken = *found;
    list.erase(found);
    taken->handler = nullptr;
    return taken;
}

// The host's loop for a frame. It also runs the SDK's timers, which belong to no view.
class HostRunLoop : public X11::IRunLoop, private X11::ITimerHandler {
public:
    explicit HostRunLoop(IPtr<Linux::IRunLoop> loop) : loop(loop) { registerTimer(kTickMs, this); }
    ~HostRunLoop() override { unregisterTimer(this); }

    bool registerEventHandler(int fd, X11::IEventHandler* handler) override
    {
        const auto registered = Steinberg::owned(new HostEventHandler(handler));
        if (loop->registerEventHandler(registered, fd) != kResultTrue)
            return false;
        events.push_back(registered);
        return true;
    }
    bool unregisterEventHandler(X11::IEventHandler* handler) override
    {
        const auto registered = takeOut(events, handler);
        return registered && loop->unregisterEventHandler(registered) == kResultTrue;
    }
    bool registerTimer(uint64_t milliseconds, X11::ITimerHandler* handler) override
    {
        const auto registered = Steinberg::owned(new HostTimerHandler(handler));
        if (loop->registerTimer(registered, milliseconds) != kResultTrue)
            return false;
        timers.push_back(registered);
        return true;
    }
    bool unregisterTimer(X11::ITimerHandler* handler) override
    {
        const auto registered = takeOut(timers, handler);
        return registered && loop->unregisterTimer(registered) == kResultTrue;
    }

private:
    static constexpr uint64_t kTickMs = 16;

    void onTimer() override { X11::IdleRunLoop::instance().fireTimers(); }

    IPtr<Linux::IRunLoop> loop;
    std::vector<IPtr<HostEventHandler>> events;
    std::vector<IPtr<HostTimerHandler>> timers;
};

// The SDK's timer on the loop that idle calls run.
class IdleTimer : public Timer, private X11::ITimerHandler {
public:
    static Timer* create(ITimerCallback* callback, uint32 milliseconds)
    {
        IPtr<IdleTimer> timer = Steinberg::owned(new IdleTimer(callback));
        timer->running = X11::IdleRunLoop::instance().registerTimer(milliseconds, timer.get());
        return timer->running ? timer.take() : nullptr;
    }
    ~IdleTimer() override { IdleTimer::stop(); }

    void stop() override
    {
        if (running)
            X11::IdleRunLoop::instance().unregisterTimer(this);
        running = false;
    }

private:
    explicit IdleTimer(ITimerCallback* callback) : callback(callback) { }
    void onTimer() override { callback->onTimer(this); }

    ITimerCallback* callback;
    bool running = false;
};

}  // namespace

void startToolkit()
{
    InjectCreateTimerFunction(IdleTimer::create);
    Vst2Wrapper::setIdleFunction([] { X11::IdleRunLoop::instance().pump(); });
}

std::unique_ptr<VSTGUI::IPlatformFrameConfig> makeFrameConfig(IPlugFrame* host)
{
    FUnknownPtr<Linux::IRunLoop> loop(host);
    if (!loop)
        return nullptr;
    const auto adapter = VSTGUI::owned(new HostRunLoop(loop.getInterface()));
    return std::make_unique<X11::FrameConfig>(adapter);
}

bool hasEventLoop(IPlugFrame* host)
{
    return FUnknownPtr<Linux::IRunLoop>(host) != nullptr;
}

// Not needed: the event loop is the library's own, so nothing calls into an unloaded library, and
// the window is destroyed with its parent.
void keepLibraryLoaded() { }

FIDString windowType()
{
    return kPlatformTypeX11EmbedWindowID;
}

}  // namespace Vst
}  // namespace Steinberg
