// Timer on Windows: SetTimer without a window.
#include "base/source/timer.h"

#include <list>
#include <new>
#include <windows.h>

namespace Steinberg {

namespace {

class Win32Timer;

// The running timers. A queued tick whose timer has been stopped finds no entry here and is
// dropped. Never destroyed, since a tick may come after the destruction of static objects; an empty
// list holds no memory that an unloaded library would leak.
struct LiveTimers {
    SRWLOCK lock = SRWLOCK_INIT;
    CONDITION_VARIABLE tickEnded = CONDITION_VARIABLE_INIT;
    std::list<Win32Timer*> timers;
};

LiveTimers& liveTimers()
{
    alignas(LiveTimers) static unsigned char storage[sizeof(LiveTimers)];
    static LiveTimers* const live = new (storage) LiveTimers;
    return *live;
}

class Locked {
public:
    explicit Locked(LiveTimers& live) : live(live) { AcquireSRWLockExclusive(&live.lock); }
    ~Locked() { ReleaseSRWLockExclusive(&live.lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

    void waitForTick() const
    {
        SleepConditionVariableSRW(&live.tickEnded, &live.lock, INFINITE, 0);
    }

private:
    LiveTimers& live;
};

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD);

class Win32Timer : public Timer {
public:
    Win32Timer(ITimerCallback* callback, uint32 milliseconds)
        : callback(callback), id(SetTimer(nullptr, 0, milliseconds, onTick)),
          thread(GetCurrentThreadId())
    {
        if (!id)
            return;
        LiveTimers& live = liveTimers();
        const Locked locked(live);
        live.timers.push_back(this);
    }

    ~Win32Timer() override { Win32Timer::stop(); }

    void stop() override
    {
        if (!id)
            return;
        {
            LiveTimers& live = liveTimers();
            const Locked locked(live);
            live.timers.remove(this);
            // On another thread than the timer's, waits for a callback that is running.
            while (ticks > 0 && thread != GetCurrentThreadId())
                locked.waitForTick();
        }
        // Only the creating thread can kill the timer. After a stop on another one Windows keeps
        // calling onTick, so this library must stay loaded.
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
    int ticks = 0;  // callbacks running, nested
};

void CALLBACK onTick(HWND, UINT, UINT_PTR id, DWORD)
{
    LiveTimers& live = liveTimers();
    IPtr<Win32Timer> timer;
    {
        const Locked locked(live);
        for (Win32Timer* candidate : live.timers)
            if (candidate->id == id && candidate->thread == GetCurrentThreadId())
                timer = candidate;
        if (!timer)
            return;
        ++timer->ticks;
    }
    timer->callback->onTimer(timer);
    {
        const Locked locked(live);
        --timer->ticks;
    }
    WakeAllConditionVariable(&live.tickEnded);
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
