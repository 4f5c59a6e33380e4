// Single blocks: one in which all parameters change, and the first one after activation.
#include "bench/Benches.h"
#include "bench/Chains.h"
#include "bench/Measurement.h"

#include <algorithm>
#include <iterator>
#include <random>

namespace {

constexpr int kBlock = 512;
constexpr double kRate = 48000.0;  // Hz
constexpr int kEvents = 24;
constexpr int kBlocksAfter = 20;  // each change or activation is followed by 213 ms

// A change of all parameters: knobs move, both polarities flip, and switches get the value that
// they have, so that every stage stays on.
std::vector<Setting> changesOfAll(int event)
{
    static constexpr unsigned kTurned[] = {
        kDriveL,  kDriveR,  kHpfL,    kHpfR,    kOutputL, kOutputR, kLFreqL,  kLFreqR,
        kLGainL,  kLGainR,  kMFreqL,  kMFreqR,  kMGainL,  kMGainR,  kHFreqL,  kHFreqR,
        kHGainL,  kHGainR,  kLFreqL2, kLFreqR2, kLGainL2, kLGainR2, kMFreqL2, kMFreqR2,
        kMGainL2, kMGainR2, kHFreqL2, kHFreqR2, kHGainL2, kHGainR2};
    static constexpr unsigned kOn[] = {kPower, kQB11,  k2x,     k28kL,  k28kR,
                                       kProcL, kProcR, kProcL2, kProcR2};
    static constexpr unsigned kFlipped[] = {kPhaseL, kPhaseR};
    const auto isIn = [](const auto& list, unsigned id) {
        return std::find(std::begin(list), std::end(list), id) != std::end(list);
    };
    std::mt19937 random(static_cast<unsigned>(event));
    std::vector<Setting> settings;
    for (unsigned id = 0; id < kPresetParamCount; ++id) {
        double value = id == kChannel ? 0.5 : 0.0;
        if (isIn(kTurned, id))
            value = 0.2 + 0.7 * static_cast<double>(random()) / 4294967296.0;
        else if (isIn(kOn, id))
            value = 1.0;
        else if (isIn(kFlipped, id))
            value = event % 2 == 0 ? 1.0 : 0.0;
        settings.push_back({id, value});
    }
    return settings;
}

struct Contestant {
    ProcessingForm form;
    std::unique_ptr<Player> player;
    ShortestTimes changing, gliding, first, settled;
    Hash hash;
};

double playBlock(Contestant& contestant, const StereoSignal& music, int number)
{
    contestant.player->load(music, number * kBlock, kBlock);
    const double time = nanosecondsOf([&] { contestant.player->play(kBlock); });
    for (const std::vector<float>& channel : contestant.player->output())
        contestant.hash.add(channel.data(), kBlock);
    return time;
}

// One change of all parameters, and blocks until every glide has ended. A settled block comes
// first, so that the caches hold this contestant's code, as they do when settled blocks are timed.
void changeAll(Contestant& contestant, int event, const StereoSignal& music)
{
    const auto piece = static_cast<std::size_t>(event);
    playBlock(contestant, music, kBlocksAfter - 1);
    contestant.player->change(changesOfAll(event));
    contestant.changing.record(piece, playBlock(contestant, music, 0));
    contestant.gliding.record(piece, playBlock(contestant, music, 1));
    for (int block = 2; block < kBlocksAfter; ++block)
        playBlock(contestant, music, block);
}

// Activation ends every glide, so the blocks after the first are settled.
void activate(Contestant& contestant, const StereoSignal& music)
{
    playBlock(contestant, music, kBlocksAfter - 1);
    contestant.player->activate();
    contestant.first.record(0, playBlock(contestant, music, 0));
    for (int block = 1; block < kBlocksAfter; ++block)
        contestant.settled.record(static_cast<std::size_t>(block - 1),
                                  playBlock(contestant, music, block));
}

}  // namespace

void benchTransients(const Selection& selection, Report& report)
{
    const char* const name = "everything on";
    if (!selection.wantsChain(name) || !selection.wantsRate(kRate) || !selection.wantsBlock(kBlock))
        return;
    const StereoSignal music = musicLikeNoise(kBlocksAfter * kBlock);
    std::vector<Contestant> contestants;
    for (const ProcessingForm form : ProcessingForms())
        contestants.push_back({form, nullptr, {}, {}, {}, {}, {}});

    for (int turn = 0; turn < selection.repetitions(); ++turn) {
        for (Contestant& contestant : contestants)
            contestant.player = std::make_unique<Player>(contestant.form, kRate, everythingOn());
        for (int event = 0; event < kEvents; ++event)
            for (Contestant& contestant : contestants)
                changeAll(contestant, event, music);
        for (Contestant& contestant : contestants)
            activate(contestant, music);
    }

    report.title("Everything on, 48 kHz: time of one block of 512 over that of a settled block.");
    struct Line {
        const char* name;
        ShortestTimes Contestant::*times;
    };
    for (const Line& line : {Line{"all 58 parameters changing, worst", &Contestant::changing},
                             Line{"the block after, gains gliding, worst", &Contestant::gliding},
                             Line{"first block after setActive", &Contestant::first}}) {
        std::vector<FormResult> ratios;
        for (const Contestant& contestant : contestants)
            ratios.push_back({contestant.form,
                              (contestant.*line.times).longest() / contestant.settled.mean(),
                              contestant.hash.value()});
        report.addRatio(line.name, ratios);
    }
}
