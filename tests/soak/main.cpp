// zkrt46-soak: runs instances of the built plug-in as a host would for a given time, and checks
// their output and resources.
#include "tests/soak/ResourceWatch.h"
#include "tests/soak/User.h"
#include "tests/soak/Watchdog.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <thread>
#include <vector>

namespace {

constexpr int kBadInput = 2;

Run run;

// First SIGINT: finish regularly; second: exit at once.
void interrupt(int signal)
{
    std::signal(signal, SIG_DFL);
    run.interrupted = true;
}

class Soak {
public:
    ~Soak() { stopPlaying(); }

    void live()
    {
        // Printed and flushed first, so that the seed is known after a crash.
        std::printf("%d instances on %zu slots, %d audio threads, editors %s, %.4g minutes, "
                    "seed %u\n",
                    run.instances, user.slots.size(), run.audioThreads, run.editors ? "on" : "off",
                    run.minutes, run.seed);
        std::fflush(stdout);
        for (int i = 0; i < run.audioThreads; ++i)
            audioThreads.emplace_back([this, i] { play(static_cast<std::size_t>(i)); });
        soak();
        stopPlaying();
        resources.judgeGrowth();
        report();
    }

private:
    using Clock = std::chrono::steady_clock;

    // The watchdog's last entry is the user's thread.
    void play(std::size_t thread)
    {
        const auto step = static_cast<std::size_t>(run.audioThreads);
        while (playing) {
            bool played = false;
            for (std::size_t i = thread; i < user.slots.size(); i += step) {
                watchdog.watched[thread].now("play", static_cast<int>(i));
                played = user.slots[i]->play() || played;
            }
            if (!played)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    void stopPlaying()
    {
        playing = false;
        for (std::thread& thread : audioThreads)
            thread.join();
        audioThreads.clear();
    }

    void soak()
    {
        // Warm-up: one-time allocations happen before measuring.
        loadHostsLibraries();
        for (begun = Clock::now(); seconds() < 1.0 && !run.mustEnd();)
            user.turn();
        if (run.editors)
            user.tryOneEditor();
        reload();

        const double reloadEvery = std::clamp(6.0 * run.minutes, 5.0, 60.0);
        double nextReload = reloadEvery, nextProgress = 10.0, nextSample = 1.0;
        for (begun = Clock::now(); seconds() < 60.0 * run.minutes && !run.mustEnd();) {
            user.turn();
            if (seconds() >= nextSample) {
                resources.sample();
                nextSample += 1.0;
            }
            if (seconds() >= nextProgress) {
                progress();
                nextProgress += 10.0;
            }
            if (seconds() >= nextReload) {
                reload();
                nextReload = seconds() + reloadEvery;
            }
        }
        user.closeAll();
        resources.atRest();
    }

    void reload()
    {
        user.closeAll();
        resources.atRest();
        user.openAll();
    }

    double seconds() const { return std::chrono::duration<double>(Clock::now() - begun).count(); }

    void progress() const
    {
        long long blocks = 0;
        for (const auto& slot : user.slots)
            blocks += slot->blocks;
        std::printf("%6.2f min  %9lld blocks  %6.1f MiB\n", seconds() / 60.0, blocks,
                    resources.mebibytes());
        std::fflush(stdout);
    }

    void report() const
    {
        long long twinSamples = 0, silences = 0, blocks = 0;
        double loudest = 0.0, longest = 0.0;
        for (const auto& slot : user.slots) {
            twinSamples += slot->twinSamples;
            silences += slot->silences;
            blocks += slot->blocks;
            loudest = std::max(loudest, static_cast<double>(slot->loudest));
            longest = std::max(longest, slot->longestShare);
        }
        std::printf("\nDone in %.2f minutes\n", seconds() / 60.0);
        user.print();
        const std::pair<const char*, double> rows[]{
            {"blocks played", static_cast<double>(blocks)},
            {"samples in which twins were compared", static_cast<double>(twinSamples)},
            {"silences reached at the output", static_cast<double>(silences)},
            {"loudest sample", loudest},
            {"longest block / its real time", longest},
        };
        for (const auto& [what, value] : rows)
            std::printf("  %-40s %14.10g\n", what, value);
        resources.print();
        if (run.interrupted)
            std::puts("Interrupted.");
        if (run.failures > 0)
            std::printf("%d FAILURES, seed %u\n", run.failures.load(), run.seed);
        else
            std::puts("Nothing was found.");
    }

    ResourceWatch resources{run};
    Watchdog watchdog{run, run.audioThreads + 1};
    User user{run, watchdog.watched.back()};
    std::atomic<bool> playing{true};
    std::vector<std::thread> audioThreads;
    Clock::time_point begun;
};

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app("Runs instances of the plug-in as a host would for a given time, and checks them. "
                 "It uses the settings of the user who runs it; scripts/soak.sh gives it settings "
                 "of its own.",
                 "zkrt46-soak");
    app.allow_windows_style_options(false);  // a path may begin with a slash
    app.option_defaults()->always_capture_default();
    app.add_option("library", run.library, "The built plug-in")->required();
    app.add_option("--instances", run.instances, "Number of instances")->check(CLI::Range(1, 500));
    app.add_option("--minutes", run.minutes, "Duration of the run")->check(CLI::Range(0.01, 1e6));
    app.add_option("--seed", run.seed,
                   "Repeats the actions of an earlier run, but not the timing of its threads");
    app.add_option("--blocks", run.blockSizes, "The block sizes to choose from, in samples")
        ->delimiter(',')
        ->check(CLI::Range(1, 65536));
    app.add_option("--threads", run.audioThreads, "Audio threads")->check(CLI::Range(1, 64));
    app.add_flag("--editor", run.editors, "Also open editors in windows");
    app.add_option("--growth", run.growthMiB, "Allowed growth in MiB after the first third");
    app.add_option("--hang", run.hangSeconds, "Seconds without progress after which a thread hangs")
        ->check(CLI::Range(1.0, 1e6));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kBadInput;
    }
    run.audioThreads = std::min(run.audioThreads, run.instances);

    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, interrupt);
    try {
        Soak().live();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zkrt46-soak: %s\n", error.what());
        return kBadInput;
    }
    return run.failures > 0 ? 1 : 0;
}
