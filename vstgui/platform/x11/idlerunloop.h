// IdleRunLoop: the loop of hosts that offer none, turned by their idle call.
#pragma once

#include "vstgui/platform/x11/irunloop.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace VSTGUI {
namespace X11 {

// Registrations may come from any thread, as hosts make and end instances on any; callbacks come
// from pump. Whoever unregisters a handler on another thread waits for the callback that it is in:
// after that it is never called again.
class IdleRunLoop : public IRunLoop {
public:
    // One for the whole library.
    static IdleRunLoop& instance();

    // One turn: calls every event handler, then every timer that is due, once each, without
    // waiting. Nothing when called from inside itself or, while an event handler is registered, on
    // another thread than the one that registered the first.
    void pump();
    // The timers alone, for a menu or dialog that waits inside a callback.
    void fireTimers();
    // Until the next timer is due, at most limit.
    int millisecondsToNextTimer(int limit) const;

    bool registerEventHandler(int fd, IEventHandler* handler) override;
    bool unregisterEventHandler(IEventHandler* handler) override;
    bool registerTimer(uint64_t milliseconds, ITimerHandler* handler) override;
    bool unregisterTimer(ITimerHandler* handler) override;

private:
    struct TimerSource {
        ITimerHandler* handler;
        uint64_t period;
        uint64_t due;  // milliseconds of the steady clock
    };

    static IdleRunLoop only;

    // A callback under way.
    struct Call {
        const void* handler;
        std::thread::id thread;
    };

    IdleRunLoop() = default;
    // Takes the event handlers for one turn. False where this call may not turn the loop.
    bool startTurn(std::vector<IEventHandler*>& handlers);
    // Calls the handler unless it is gone, or a timer that is not due.
    void callEvent(IEventHandler* handler);
    void callTimer(ITimerHandler* handler);
    template <typename Callback>
    void call(std::unique_lock<std::mutex>& lock, const void* handler, Callback callback);
    void waitForCall(std::unique_lock<std::mutex>& lock, const void* handler);

    mutable std::mutex mutex;  // never held during a callback
    std::condition_variable callEnded;
    std::vector<Call> calls;
    std::vector<IEventHandler*> events;
    std::vector<TimerSource> timers;
    std::thread::id owner;
    bool pumping{false};
};

}  // namespace X11
}  // namespace VSTGUI
