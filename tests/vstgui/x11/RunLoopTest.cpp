// The run loop that is driven by hosts' idle calls, and hosts' own run loops.
#include "tests/support/Times.h"
#include "tests/vstgui/OpenFrame.h"

#include <atomic>
#include <thread>

using X11::IdleRunLoop;

namespace {

struct Handler : X11::IEventHandler, X11::ITimerHandler {
    std::function<void()> action;
    int events{0};
    int ticks{0};
    void onEvent() override
    {
        ++events;
        if (action)
            action();
    }
    void onTimer() override
    {
        ++ticks;
        if (action)
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
    loop.unregisterEventHandler(&first);
    loop.unregisterTimer(&first);
}

// Hosts may destroy instances, and with them their timers, on other threads.
TEST(IdleRunLoop, NoCallbackRunsAfterAnotherThreadHasUnregisteredIt)
{
    struct Guarded : X11::IEventHandler, X11::ITimerHandler {
        std::atomic<int> inside{0};
        void onEvent() override { onTimer(); }
        void onTimer() override
        {
            ++inside;
            std::this_thread::yield();
            --inside;
        }
    };
    auto& loop = IdleRunLoop::instance();
    std::atomic<bool> stop{false};
    std::thread turning([&] {
        while (!stop)
            loop.pump();
    });
    int found = 0;
    for (int i = 0; i < times(); ++i) {
        Guarded handler;
        loop.registerTimer(0, &handler);
        if (i % 2)
            std::this_thread::yield();
        loop.unregisterTimer(&handler);
        found += handler.inside;
    }
    stop = true;
    turning.join();
    EXPECT_EQ(found, 0);
}

// A host's run loop with one event handler and any number of timers.
struct HostLoop : X11::IRunLoop {
    bool registerEventHandler(int, X11::IEventHandler* h) override
    {
        events = h;
        return true;
    }
    bool unregisterEventHandler(X11::IEventHandler*) override
    {
        events = nullptr;
        return true;
    }
    bool registerTimer(uint64_t, X11::ITimerHandler* h) override
    {
        timers.push_back(h);
        return true;
    }
    bool unregisterTimer(X11::ITimerHandler* h) override
    {
        timers.erase(std::find(timers.begin(), timers.end(), h));
        return true;
    }
    void tick()
    {
        for (auto* handler : std::vector<X11::ITimerHandler*>(timers))
            if (std::find(timers.begin(), timers.end(), handler) != timers.end())
                handler->onTimer();
    }
    X11::IEventHandler* events{nullptr};
    std::vector<X11::ITimerHandler*> timers;
};

TEST(HostsRunLoop, AFrameAndAllTimersUseItUntilItsLastFrameCloses)
{
    HostWindow host(kHost, 100, 100);
    const auto loop = owned(new HostLoop);
    int ticks = 0;
    const auto timer = owned(new CVSTGUITimer([&](CVSTGUITimer*) { ++ticks; }, 5));

    X11::FrameConfig config(loop);
    auto* frame = new CFrame(CRect(0, 0, 100, 100), nullptr);
    frame->setBackgroundColor(kBlueCColor);
    ASSERT_TRUE(frame->open(host.handle(), kDefaultNative, &config));
    ASSERT_NE(loop->events, nullptr);
    pump(40);
    EXPECT_EQ(ticks, 0);
    loop->tick();
    loop->events->onEvent();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(screenshot(kHost, 100, 100).at(99, 99), kBlueCColor);

    frame->close();
    EXPECT_EQ(loop->events, nullptr);
    EXPECT_TRUE(loop->timers.empty());
    EXPECT_TRUE(pumpUntil([&] { return ticks > 2; }));
}

// Xlib may read events while it sends a picture; the descriptor then does not become readable.
TEST(HostsRunLoop, EventsThatXlibHasReadAlreadyAreHandledAtTheNextTick)
{
    HostWindow host(kHost, 100, 100);
    const auto loop = owned(new HostLoop);
    const auto timer = owned(new CVSTGUITimer([](CVSTGUITimer*) {}, 5));
    X11::FrameConfig config(loop);
    Record record;
    auto* frame = new RecordingFrame(record, {100, 100});
    ASSERT_TRUE(frame->open(host.handle(), kDefaultNative, &config));
    loop->events->onEvent();
    hands::movePointer({kHost.x + 20, kHost.y + 20});
    hands::button(hands::Button::Left, true);
    hands::button(hands::Button::Left, false);
    const auto pressed = [&] { return record.has("down 20,20 L"); };
    for (int i = 0; i < 1000 && !pressed(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        loop->tick();
    }
    EXPECT_TRUE(pressed());
    frame->close();
}

}  // namespace
