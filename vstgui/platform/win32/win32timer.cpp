// Win32Timer: thread timers, without a window.
#include "vstgui/platform/iplatformtimer.h"

#include <map>
#include <mutex>
#include <new>
#include <windows.h>

namespace VSTGUI {

namespace {

class Win32Timer;

// By thread and timer id, since ids are not unique across threads. A tick still queued when its
// timer stopped finds no entry. Never destroyed, since a tick may come after static data is
// destroyed; an empty map owns no memory, so unloading the library leaks nothing.
struct RunningTimers {
    using Key = std::pair<DWORD, UINT_PTR>;
    std::mutex mutex;
    std::map<Key, Win32Timer*> timers;
};

RunningTimers& running()
{
    alignas(RunningTimers) static unsigned char storage[sizeof(RunningTimers)];
    static RunningTimers* const timers = new (storage) RunningTimers;
    return *timers;
}

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD);

class Win32Timer : public IPlatformTimer {
public:
    explicit Win32Timer(IPlatformTimerCallback* callback) : callback(callback) { }
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
        // Only the thread that started the timer can kill it. Stopped from another thread it goes
        // on calling onTick, so the library has to stay loaded.
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
    // This may delete the timer.
    if (callback)
        callback->platformTimerFired();
}

}  // namespace

IPlatformTimer* IPlatformTimer::createNative(IPlatformTimerCallback* callback)
{
    return new Win32Timer(callback);
}

}  // namespace VSTGUI
