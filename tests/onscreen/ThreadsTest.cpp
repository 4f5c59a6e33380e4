// An open editor while other threads set states and parameters, process, and destroy instances.
// Also run under the thread sanitizer.
#include "tests/onscreen/EditorOnScreen.h"
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tests/support/Times.h"

#include <mutex>
#include <random>

namespace {

using namespace std::chrono_literals;
using host::NativePlugin;

// The output for noise, after enough silence for all older input to decay.
std::vector<Signal> soundOf(NativePlugin& plugin)
{
    const Signal silence(44100 * 4), played = noise(22050, 5);
    for (int turn = 0; turn < 2; ++turn)
        stream(plugin, {silence, silence});
    return stream(plugin, {played, played});
}

TEST_F(EditorOnScreen, FollowsWhatAnotherThreadSetsWithoutDeadlock)
{
    const auto narrow = host->bankChunk();
    host->automate(kQB11, 1);
    host->automate(k2x, 1);
    const auto wide = host->bankChunk();
    host->mainsOn();

    // Some hosts hold such a lock around all calls to a plug-in, idle calls included.
    std::mutex hostsLock;
    std::atomic<bool> stop{false};
    std::thread worker([&] {
        std::mt19937 random(1);
        // The pause lets the interface thread take the lock.
        for (; !stop; std::this_thread::sleep_for(1ms)) {
            const std::lock_guard<std::mutex> lock(hostsLock);
            host->setBankChunk(random() % 2 ? narrow : wide);
            EXPECT_GT(host->bankChunk().size(), 48000u);
            for (int i = 0; i < 20; ++i)
                host->automate(static_cast<unsigned>(random() % 58),
                               static_cast<double>(random() % 101) / 100.0);
            host->paramDisplay(static_cast<VstInt32>(random() % 58));
            host->setProgramName("Renamed");
        }
    });
    std::thread audio([&] {
        std::vector<float> in(64), out(128);
        float* inputs[] = {in.data(), in.data()};
        float* outputs[] = {out.data(), out.data() + 64};
        for (; !stop; std::this_thread::sleep_for(200us))
            host->process(inputs, outputs, 64);
    });
    std::thread hands([&] {
        User user;
        for (int i = 0; !stop; ++i) {
            user.wheel(host->at(kKnobX, kKnobY), i % 3 != 0);
            user.pause(20);
        }
    });
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(asked("ZKR_SECONDS", 3));
    for (int turn = 0; std::chrono::steady_clock::now() < end; ++turn) {
        turnMessageLoop();
        {
            const std::lock_guard<std::mutex> lock(hostsLock);
            host->dispatch(effEditIdle);
        }
        if (turn % 400 == 399) {
            host->closeEditor();
            host->openEditor();
        }
        std::this_thread::sleep_for(1ms);
    }
    stop = true;
    worker.join();
    audio.join();
    hands.join();

    // The left and right parameters of these control one switch; the last change wins, and projects
    // do not store which it was.
    for (const unsigned id : {kTrfoDsL, kTrfoDsR, kAmpDsbL, kAmpDsbR})
        host->automate(id, 0.0);
    // Host, editor, saved project and output must agree.
    const bool preamp = host->value(kQB11) >= 0.5f, secondary = host->value(k2x) >= 0.5f;
    EXPECT_TRUE(Host::soon(
        [&] { return host->window->childWidth() == 394 + 250 * (int(preamp) + int(secondary)); }));
    NativePlugin other(ZKR_PLUGIN);
    other.setBankChunk(host->bankChunk());
    for (VstInt32 id = 0; id < 58; ++id)
        EXPECT_EQ(other.parameter(id), host->parameter(id)) << id;
    const std::vector<Signal> heard = soundOf(*host), expected = soundOf(other);
    for (std::size_t c = 0; c < 2; ++c) {
        const auto [low, high] = std::minmax_element(expected[c].begin(), expected[c].end());
        for (std::size_t i = 0; i < heard[c].size(); ++i)
            ASSERT_NEAR(heard[c][i], expected[c][i], 1e-5f * (*high - *low)) << i;
    }
}

TEST_F(EditorOnScreen, LivesOnWhileOtherThreadsCreateInstancesAndAskForItsSize)
{
    host->closeEditor();
    std::thread([this] { host->toldSize(); }).join();
    host->openEditor();
    User::act(
        [](User&) {
            for (int i = 0; i < 50; ++i)
                NativePlugin(ZKR_PLUGIN).bankChunk();
        },
        [] { Host::idleFor(1); });
    host->automate(kBpsCh1, 1);
    Host::idleFor(200);
    const VSTGUI::Pixels before = host->picture();
    EXPECT_TRUE(Host::soon([&] { return difference(host->picture(), before).pixels > 0; }))
        << "the bypass light does not pulse";
}

TEST_F(EditorOnScreen, ClosesOnItsOwnThreadWhenAnotherThreadClosesIt)
{
    for (int round = 0; round < 10; ++round) {
        // The editor's thread keeps running its idle loop. The other thread stays until the window
        // is closed: to wait for its end would hide from the thread sanitizer what both use.
        User::act(
            [&](User&) {
                host->dispatch(effEditClose);
                std::this_thread::sleep_for(200ms);
            },
            [] { Host::idleFor(1); });
        EXPECT_TRUE(Host::soon([&] { return host->window->childWidth() == 0; }));
        host->window.reset();
        host->openEditor();
        host->automate(kQB11, round % 2 == 0);
        EXPECT_TRUE(
            Host::soon([&] { return host->window->childWidth() == (round % 2 == 0 ? 644 : 394); }));
    }
    // The instance is destroyed before its thread runs again; idle calls of another instance do the
    // rest.
    const Host other;
    const std::unique_ptr<HostWindow> window = std::move(host->window);
    std::thread([&] {
        host->dispatch(effEditClose);
        host.reset();
    }).join();
    Host::idleFor(300);
    EXPECT_EQ(window->childWidth(), 0);
}

}  // namespace
