// The whole chain against the expected samples of renders.txt: through the processor in every form,
// and through the built library.
#include "tests/renders/Renders.h"
#include "tests/shell/ProcessorProbe.h"
#include "tests/support/Blocks.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using probe::Processor;
using Pointers = std::vector<float*>;

// Far above the differences between mathematical libraries, far below the effect of any fault.
constexpr double kTolerance = 1e-6;  // relative to the largest sample, or to the sum

struct Player {
    std::function<void(unsigned id, float value)> set;
    std::function<void(Pointers in, Pointers out, int length)> process;
};

std::vector<Signal> play(const Render& render, const Player& player,
                         const std::map<std::string, unsigned>& ids)
{
    const auto frames = static_cast<std::size_t>(render.frames);
    std::vector<Signal> in(static_cast<std::size_t>(render.in), Signal(frames));
    std::vector<Signal> out(static_cast<std::size_t>(render.out), Signal(frames));
    unsigned s = render.seed;
    for (std::size_t i = 0; i < frames; ++i)
        for (Signal& channel : in) {
            s = s * 1664525u + 1013904223u;
            channel[i] = static_cast<float>(((s >> 8) / 16777216.0 * 2.0 - 1.0) * render.amplitude);
        }
    auto change = render.changes.begin();
    for (int block = 0, done = 0; done < render.frames; ++block, done += render.block) {
        for (; change != render.changes.end() && change->block == block; ++change)
            player.set(ids.at(change->title), change->value);
        Pointers inputs, outputs;
        for (Signal& channel : in)
            inputs.push_back(channel.data() + done);
        for (Signal& channel : out)
            outputs.push_back(channel.data() + done);
        player.process(inputs, outputs, std::min(render.block, render.frames - done));
    }
    EXPECT_EQ(change, render.changes.end());
    return out;
}

// Reports the first wrong sample, or the sums if only samples that are not listed are wrong.
void expectSound(const Render& render, const std::vector<Signal>& out)
{
    double peak = 0.0;
    for (const Render::Row& row : render.samples)
        for (const double x : row.channels)
            peak = std::max(peak, std::abs(x));
    const auto differs = [&](const char* what, std::size_t frame, std::size_t channel,
                             double wanted, double got, double scale) {
        if (std::abs(got - wanted) <= kTolerance * scale)
            return false;
        ADD_FAILURE() << what << ' ' << frame << " of channel " << channel << " is " << got
                      << ", not " << wanted << ", in\n"
                      << render.text;
        return true;
    };
    ASSERT_EQ(render.absolute.size(), out.size());
    ASSERT_GE(render.samples.size(), 6u);
    for (const Render::Row& row : render.samples)
        for (std::size_t c = 0; c < out.size(); ++c)
            if (differs("sample", row.frame, c, row.channels.at(c), double{out[c][row.frame]},
                        peak))
                return;
    for (std::size_t c = 0; c < out.size(); ++c) {
        double sum = 0.0;
        for (const float x : out[c])
            sum += std::abs(double{x});
        if (differs("the sum of magnitudes up to sample", out[c].size(), c, render.absolute[c], sum,
                    render.absolute[c]))
            return;
    }
}

struct Renders : testing::Test {
    Renders()
    {
        host::NativePlugin plugin(ZKR_PLUGIN);
        for (int i = 0; i < plugin.fields().numParams; ++i)
            ids[plugin.paramName(i)] = static_cast<unsigned>(i);
    }
    void SetUp() override { ASSERT_EQ(renders.size(), 95u); }

    const std::vector<Render> renders = readRenders(ZKR_RENDERS);
    std::map<std::string, unsigned> ids;
};

TEST_F(Renders, ThroughTheProcessorInEveryForm)
{
    const auto layout = [](int channels) {
        return channels == 1 ? Steinberg::Vst::SpeakerArr::kMono
                             : Steinberg::Vst::SpeakerArr::kStereo;
    };
    for (const ProcessingForm form : ProcessingForms())
        for (const Render& render : renders) {
            SCOPED_TRACE(nameOf(form));
            Processor processor(render.rate, form);
            ASSERT_TRUE(processor.arrange(layout(render.in), layout(render.out)));
            expectSound(render,
                        play(render,
                             {[&](unsigned id, float value) { processor.set(id, double{value}); },
                              [&](Pointers in, Pointers out, int n) { processor.run(in, out, n); }},
                             ids));
        }
}

TEST_F(Renders, ThroughTheLibrary)
{
    for (const Render& render : renders) {
        host::NativePlugin plugin(ZKR_PLUGIN);
        ASSERT_TRUE(plugin.setSpeakerArrangement(render.in, render.out));
        plugin.setSampleRate(render.rate);
        plugin.setBlockSize(render.block);
        plugin.mainsOn();
        const auto set = [&](unsigned id, float value) {
            plugin.setParameter(static_cast<VstInt32>(id), value);
        };
        const auto process = [&](Pointers in, Pointers out, int n) {
            plugin.process(in.data(), out.data(), n);
        };
        expectSound(render, play(render, {set, process}, ids));
    }
}

}  // namespace
