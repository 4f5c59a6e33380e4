// Both libraries are loaded and unloaded many times in one process, as in a host that scans.
#include "tests/soak/System.h"
#include "tests/vst3/HostFrame.h"
#include "tools/host/NativePlugin.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

using namespace vst3;

namespace {

void runVst2(bool withEditor)
{
    host::NativePlugin plugin(ZKR_VST2_LIBRARY);
    plugin.mainsOn();
    stream(plugin, {Signal(64, 0.1f), Signal(64, 0.1f)});
    if (!withEditor)
        return;
    AEffect* const effect = plugin.effect();
    const HostWindow window({20, 10}, 394, 590);
    EXPECT_EQ(effect->dispatcher(effect, effEditOpen, 0, 0, window.handle(), 0.0f), 1);
    for (int turn = 0; turn < 10; ++turn) {
        turnMessageLoop();
        plugin.idle();
    }
    effect->dispatcher(effect, effEditClose, 0, 0, nullptr, 0.0f);
}

void runVst3(bool withEditor)
{
    const Module module;
    Instance instance(module);
    instance.start();
    instance.render({Signal(64, 0.1f), Signal(64, 0.1f)}, {64});
    if (!withEditor)
        return;
    HostFrame frame(owned(instance.controller->createView(ViewType::kEditor)), {20, 10});
    EXPECT_EQ(frame.attach(), kResultTrue);
    for (int turn = 0; turn < 10; ++turn)
        eventLoop.turn();
}

// Calls `run`, which loads, uses and unloads a library, with the number of each turn. The heap may
// have grown by at most `bytes` at the end. `run` opens no editor in the second half of the turns,
// when the process's memory is measured: each editor changes what the system keeps by several MiB.
template <typename Run>
void expectNothingLeft(int turns, int bytes, const Run& run)
{
    // The first turns allocate fonts and the like once and for all.
    constexpr int kFirst = 9;
    Resources first{};
    long long firstMemory = 0;
    for (int turn = 0; turn < turns; ++turn) {
        run(turn);
        if (turn == kFirst)
            first = resourcesAtRest();
        if (turn == turns / 2)
            firstMemory = memoryHeld();
    }
    const auto [firstHeap, firstDescriptors, firstThreads] = first;
    const auto [heap, descriptors, threads] = resourcesAtRest();
    EXPECT_LE(heap - firstHeap, bytes);
    EXPECT_EQ(descriptors, firstDescriptors);
    // The system may still count threads that have just ended.
    EXPECT_LT(threads - firstThreads, 10);
    // Nor has the system always freed their stacks, of 1 MiB each.
    const auto grown = [firstMemory] { return memoryHeld() - firstMemory; };
    for (int wait = 0; wait < 100 && grown() >= 1 << 20; ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_LT(grown(), 1 << 20);
}

}  // namespace

TEST(Unloading, ReleasesWhatLoadingAllocated)
{
    constexpr int kTurns = 1000, kTurnsPerEditor = 50, kBytes = 200;
    loadHostsLibraries();
    for (const auto run : {runVst2, runVst3}) {
        SCOPED_TRACE(run == runVst2 ? "VST 2" : "VST 3");
        // The window system's library allocates again for the second editor.
        expectNothingLeft(kTurns, kBytes, [&](int turn) {
            run(turn < 5 || (turn < kTurns / 2 && turn % kTurnsPerEditor == 0));
        });
    }
}

TEST(Unloading, ReleasesThreadLocalMemoryOfThreadsThatLiveOn)
{
    // The system caches some memory for new threads.
    constexpr int kTurns = 100, kThreads = 4, kBytes = 10000;
    expectNothingLeft(kTurns, kBytes, [](int) {
        auto library = std::make_unique<host::SharedLibrary>(ZKR_RUNTIME_MODULE);
        auto* const use = reinterpret_cast<void (*)()>(library->find("useRuntime"));
        auto* const counted = reinterpret_cast<int (*)()>(library->find("countedByRuntime"));
        std::atomic<int> done{0};
        std::atomic<bool> unloaded{false};
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back([&, livesOn = i % 2 == 0] {
                use();
                ++done;
                while (livesOn && !unloaded)
                    std::this_thread::yield();
            });
        while (done < kThreads)
            std::this_thread::yield();
        EXPECT_EQ(counted(), 100 * kThreads);
        library.reset();
        unloaded = true;
        for (std::thread& thread : threads)
            thread.join();
    });
}

// The system gives a new thread the number of one that has ended.
TEST(Unloading, AThreadStartsWithoutTheValuesOfOneThatEnded)
{
    constexpr int kThreads = 1000;
    host::SharedLibrary library(ZKR_RUNTIME_MODULE);
    const auto use = reinterpret_cast<void (*)()>(library.find("useRuntime"));
    for (int i = 0; i < kThreads; ++i)
        std::thread(use).join();
    EXPECT_EQ(reinterpret_cast<int (*)()>(library.find("countedByRuntime"))(), 100 * kThreads);
}

TEST(Unloading, AllowsTheLibrarysFileToBeReplaced)
{
    namespace fs = std::filesystem;
    const fs::path place = ZKR_VST2_LIBRARY "-replaced";
    const auto put = [&](const char* library) {
        fs::remove(place);
        fs::copy_file(library, place);
    };
    put(ZKR_VST2_LIBRARY);
    host::NativePlugin(place.string());
    put(ZKR_VST3_LIBRARY);
    EXPECT_TRUE(host::SharedLibrary(place.string()).find("GetPluginFactory"));
    fs::remove(place);
}
