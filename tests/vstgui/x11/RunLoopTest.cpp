// The run loop that is driven by hosts' idle calls.
#include "tests/support/Times.h"
#include "tests/vstgui/OpenFrame.h"

#include <atomic>
#include <thread>

using X11::IdleRunLoop;

namespace {

struct Handler : X11::IEventHandler, X11::ITimerHandler {
    std::function<void()> action = [] {};
    int events{0};
    int ticks{0};
    void onEvent() override
    {
        ++events;
        action();
    }
    void onTimer() override
    {
        ++ticks;
        action();
    }
};

TEST(IdleRunLoop, MissedTicksAreDeliveredOnceAndThePeriodRestarts)
{
    auto& loop = IdleRunLoop::instance();
    Handler h;
    constexpr int kPeriod = 200;
    loop.registerTimer(kPeriod, &h);
    loop.pump();
    EXPECT_EQ(h.ticks, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(5 * kPeriod / 2));
    loop.pump();
    loop.pump();
    EXPECT_EQ(h.ticks, 1);
    EXPECT_LE(loop.millisecondsToNextTimer(10 * kPeriod), kPeriod);
    EXPECT_TRUE(loop.unregisterTimer(&h));
    EXPECT_FALSE(loop.unregisterTimer(&h));
}

TEST(IdleRunLoop, CallbacksMayUnregisterEachOtherAndCannotReenterTheLoop)
{
    auto& loop = IdleRunLoop::instance();
    Handler first;
    Handler second;
    first.action = [&] {
        loop.pump();
        loop.unregisterEventHandler(&second);
        loop.unregisterTimer(&second);
    };
    loop.registerEventHandler(0, &first);
    loop.registerEventHandler(0, &second);
    loop.registerTimer(0, &first);
    loop.registerTimer(0, &second);
    loop.pump();
    EXPECT_EQ(first.events, 1);
    EXPECT_EQ(first.ticks, 1);
    EXPECT_EQ(second.events + second.ticks, 0);
    std::thread([&] { loop.pump(); }).join();
    EXPECT_EQ(first.events, 1);
    first.action = [] { throw 1; };
    EXPECT_THROW(loop.pump(), int);
    first.action = [] {};
    loop.pump();
    EXPECT_EQ(first.events, 3);
    // Waits for no call of the handler.
    std::thread([&] { loop.unregisterEventHandler(&first); }).join();
    loop.unregisterTimer(&first);
}

// Hosts may destroy instances, and with them their timers, on other threads.
TEST(IdleRunLoop, NoCallbackRunsAfterAnotherThreadHasUnregisteredIt)
{
    auto& loop = IdleRunLoop::instance();
    std::atomic<bool> stop{false};
    std::thread turning([&] {
        while (!stop)
            loop.pump();
    });
    int found = 0;
    for (int i = 0; i < times(); ++i) {
        std::atomic<int> inside{0};
        Handler handler;
        handler.action = [&inside] {
            ++inside;
            std::this_thread::yield();
            --inside;
        };
        loop.registerTimer(0, &handler);
        if (i % 2)
            std::this_thread::yield();
        loop.unregisterTimer(&handler);
        found += inside;
    }
    stop = true;
    turning.join();
    EXPECT_EQ(found, 0);
}

}  // namespace
