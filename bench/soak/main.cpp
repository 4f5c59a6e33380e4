// zkrt46-soak: lets instances of the built plug-in live for a while as they would in a host, and
// watches them.
#include "Soak.h"

#include "HostError.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <random>

namespace {

constexpr int kBadInput = 2;

// The first wish to end is taken in order, the second one at once.
void interrupt(int signal)
{
    std::signal(signal, SIG_DFL);
    interrupted = true;
}

std::uint32_t seedOfCrash = 0;

void tellCrash(int signal)
{
    std::signal(signal, SIG_DFL);
    std::fprintf(stderr, "FAILURE seed %u: the process crashes with signal %d\n", seedOfCrash,
                 signal);
    std::raise(signal);
}

void handleSignals(std::uint32_t seed)
{
    seedOfCrash = seed;
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, interrupt);
    // Sanitizers tell crashes better themselves.
    if (!kSanitized)
        for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
            std::signal(signal, tellCrash);
}

}  // namespace

int main(int argc, char** argv)
{
    SoakOptions options;
    options.seed = std::random_device{}();
    CLI::App app("Lets instances of the plug-in live as in a host, for as long as wanted, and "
                 "watches them. It works with the settings of whoever runs it; scripts/soak.sh "
                 "gives it settings of its own.",
                 "zkrt46-soak");
    app.allow_windows_style_options(false);  // a path may begin with a stroke
    app.add_option("library", options.library, "The built plug-in")->required();
    app.add_option("--instances", options.instances, "How many live at once")
        ->capture_default_str()
        ->check(CLI::Range(1, 500));
    app.add_option("--minutes", options.minutes, "For how long")
        ->capture_default_str()
        ->check(CLI::Range(0.01, 1e6));
    app.add_option("--seed", options.seed,
                   "Repeats the deeds of an earlier run, though not how its threads met");
    app.add_option("--blocks", options.blockSizes, "The block sizes to choose from, in samples")
        ->delimiter(',')
        ->capture_default_str()
        ->check(CLI::Range(1, 65536));
    app.add_option("--threads", options.audioThreads, "Audio threads")
        ->capture_default_str()
        ->check(CLI::Range(1, 64));
    app.add_flag("--editor", options.editors, "Open editors, too, in windows");
    app.add_option("--growth", options.growthMiB,
                   "MiB that the process may gain after its first third")
        ->capture_default_str();
    app.add_option("--hang", options.hangSeconds, "Seconds that a thread may stand still")
        ->capture_default_str()
        ->check(CLI::Range(1.0, 1e6));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kBadInput;
    }
    options.audioThreads = std::min(options.audioThreads, options.instances);

    handleSignals(options.seed);
    try {
        return Soak(options).run() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zkrt46-soak: %s\n", error.what());
        return kBadInput;
    }
}
