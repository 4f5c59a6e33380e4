// The order of a run, and its table.
#include "Soak.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

std::atomic<bool> interrupted{false};

namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds kProgressEvery(10.0);
constexpr Seconds kSampleEvery(1.0);
constexpr Seconds kWarmUp(1.0);
constexpr double kLeastReload = 5.0, kMostReload = 60.0;  // seconds

}  // namespace

Soak::Soak(const SoakOptions& wanted)
    : options(wanted), shared(wanted), watchdog(shared), holdings(shared)
{
    makeSeats();
    audioThreads.resize(static_cast<std::size_t>(options.audioThreads));
    for (std::size_t i = 0; i < seats.size(); ++i) {
        players.push_back(std::make_unique<Player>(*seats[i], shared));
        audioThreads[i % audioThreads.size()].players.push_back(players.back().get());
    }
    for (AudioThread& audio : audioThreads)
        audio.whereabouts = &watchdog.add("an audio thread");
    userWhereabouts = &watchdog.add("the user's thread");
    user = std::make_unique<User>(seats, shared, *userWhereabouts);
}

Soak::~Soak()
{
    stopPlaying();
}

// Of every four instances two are twins.
void Soak::makeSeats()
{
    Dice dice(options.seed, 1);
    for (int left = options.instances; left > 0;) {
        const bool twins = left >= 2 && seats.size() % 3 == 0;
        seats.push_back(
            std::make_unique<Seat>(static_cast<int>(seats.size()), twins, shared, dice));
        left -= twins ? 2 : 1;
    }
}

void Soak::playAlone(AudioThread& audio)
{
    while (playing) {
        bool played = false;
        for (Player* const player : audio.players) {
            audio.whereabouts->now("play", player->seatNumber());
            played = player->play(audio.times) || played;
        }
        if (!played)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    audio.whereabouts->over = true;
}

void Soak::stopPlaying()
{
    playing = false;
    for (AudioThread& audio : audioThreads)
        if (audio.thread.joinable())
            audio.thread.join();
}

bool Soak::run()
{
    std::printf("%d instances on %zu seats, %d audio threads, editors %s, %.4g minutes, seed %u\n",
                options.instances, seats.size(), options.audioThreads,
                options.editors ? "on" : "off", options.minutes, options.seed);
    std::fflush(stdout);
    watchdog.begin();
    for (AudioThread& audio : audioThreads)
        audio.thread = std::thread([this, &audio] { playAlone(audio); });
    begun = Clock::now();
    soak();
    stopPlaying();
    user.reset();
    seats.clear();
    userWhereabouts->over = true;
    holdings.judgeGrowth();
    judgeTimes();
    report();
    return shared.findings.count() == 0;
}

void Soak::soak()
{
    // What anything takes for good at its first use, it takes now.
    loadHostsLibraries();
    while (Clock::now() - begun < kWarmUp && !mustEnd())
        user->turn();
    if (options.editors)
        user->tryOneEditor();
    reload();

    begun = Clock::now();
    const auto end = begun + Seconds(60.0 * options.minutes);
    const Seconds reloadEvery(std::clamp(6.0 * options.minutes, kLeastReload, kMostReload));
    auto nextReload = begun + reloadEvery;
    auto nextProgress = begun + kProgressEvery;
    auto nextSample = begun + kSampleEvery;
    while (Clock::now() < end && !mustEnd()) {
        user->turn();
        const auto now = Clock::now();
        if (now >= nextSample) {
            holdings.sample(minutes());
            nextSample += kSampleEvery;
        }
        if (now >= nextProgress) {
            progress();
            nextProgress += kProgressEvery;
        }
        if (now >= nextReload) {
            reload();
            nextReload = Clock::now() + reloadEvery;
        }
    }
    user->closeAll();
    holdings.atRest();
}

void Soak::reload()
{
    user->closeAll();
    holdings.atRest();
    user->openAll();
    shared.tally.add(Deed::Reload);
}

double Soak::minutes() const
{
    return Seconds(Clock::now() - begun).count() / 60.0;
}

void Soak::progress()
{
    const Tally& tally = shared.tally;
    std::printf("%6.2f min  %9lld blocks  %7lld parameters  %5lld presets  %5lld saves  %5lld loads"
                "  %4lld editors  %6.1f MiB\n",
                minutes(), tally.of(Deed::Block),
                tally.of(Deed::AutomationOfAudio) + tally.of(Deed::AutomationOfUser),
                tally.of(Deed::Preset), tally.of(Deed::Save),
                tally.of(Deed::Load) + tally.of(Deed::DamagedLoad), tally.of(Deed::EditorOpened),
                static_cast<double>(holdings.memoryNow()) / (1024.0 * 1024.0));
    std::fflush(stdout);
}

// Single blocks may be late for reasons outside the plug-in, but not one in a thousand.
void Soak::judgeTimes()
{
    constexpr long long kFew = 20, kOneIn = 1000;
    for (const AudioThread& audio : audioThreads)
        times.add(audio.times);
    if (kProcessorTimeIsExact && times.late() > kFew && times.late() * kOneIn > times.count())
        shared.findings.add("the end",
                            textOf("%lld of %lld blocks took longer than their real time "
                                   "and %.0f ms",
                                   times.late(), times.count(), 1e3 * kLate));
}

void Soak::report()
{
    std::printf("\nDone in %.2f minutes\n", minutes());
    for (std::size_t i = 0; i < kDeeds; ++i)
        std::printf("  %-40s %14lld\n", kDeedNames[i], shared.tally.of(static_cast<Deed>(i)));

    float loudest = 0.0f;
    for (const auto& player : players)
        loudest = std::max(loudest, player->loudest());
    std::printf("  %-40s %14.1f\n\n", "loudest sample", static_cast<double>(loudest));

    std::printf("A block's %s / its real time\n"
                "  %-12s %10s %9s %9s %9s %13s %10s\n",
                kProcessorTimeIsExact ? "processor time" : "time by the clock", "samples", "blocks",
                "median", "99.9 %", "longest", "longest/med.", "by clock");
    for (std::size_t i = 0; i < kBlockLengths.size(); ++i) {
        const ShareCounts& counts = times.of(i);
        if (counts.count() == 0)
            continue;
        const double median = counts.quantile(0.5);
        std::printf("  %-12s %10lld %9.4f %9.4f %9.3f %13.1f %10.3f\n", kBlockLengths[i].name,
                    counts.count(), median, counts.quantile(0.999), counts.longest(),
                    counts.longest() / median, counts.longestByTheClock());
    }
    std::printf("  %lld blocks took longer than their real time and %.0f ms\n", times.late(),
                1e3 * kLate);
    std::printf("\n%s\n", holdings.report().c_str());
    if (interrupted)
        std::puts("Ended by hand.");
    if (const int found = shared.findings.count())
        std::printf("%d FAILURES, seed %u\n", found, options.seed);
    else
        std::puts("Nothing was found.");
    std::fflush(stdout);
}
