// An open editor while other threads set states and parameters, process, and end instances. Run
// under the thread sanitizer as well.
#include "Noise.h"
#include "Times.h"
#include "BankFormat.h"
#include "EditorOnScreen.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <random>
#include <thread>

namespace {

using namespace std::chrono_literals;

// How long a host's life is tried, in seconds: ZKR_SECONDS, or 3.
int secondsToTry()
{
    const char* const asked = std::getenv("ZKR_SECONDS");
    return asked ? std::atoi(asked) : 3;
}

VstIntPtr answerVersion(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float)
{
    return opcode == audioMasterVersion ? 2400 : 0;
}

// Ends the process when one of the threads that report here has stood still for half a minute.
class Watchdog {
public:
    Watchdog()
        : thread([this] {
              int seen = -1, quiet = 0;
              for (; !done; std::this_thread::sleep_for(100ms)) {
                  const int now = std::min(first.load(), second.load());
                  quiet = now == seen ? quiet + 1 : 0;
                  seen = now;
                  if (quiet == 300) {
                      std::fprintf(stderr, "a thread hangs\n");
                      std::abort();
                  }
              }
          })
    {
    }
    ~Watchdog()
    {
        done = true;
        thread.join();
    }

    std::atomic<int> first{0}, second{0};  // turns of the two threads

private:
    std::atomic<bool> done{false};
    std::thread thread;
};

struct Instance {
    explicit Instance(AEffect* started) : effect(started) { }

    VstIntPtr call(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr)
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, 0.0f);
    }
    std::vector<char> state()
    {
        void* data = nullptr;
        const auto size = static_cast<std::size_t>(call(effGetChunk, 0, 0, &data));
        return {static_cast<char*>(data), static_cast<char*>(data) + size};
    }
    void load(std::vector<char> state)
    {
        call(effSetChunk, 0, static_cast<VstIntPtr>(state.size()), state.data());
    }
    // The end of a stretch of noise, after so much silence that nothing older is heard.
    std::vector<float> sound()
    {
        std::vector<float> in(44100 * 4), left(in.size()), right(in.size());
        const std::vector<float> played = noise(22050, 5);
        std::copy(played.begin(), played.end(), in.end() - 22050);
        float* inputs[] = {in.data(), in.data()};
        float* outputs[] = {left.data(), right.data()};
        effect->processReplacing(effect, inputs, outputs, static_cast<VstInt32>(in.size()));
        left.insert(left.end(), right.begin(), right.end());
        return left;
    }

    AEffect* effect;
};

struct Threads : EditorOnScreen {
    Threads() : library(ZKR_PLUGIN)
    {
        entry = reinterpret_cast<Entry>(library.find("VSTPluginMain"));
    }
    AEffect* newEffect() const { return entry(answerVersion); }

    using Entry = AEffect* (*)(audioMasterCallback);
    host::SharedLibrary library;
    Entry entry = nullptr;
};

