// Timer on Windows: a thread timer without a window.
#include "base/source/timer.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <vector>
#include <windows.h>

namespace Steinberg {

namespace {

class Win32Timer;

// Timers by the number that Windows gave them. A tick that was already on its way when its timer
// ended finds nothing here and is dropped. Never destroyed, since a tick may outlive static data.
struct LiveTimers {
    std::mutex mutex;
    std::condition_variable tickEnded;
    std::vector<Win32Timer*> timers;
};

LiveTimers& liveTimers()
{
    static LiveTimers* const live = new LiveTimers;
    return *live;
}

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD);

class Win32Timer : public Timer {
public:
    Win32Timer(ITimerCallback* receiver, uint32 milliseconds)
        : callback(receiver), id(SetTimer(nullptr, 0, milliseconds, onTick)),
          thread(GetCurrentThreadId())
    {
        if (!id)
            return;
        LiveTimers& live = liveTimers();
        const std::lock_guard<std::mutex> lock(live.mutex);
        live.timers.push_back(this);
    }

    ~Win32Timer() override { Win32Timer::stop(); }

    void stop() override
    {
        if (!id)
            return;
        {
            LiveTimers& live = liveTimers();
            std::unique_lock<std::mutex> lock(live.mutex);
            live.timers.erase(std::remove(live.timers.begin(), live.timers.end(), this),
                              live.timers.end());
            // On another thread than the ticks', the one under way is waited for.
            if (thread != GetCurrentThreadId())
                live.tickEnded.wait(lock, [this] { return ticks == 0; });
        }
        // Only the creating thread can end the ticks. Ended from another one they go on into this
        // library, which therefore has to stay loaded.
        if (!KillTimer(nullptr, id)) {
            HMODULE self = nullptr;
            GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN
                                   | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                               reinterpret_cast<LPCWSTR>(&onTick), &self);
        }
        id = 0;
    }

    ITimerCallback* callback;
    UINT_PTR id;
    const DWORD thread;
    int ticks = 0;  // under way, one inside the other
};

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD)
{
    LiveTimers& live = liveTimers();
    std::unique_lock<std::mutex> lock(live.mutex);
    IPtr<Win32Timer> timer;
    for (Win32Timer* candidate : live.timers)
        if (candidate->id == id && candidate->thread == GetCurrentThreadId())
            timer = candidate;
    if (!timer)
        return;
    ++timer->ticks;
    lock.unlock();
    timer->callback->onTimer(timer);
    lock.lock();
    --timer->ticks;
    lock.unlock();
    live.tickEnded.notify_all();
}

}  // namespace

Timer* Timer::create(ITimerCallback* callback, uint32 milliseconds)
{
    auto* timer = new Win32Timer(callback, milliseconds);
    if (timer->id)
        return timer;
    timer->release();
    return nullptr;
}

}  // namespace Steinberg
