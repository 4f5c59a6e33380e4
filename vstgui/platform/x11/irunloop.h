// IRunLoop: the event loop that calls the toolkit on Linux, and the way to hand one to a frame.
#pragma once

#include "vstgui/platform/iplatformframe.h"

namespace VSTGUI {
namespace X11 {

class IEventHandler {
public:
    virtual ~IEventHandler() = default;
    // Something can be read; called too often does no harm.
    virtual void onEvent() = 0;
};

class ITimerHandler {
public:
    virtual ~ITimerHandler() = default;
    virtual void onTimer() = 0;
};

// False: the loop does not take it. Registrations may come and go inside every callback.
class IRunLoop : public CBaseObject {
public:
    virtual bool registerEventHandler(int fd, IEventHandler* handler) = 0;
    virtual bool unregisterEventHandler(IEventHandler* handler) = 0;
    virtual bool registerTimer(uint64_t milliseconds, ITimerHandler* handler) = 0;
    virtual bool unregisterTimer(ITimerHandler* handler) = 0;
};

// For CFrame::open. Without one, and with a null loop, the frame lives on IdleRunLoop.
class FrameConfig : public IPlatformFrameConfig {
public:
    explicit FrameConfig(IRunLoop* loop) : runLoop(loop) { }

    SharedPointer<IRunLoop> runLoop;
};

}  // namespace X11
}  // namespace VSTGUI