TEST_F(Threads, TheEditorFollowsWhatAnotherThreadSetsAndNobodyHangs)
{
    Instance plugin(host->effect);
    const std::vector<char> narrow = plugin.state();
    host->automate(kQB11, 1);
    host->automate(k2x, 1);
    const std::vector<char> wide = plugin.state();
    plugin.call(effMainsChanged, 0, 1);

    Watchdog watchdog;
    // As hosts hold it around all that they ask of a plug-in, idle calls included.
    std::mutex hostsLock;
    std::atomic<bool> stop{false};
    std::thread worker([&] {
        std::mt19937 random(1);
        // The pause lets the interface thread have the lock.
        for (; !stop; std::this_thread::sleep_for(1ms)) {
            const std::lock_guard<std::mutex> lock(hostsLock);
            plugin.load(random() % 2 ? narrow : wide);
            EXPECT_GT(plugin.state().size(), 48000u);
            for (int i = 0; i < 20; ++i)
                host->automate(static_cast<unsigned>(random() % 58),
                               static_cast<double>(random() % 101) / 100.0);
            char text[64] = "Renamed";
            plugin.call(effGetParamDisplay, static_cast<VstInt32>(random() % 58), 0, text);
            plugin.call(effSetProgramName, 0, 0, text);
            ++watchdog.first;
        }
    });
    std::thread audio([&] {
        std::vector<float> in(64), out(128);
        float* inputs[] = {in.data(), in.data()};
        float* outputs[] = {out.data(), out.data() + 64};
        while (!stop) {
            plugin.effect->processReplacing(plugin.effect, inputs, outputs, 64);
            std::this_thread::sleep_for(200us);
        }
    });
    std::thread hands([&] {
        User user;
        for (int i = 0; !stop; ++i) {
            user.wheel(host->at(42 + 62.5, 294), i % 3 != 0);
            user.pause(20);
        }
    });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(secondsToTry());
    for (int turn = 0; std::chrono::steady_clock::now() < end; ++turn) {
        turnMessageLoop();
        {
            const std::lock_guard<std::mutex> lock(hostsLock);
            plugin.call(effEditIdle);
        }
        if (turn % 400 == 399) {
            host->closeEditor();
            host->openEditor();
        }
        ++watchdog.second;
        std::this_thread::sleep_for(1ms);
    }
    stop = true;
    worker.join();
    audio.join();
    hands.join();

    // Left and right of these work one switch, and the last to arrive wins, which no project tells.
    for (const unsigned id : {kTrfoDsL, kTrfoDsR, kAmpDsbL, kAmpDsbR})
        host->automate(id, 0.0);
    // All agree in the end: host, editor, what a project would keep, and what is heard.
    const bool preamp = host->value(kQB11) >= 0.5f, secondary = host->value(k2x) >= 0.5f;
    EXPECT_TRUE(Host::soon(
        [&] { return host->window->childWidth() == 394 + 250 * (int(preamp) + int(secondary)); }));
    const std::vector<char> project = plugin.state();
    Instance other(newEffect());
    other.load(project);
    for (unsigned id = 0; id < 58; ++id)
        EXPECT_EQ(other.effect->getParameter(other.effect, static_cast<VstInt32>(id)),
                  host->value(id))
            << id;
    plugin.sound();
    other.sound();
    const std::vector<float> heard = plugin.sound(), expected = other.sound();
    float loudest = 0.0f, furthest = 0.0f;
    for (std::size_t i = 0; i < heard.size(); ++i) {
        loudest = std::max(loudest, std::abs(expected[i]));
        furthest = std::max(furthest, std::abs(heard[i] - expected[i]));
    }
    EXPECT_LE(furthest, 1e-5f * loudest);
    other.call(effClose);
}

TEST_F(Threads, AnEditorThatAnotherThreadClosesEndsOnItsOwn)
{
    // The editor's thread goes on with what it has to do.
    const auto elsewhere = [](const std::function<void()>& call) {
        std::atomic<bool> done{false};
        std::thread other([&] {
            call();
            done = true;
        });
        while (!done)
            Host::idleFor(1);
        other.join();
    };
    for (int round = 0; round < 10; ++round) {
        elsewhere([&] { Instance(host->effect).call(effEditClose); });
        EXPECT_TRUE(Host::soon([&] { return host->window->childWidth() == 0; }));
        host->window.reset();
        host->openEditor();
        host->automate(kQB11, round % 2 == 0);
        EXPECT_TRUE(
            Host::soon([&] { return host->window->childWidth() == (round % 2 == 0 ? 644 : 394); }));
    }
    // One that is gone altogether before its thread has a turn.
    std::thread([&] {
        Instance(host->effect).call(effEditClose);
        Instance(host->effect).call(effClose);
    }).join();
    host->effect = newEffect();
    host->effect->user = host.get();
    Host::idleFor(300);
    EXPECT_EQ(host->window->childWidth(), 0);
}

TEST_F(Threads, InstancesEndOnAnotherThreadWhileTheirTimersTick)
{
    constexpr int kAtOnce = 20;
    for (int done = 0; done < std::max(times() / 10, kAtOnce); done += kAtOnce) {
        std::vector<AEffect*> effects;
        for (int i = 0; i < kAtOnce; ++i)
            effects.push_back(newEffect());
        // Ticks come every 50 ms.
        std::atomic<bool> closed{false};
        std::thread closer([&] {
            for (AEffect* const effect : effects) {
                effect->setParameter(effect, kLGainL, 0.75f);
                Instance(effect).call(effClose);
                std::this_thread::sleep_for(4ms);
            }
            closed = true;
        });
        while (!closed)
            Host::idleFor(5);
        closer.join();
    }
    Host::idleFor(120);
}

}  // namespace
