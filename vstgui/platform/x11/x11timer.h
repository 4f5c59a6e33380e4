// TimerHub: runs the toolkit's timers on one run loop, and fires them directly while a menu blocks
// that loop.
#pragma once

#include "vstgui/platform/iplatformtimer.h"
#include "vstgui/platform/x11/irunloop.h"

#include <vector>

namespace VSTGUI {
namespace X11 {

class X11Timer : public IPlatformTimer, private ITimerHandler {
public:
    explicit X11Timer(IPlatformTimerCallback* callback) : callback(callback) { }

    bool start(uint32_t milliseconds) override;
    bool stop() override;

protected:
    ~X11Timer() override;

private:
    friend class TimerHub;

    void onTimer() override;

    IPlatformTimerCallback* callback;
    uint64_t period{0};  // ms
    uint64_t due{0};     // ms of the steady clock
};

class TimerHub {
public:
    static TimerHub& instance();

    // Moves running timers to that loop. Null for IdleRunLoop.
    void useLoop(IRunLoop* newLoop);

    // Fires the timers that are due; for a menu that waits.
    void fireDue();
    // The time until the next timer is due, at most `limit`, in ms.
    int millisecondsToNext(int limit) const;

private:
    friend class X11Timer;

    TimerHub();
    bool onIdleLoop() const;

    SharedPointer<IRunLoop> loop;
    std::vector<X11Timer*> running;
};

}  // namespace X11
}  // namespace VSTGUI
