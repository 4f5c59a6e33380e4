// The timer on Windows, whose callback runs on the thread that created it; any thread may stop it.
#include "tests/support/Times.h"

#include "base/source/timer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>
#include <windows.h>

using namespace Steinberg;

namespace {

struct Guarded : ITimerCallback {
    void onTimer(Timer*) override
    {
        ++inside;
        ++ticks;
        Sleep(1);
        --inside;
    }
    std::atomic<int> inside{0}, ticks{0};
};

}  // namespace

TEST(TimerOnWindows, NoCallbackRunsAfterAnotherThreadHasStoppedIt)
{
    constexpr int kAtOnce = 20;
    int found = 0, ticks = 0;
    // A timer that another thread stops stays allocated until the thread that created it ends.
    for (int done = 0; done < times() / 10; done += kAtOnce) {
        std::vector<Guarded> callbacks(kAtOnce);
        std::vector<Timer*> timers;
        std::atomic<bool> made{false}, ended{false};
        std::thread ticking([&] {
            for (Guarded& callback : callbacks)
                timers.push_back(Timer::create(&callback, 10));
            made = true;
            MSG message;
            while (!ended)
                if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                    DispatchMessageW(&message);
                else
                    Sleep(1);
        });
        while (!made)
            Sleep(1);
        for (std::size_t i = 0; i < timers.size(); ++i) {
            Sleep(3);
            timers[i]->stop();
            found += callbacks[i].inside;
            ticks += callbacks[i].ticks;
            timers[i]->release();
        }
        ended = true;
        ticking.join();
    }
    EXPECT_EQ(found, 0);
    EXPECT_GT(ticks, 0);
}
