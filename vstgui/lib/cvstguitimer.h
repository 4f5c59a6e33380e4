// CVSTGUITimer: calls back periodically on the user-interface thread.
#pragma once

#include "vstgui/lib/vstguibase.h"
#include "vstgui/platform/iplatformtimer.h"

#include <functional>

namespace VSTGUI {

class CVSTGUITimer : public CBaseObject, private IPlatformTimerCallback {
public:
    using CallbackFunc = std::function<void(CVSTGUITimer*)>;

    static const IdStringPtr kMsgTimer;

    // Each tick calls target->notify (timer, kMsgTimer). The timer holds no reference: release it
    // before the target. fireTime is in ms; 0 counts as 1.
    explicit CVSTGUITimer(CBaseObject* target, uint32_t fireTime = 100, bool doStart = false);
    // Calls a function instead.
    explicit CVSTGUITimer(const CallbackFunc& callback, uint32_t fireTime = 100,
                          bool doStart = true);
    CVSTGUITimer(const CVSTGUITimer&) = delete;

    // True when running afterwards. No effect on a running timer.
    virtual bool start();
    // True when it was running.
    virtual bool stop();
    // In ms. False when unchanged; a running timer is restarted.
    virtual bool setFireTime(uint32_t newFireTime);
    uint32_t getFireTime() const { return fireTime; }

    CLASS_METHODS_NOCOPY(CVSTGUITimer, CBaseObject)

protected:
    ~CVSTGUITimer() override;

private:
    void platformTimerFired() override;

    CallbackFunc callback;
    uint32_t fireTime;
    SharedPointer<IPlatformTimer> platformTimer;  // while running
};

}  // namespace VSTGUI
