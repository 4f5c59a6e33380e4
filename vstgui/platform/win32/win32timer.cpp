// Timers of the thread, without a window.
#include "vstgui/platform/iplatformtimer.h"

#include <map>
#include <mutex>
#include <new>
#include <windows.h>

namespace VSTGUI {

namespace {

class Win32Timer;

// By thread and by the number that Windows gave: numbers are not unique across threads. A tick that
// was on its way when its timer ended finds nothing here. Never destroyed, since a tick may outlive
// static data; empty, it holds no memory that an unloaded library would leave behind.
struct RunningTimers {
    using Key = std::pair<DWORD, UINT_PTR>;
    std::mutex mutex;
    std::map<Key, Win32Timer*> timers;
};

RunningTimers& running()
{
    alignas(RunningTimers) static unsigned char place[sizeof(RunningTimers)];
    static RunningTimers* const timers = new (place) RunningTimers;
    return *timers;
}

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD);

class Win32Timer : public IPlatformTimer {
public:
    explicit Win32Timer(IPlatformTimerCallback* receiver) : callback(receiver) { }
    ~Win32Timer() override { Win32Timer::stop(); }

    bool start(uint32_t milliseconds) override
    {
        if (id)
            return true;
        id = SetTimer(nullptr, 0, milliseconds, onTick);
        if (!id)
            return false;
        thread = GetCurrentThreadId();
        RunningTimers& all = running();
        const std::lock_guard<std::mutex> lock(all.mutex);
        all.timers[{thread, id}] = this;
        return true;
    }

    bool stop() override
    {
        if (!id)
            return false;
        {
            RunningTimers& all = running();
            const std::lock_guard<std::mutex> lock(all.mutex);
            all.timers.erase({thread, id});
        }
        // Only the starting thread can end the ticks. Ended from another one they go on into this
        // library, which therefore has to stay loaded.
        if (thread != GetCurrentThreadId() || !KillTimer(nullptr, id)) {
            HMODULE self = nullptr;
            GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN
                                   | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                               reinterpret_cast<LPCWSTR>(&onTick), &self);
        }
        id = 0;
        return true;
    }

    IPlatformTimerCallback* callback;
    UINT_PTR id{0};
    DWORD thread{0};
};

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD)
{
    IPlatformTimerCallback* callback = nullptr;
    {
        RunningTimers& all = running();
        const std::lock_guard<std::mutex> lock(all.mutex);
        const auto found = all.timers.find({GetCurrentThreadId(), id});
        if (found != all.timers.end())
            callback = found->second->callback;
    }
    // The timer may be gone when this returns.
    if (callback)
        callback->platformTimerFired();
}

}  // namespace

IPlatformTimer* IPlatformTimer::createNative(IPlatformTimerCallback* callback)
{
    return new Win32Timer(callback);
}

}  // namespace VSTGUI
