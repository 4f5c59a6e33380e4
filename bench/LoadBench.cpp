// What the cost depends on beside the chain: the loudness of the signal, and the number of
// instances that take turns.
#include "bench/Benches.h"
#include "bench/Chains.h"
#include "bench/Measurement.h"

#include <string>

namespace {

constexpr int kBlock = 512;
constexpr double kRate = 48000.0;  // Hz
constexpr int kBlocks = 8;
constexpr int kSettlingTurns = 20;  // 1.7 s, after which no gain glides

struct Material {
    const char* name;
    StereoSignal signal;
};

std::vector<Material> materials()
{
    constexpr int kFrames = kBlocks * kBlock;
    return {{"0.01 RMS", musicLikeNoise(kFrames, 0.01)},
            {"0.1 RMS", musicLikeNoise(kFrames, 0.1)},
            {"0.2 RMS", musicLikeNoise(kFrames, 0.2)},
            {"0.4 RMS", musicLikeNoise(kFrames, 0.4)},
            {"square", squareWave(kFrames)},
            {"silence", silence(kFrames)},
            {"1e-40", tinyNoise(kFrames)}};
}

// Plays block number `number` of the signal; returns the time in nanoseconds.
double playBlock(Player& player, const StereoSignal& signal, int number)
{
    player.load(signal, number % kBlocks * kBlock, kBlock);
    return nanosecondsOf([&] { player.play(kBlock); });
}

struct Contestant {
    ProcessingForm form;
    std::unique_ptr<Player> player;
    ShortestTimes times;
    Hash hash;
};

}  // namespace

void benchLoudness(const Selection& selection, Report& report)
{
    if (!selection.wantsChain(kDriven) || !selection.wantsRate(kRate)
        || !selection.wantsBlock(kBlock))
        return;
    report.title("Everything on, drive +6 dB, band gains +8 dB: ns per stereo frame by loudness.");
    const std::vector<Material> all = materials();
    std::vector<std::vector<Contestant>> contestants(all.size());
    for (std::vector<Contestant>& those : contestants)
        for (const ProcessingForm form : ProcessingForms())
            those.push_back({form, std::make_unique<Player>(form, kRate, drivenChain()), {}, {}});
    // The signals take turns as well, so that their times can be compared.
    for (int turn = 0; turn < 10 * selection.repetitions(); ++turn)
        for (std::size_t m = 0; m < all.size(); ++m)
            for (Contestant& contestant : contestants[m])
                for (int i = 0; i < kBlocks; ++i) {
                    const double time = playBlock(*contestant.player, all[m].signal, i);
                    if (turn > kSettlingTurns)
                        contestant.times.record(static_cast<std::size_t>(i), time);
                    for (const std::vector<float>& channel : contestant.player->output())
                        contestant.hash.add(channel.data(), kBlock);
                }
    for (std::size_t m = 0; m < all.size(); ++m) {
        Case row{"loudness", kDriven, all[m].name, kRate, kBlock, {}};
        for (const Contestant& contestant : contestants[m])
            row.results.push_back(
                {contestant.form, contestant.times.mean() / kBlock, contestant.hash.value()});
        report.add(row);
    }
    for (std::size_t m = 1; m < all.size(); ++m) {
        std::vector<FormResult> ratios;
        for (std::size_t f = 0; f < contestants[m].size(); ++f)
            ratios.push_back({contestants[m][f].form,
                              contestants[m][f].times.mean() / contestants[0][f].times.mean(), 0});
        report.addRatio(std::string(all[m].name) + " over " + all[0].name, ratios);
    }
}

void benchInstances(const Selection& selection, Report& report)
{
    const char* const name = "default";
    if (!selection.wantsChain(name) || !selection.wantsRate(kRate) || !selection.wantsBlock(kBlock))
        return;
    const ProcessingForm form = ProcessingForms().best();
    const StereoSignal music = musicLikeNoise(kBlocks * kBlock);
    report.title("Instances of the default chain that take turns, block by block; "
                 "ns per stereo frame of each.");
    for (const int count : {1, 10, 50, 100, 200}) {
        std::vector<std::unique_ptr<Player>> players;
        for (int i = 0; i < count; ++i)
            players.push_back(std::make_unique<Player>(form, kRate, std::vector<Setting>{}));
        ShortestTimes times;
        Hash hash;
        for (int turn = 0; turn < 20 * selection.repetitions(); ++turn)
            for (std::size_t i = 0; i < players.size(); ++i) {
                const double time = playBlock(*players[i], music, turn);
                if (turn > 1)
                    times.record(i, time);
                hash.add(players[i]->output()[0].data(), kBlock);
            }
        report.add({"instances",
                    std::to_string(count),
                    "music",
                    kRate,
                    kBlock,
                    {{form, times.mean() / kBlock, hash.value()}}});
    }
}
