// IRunLoop: the event loop that calls the toolkit on Linux; FrameConfig passes one to a frame.
#pragma once

#include "vstgui/platform/iplatformframe.h"

namespace VSTGUI {
namespace X11 {

class IEventHandler {
public:
    virtual ~IEventHandler() = default;
    // The descriptor can be read. Additional calls are harmless.
    virtual void onEvent() = 0;
};

class ITimerHandler {
public:
    virtual ~ITimerHandler() = default;
    virtual void onTimer() = 0;
};

// The functions return false when refused. They may be called inside any callback.
class IRunLoop : public CBaseObject {
public:
    virtual bool registerEventHandler(int fd, IEventHandler* handler) = 0;
    virtual bool unregisterEventHandler(IEventHandler* handler) = 0;
    virtual bool registerTimer(uint64_t milliseconds, ITimerHandler* handler) = 0;
    virtual bool unregisterTimer(ITimerHandler* handler) = 0;
};

// For CFrame::open. Without a config, or with a null loop, the frame uses IdleRunLoop.
class FrameConfig : public IPlatformFrameConfig {
public:
    explicit FrameConfig(IRunLoop* runLoop) : runLoop(runLoop) { }

    SharedPointer<IRunLoop> runLoop;
};

}  // namespace X11
}  // namespace VSTGUI
