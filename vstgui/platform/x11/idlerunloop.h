// IdleRunLoop: the run loop for hosts that have none; their idle call drives it.
#pragma once

#include "vstgui/platform/x11/irunloop.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace VSTGUI {
namespace X11 {

// Handlers may be registered on any thread, since hosts create and destroy instances on any; pump
// calls them. Unregistering a handler waits for its call on another thread to return, and
// afterwards it is not called again.
class IdleRunLoop : public IRunLoop {
public:
    // The only one in the library.
    static IdleRunLoop& instance();

    // Calls every event handler, then every timer that is due, once each, without waiting. No
    // effect in a nested call, nor on another thread than the one that registered the first event
    // handler, while there are event handlers.
    void pump();
    // Calls the timers that are due; for a menu that waits inside a callback.
    void fireTimers();
    // The time until the next timer is due, at most `limit`, in ms.
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

    static IdleRunLoop theInstance;

    // A callback in progress.
    struct Call {
        const void* handler;
        std::thread::id thread;
    };

    IdleRunLoop() = default;
    // Gets the event handlers to be called. False where pump must do nothing.
    bool startPumping(std::vector<IEventHandler*>& handlers);
    // Call the handler if it is still registered and, for a timer, due.
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
