// Single stages. A stage processes the stereo sub-blocks of 16 host frames of a block in place, as
// in PitchNamesProcessor; to add one, write its factory and add a line to kStages.
#include "bench/Benches.h"
#include "bench/Measurement.h"
#include "dsp/lanes/StripRun.h"
#include "shell/oversampling/Oversampling.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <random>

namespace {

constexpr int kFrames = 16;
constexpr double kStripRate = 192000.0;  // Hz, four times 48 kHz
constexpr int kSubBlocks = 32;           // in one block
constexpr int kBlocks = 8;               // in one measurement

// A block of 512 host frames: sub-block i is in [i].
struct Block {
    double left[kSubBlocks][64], right[kSubBlocks][64];
};

// Processes a block in place, with `count` samples in each sub-block of a channel.
using RunStage = std::function<void(Block& block, int count)>;

template <int kMode>
RunStage up(ProcessingForm form)
{
    const auto stage = std::make_shared<Oversampling>(form);
    return [stage](Block& block, int count) {
        for (int i = 0; i < kSubBlocks; ++i)
            stage->raiseRate(kMode, {block.left[i], block.right[i]}, count);
    };
}

template <int kMode>
RunStage down(ProcessingForm form)
{
    const auto stage = std::make_shared<Oversampling>(form);
    return [stage](Block& block, int count) {
        for (int i = 0; i < kSubBlocks; ++i)
            stage->lowerRate(kMode, {block.left[i], block.right[i]}, count);
    };
}

struct Strips {
    StripProcessorQB9 preamp;
    StripProcessorT46 first, second;
};

void switchBandsOn(StripProcessorT46& strip)
{
    strip.setLowFrequency(0.6);
    strip.setLowGain(0.7);
    strip.setMidFrequency(0.5);
    strip.setMidGain(0.35);
    strip.setHighFrequency(0.5);
    strip.setHighGain(0.65);
}

void switchStagesOn(StripProcessorQB9& preamp)
{
    preamp.setDrive(0.6);
    preamp.setHpf(0.5);
    preamp.set28k(1.0);
    preamp.setOutput(0.45);
}

enum class InCircuit { OneStrip, OneStripWithBands, Preamp, Everything };

template <InCircuit kInCircuit>
RunStage strips(ProcessingForm form)
{
    constexpr bool kHasStrip = kInCircuit != InCircuit::Preamp;
    constexpr bool kHasPreamp =
        kInCircuit == InCircuit::Preamp || kInCircuit == InCircuit::Everything;
    const auto pair = std::make_shared<std::array<Strips, 2>>();
    std::array<StripChain, 2> chains{};
    for (std::size_t c = 0; c < 2; ++c) {
        Strips& one = (*pair)[c];
        one.preamp.setSampleRate(kStripRate);
        one.first.setSampleRate(kStripRate);
        one.second.setSampleRate(kStripRate);
        if (kInCircuit != InCircuit::OneStrip) {
            switchStagesOn(one.preamp);
            switchBandsOn(one.first);
            switchBandsOn(one.second);
        }
        if (kInCircuit == InCircuit::Everything) {
            one.first.setOutputTransformerDisable(1.0);
            one.second.setInputTransformerDisable(1.0);
        }
        chains[c] = {kHasPreamp ? &one.preamp : nullptr, kHasStrip ? &one.first : nullptr,
                     kInCircuit == InCircuit::Everything ? &one.second : nullptr};
    }
    // What comes out is an earlier sub-block, in place of the one that went in.
    return [pair, chains, form](Block& block, int count) {
        StripRun run(form, chains[0], &chains[1]);
        int finished = 0;
        for (int i = 0; i < kSubBlocks; ++i) {
            double left[64], right[64];
            std::copy_n(block.left[i], count, left);
            std::copy_n(block.right[i], count, right);
            if (run.push(left, right, count)) {
                std::copy_n(left, count, block.left[finished]);
                std::copy_n(right, count, block.right[finished++]);
            }
        }
        while (finished < kSubBlocks && run.flush(block.left[finished], block.right[finished]))
            ++finished;
    };
}

struct Stage {
    const char* name;
    double hostRate;  // Hz
    int in, out;      // samples of each channel in a sub-block
    RunStage (*make)(ProcessingForm form);
};

// clang-format off
const Stage kStages[] = {
    //  name                 host rate   in  out
    {"up 4 times",            48000.0,   16,  64,  up<2>},
    {"down from 4 times",     48000.0,   64,  16,  down<2>},
    {"up twice",              96000.0,   16,  32,  up<1>},
    {"down from twice",       96000.0,   32,  16,  down<1>},
    {"strip pair",            48000.0,   64,  64,  strips<InCircuit::OneStrip>},
    {"... three bands",       48000.0,   64,  64,  strips<InCircuit::OneStripWithBands>},
    {"pre-amplifier pair",    48000.0,   64,  64,  strips<InCircuit::Preamp>},
    {"all strips",            48000.0,   64,  64,  strips<InCircuit::Everything>},
};
// clang-format on

struct Contestant {
    ProcessingForm form;
    RunStage run;
    ShortestTimes times;
};

class Input {
public:
    Input()
    {
        std::mt19937 random(16);
        for (Block& block : blocks)
            for (auto* channel : {&block.left, &block.right})
                for (auto& subBlock : *channel)
                    for (double& x : subBlock)  // -0.25 to 0.25
                        x = static_cast<double>(random()) / 8589934592.0 - 0.25;
    }
    const Block& block(int number) const { return blocks[static_cast<std::size_t>(number)]; }

private:
    std::array<Block, kBlocks> blocks;
};

// Processes the whole input; `sink` gets every block of output.
template <typename Sink>
void play(const Stage& stage, const RunStage& run, const Input& input, Sink sink)
{
    for (int i = 0; i < kBlocks; ++i) {
        Block block = input.block(i);
        run(block, stage.in);
        sink(block);
    }
}

std::uint64_t hashOf(const Stage& stage, const RunStage& run, const Input& input)
{
    Hash hash;
    play(stage, run, input, [&](const Block& block) {
        for (int i = 0; i < kSubBlocks; ++i) {
            hash.add(block.left[i], stage.out);
            hash.add(block.right[i], stage.out);
        }
    });
    return hash.value();
}

}  // namespace

void benchStages(const Selection& selection, Report& report)
{
    report.title("Stages: ns per stereo frame at the host's rate; /form is plain over that form.");
    const auto input = std::make_unique<Input>();
    for (const Stage& stage : kStages) {
        if (selection.rate > 0.0 && !selection.wantsRate(stage.hostRate))
            continue;
        Case row{"stage", stage.name, "noise", stage.hostRate, kFrames, {}};
        std::vector<Contestant> contestants;
        for (const ProcessingForm form : ProcessingForms()) {
            contestants.push_back({form, stage.make(form), {}});
            row.results.push_back({form, 0.0, hashOf(stage, contestants.back().run, *input)});
        }
        for (int turn = 0; turn < 20 * selection.repetitions(); ++turn)
            for (Contestant& contestant : contestants)
                contestant.times.record(0, nanosecondsOf([&] {
                                            play(stage, contestant.run, *input,
                                                 [](const Block&) {});
                                        }));
        for (std::size_t i = 0; i < contestants.size(); ++i)
            row.results[i].value = contestants[i].times.mean() / (kBlocks * kSubBlocks * kFrames);
        report.add(row);
    }
}
