// Whole chains through the processor, at several rates and block lengths.
#include "bench/Benches.h"
#include "bench/Chains.h"
#include "bench/Measurement.h"

#include <algorithm>
#include <map>

namespace {

constexpr int kChunk = 512;          // frames in one measurement, if the block is not longer
constexpr int kSettling = 2 * 4096;  // frames
constexpr int kMusic = 4 * 4096;
constexpr int kSilent = 32 * 4096;  // long enough for every filter to decay
constexpr int kTiny = 4 * 4096;

struct Section {
    const char* name;
    StereoSignal signal;
    bool timed;

    int frames() const { return static_cast<int>(signal[0].size()); }
};

std::vector<Section> sections()
{
    return {{"settling", musicLikeNoise(kSettling), false},
            {"music", musicLikeNoise(kMusic), true},
            {"silence", silence(kSilent), true},
            {"1e-40", tinyNoise(kTiny), true}};
}

// The measurements of one form in one section.
struct Score {
    ProcessingForm form;
    ShortestTimes times;
    Hash hash;
};
using Scores = std::vector<std::vector<Score>>;  // [section][form]

// Every form processes all sections from the start; the forms take turns chunk by chunk.
Scores play(const Chain& chain, double rate, int block, int repetitions,
            const std::vector<Section>& program)
{
    std::vector<Score> fresh;
    for (const ProcessingForm form : ProcessingForms())
        fresh.push_back({form, {}, {}});
    Scores scores(program.size(), fresh);
    const int chunkFrames = std::max(kChunk, block);
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        std::vector<std::unique_ptr<Player>> players;
        for (const Score& score : fresh)
            players.push_back(std::make_unique<Player>(score.form, rate, chain.settings));
        for (std::size_t s = 0; s < program.size(); ++s)
            for (int chunk = 0; chunk < program[s].frames() / chunkFrames; ++chunk)
                for (std::size_t f = 0; f < players.size(); ++f) {
                    Player& player = *players[f];
                    player.load(program[s].signal, chunk * chunkFrames, chunkFrames);
                    const double time = nanosecondsOf([&] { player.play(block); });
                    scores[s][f].times.record(static_cast<std::size_t>(chunk), time);
                    if (repetition == 0)
                        for (const std::vector<float>& channel : player.output())
                            scores[s][f].hash.add(channel.data(), chunkFrames);
                }
    }
    return scores;
}

// By section: the largest ratio of its slowest chunk to the slowest chunk of music.
using Slowdowns = std::map<std::string, std::vector<FormResult>>;

void collect(Slowdowns& slowdowns, const std::string& name, const std::vector<Score>& section,
             const std::vector<Score>& music)
{
    std::vector<FormResult>& worst = slowdowns[name];
    for (std::size_t f = 0; f < section.size(); ++f) {
        const double ratio = section[f].times.longest() / music[f].times.longest();
        if (worst.size() <= f)
            worst.push_back({section[f].form, ratio, 0});
        worst[f].value = std::max(worst[f].value, ratio);
    }
}

}  // namespace

void benchChains(const Selection& selection, Report& report)
{
    if (selection.chain == "stages")
        return;
    report.title("Chains: ns per stereo frame at the host's rate; /form is plain over that form.");
    const std::vector<Section> program = sections();
    Slowdowns slowdowns;
    for (const Chain& chain : allChains())
        for (const double rate : {44100.0, 48000.0, 96000.0, 192000.0})
            for (const int block : {64, 512, 4096}) {
                if (!selection.wantsChain(chain.name) || !selection.wantsRate(rate)
                    || !selection.wantsBlock(block))
                    continue;
                const Scores scores = play(chain, rate, block, selection.repetitions(), program);
                for (std::size_t s = 0; s < program.size(); ++s) {
                    if (!program[s].timed)
                        continue;
                    Case row{"chain", chain.name, program[s].name, rate, block, {}};
                    for (const Score& score : scores[s])
                        row.results.push_back({score.form,
                                               score.times.mean() / std::max(kChunk, block),
                                               score.hash.value()});
                    report.add(row);
                    if (s > 1)
                        collect(slowdowns, std::string(chain.name) + ": " + program[s].name,
                                scores[s], scores[1]);
                }
            }
    report.title(
        "Slowest stretch of 512 frames over the slowest of music, worst of the above (sensitive\n"
        "to other processes):");
    for (const auto& [name, ratios] : slowdowns)
        report.addRatio(name, ratios);
}
