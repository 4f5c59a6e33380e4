// TimerHub: the toolkit's timers, all on one run loop, and fired by hand where that loop stands
// still.
#pragma once

#include "vstgui/platform/iplatformtimer.h"
#include "vstgui/platform/x11/irunloop.h"

#include <vector>

namespace VSTGUI {
namespace X11 {

class X11Timer : public IPlatformTimer, private ITimerHandler {
public:
    explicit X11Timer(IPlatformTimerCallback* c) : callback(c) { }

    bool start(uint32_t milliseconds) override;
    bool stop() override;

protected:
    ~X11Timer() override;

private:
    friend class TimerHub;

    void onTimer() override;

    IPlatformTimerCallback* callback;
    uint64_t period{0};
    uint64_t due{0};
};

class TimerHub {
public:
    static TimerHub& instance();

    // Running timers move there. Null: IdleRunLoop.
    void useLoop(IRunLoop* newLoop);

    // For a menu or dialog that waits: what is due on the loop in use.
    void fireDue();
    // Until the next timer is due, at most limit.
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
