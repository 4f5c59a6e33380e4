// The equaliser strip's state, rate and setters.
#include "dsp/StripProcessorT46.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <random>

namespace {

// Knob positions of the frequency steps, of which there are nine and "Off".
double step(int index)
{
    return index / 9.0;
}

TEST(StripProcessorT46, ABandThatIsOffKeepsItsLastStep)
{
    StripProcessorT46 strip;
    strip.setLowFrequency(step(9));
    strip.setMidFrequency(step(9));
    strip.setHighFrequency(step(9));
    EXPECT_EQ(strip.bandMode, 4 + 8 + 16);
    strip.setLowFrequency(0.0);
    strip.setMidFrequency(0.05);  // below 1/18
    strip.setHighFrequency(-3.0);
    EXPECT_EQ(strip.bandMode, 0);
    EXPECT_EQ(strip.lowFrequency, 33.0);
    EXPECT_EQ(strip.midFrequency, 680.0);
    EXPECT_EQ(strip.highFrequency, 6800.0);
}

TEST(StripProcessorT46, ARateChangeTakesEveryGainToItsTargetAtOnce)
{
    StripProcessorT46 strip;
    strip.setLowFrequency(step(3));
    strip.setMidFrequency(step(3));
    strip.setHighFrequency(step(3));
    strip.setLowGain(1.0);
    strip.setMidGain(0.1);
    strip.setHighGain(0.9);
    EXPECT_NE(strip.midGain, strip.midGainTarget);
    strip.setSampleRate(176400.0);
    for (const auto& [gain, target] : {std::pair{strip.lowGain, strip.lowGainTarget},
                                       {strip.midGain, strip.midGainTarget},
                                       {strip.highGain, strip.highGainTarget},
                                       {strip.outputGain, strip.outputGainTarget},
                                       {strip.midGainStep, 0.0}})
        EXPECT_EQ(gain, target);
    EXPECT_EQ(strip.gainRampCount, 0);
    EXPECT_EQ(strip.gainRampLength, 26460);
}

using Setter = void (StripProcessorT46::*)(double);
constexpr Setter kSetters[] = {
    &StripProcessorT46::setLowShelf,      &StripProcessorT46::setLowFrequency,
    &StripProcessorT46::setLowGain,       &StripProcessorT46::setMidFrequency,
    &StripProcessorT46::setMidGain,       &StripProcessorT46::setHighShelf,
    &StripProcessorT46::setHighFrequency, &StripProcessorT46::setHighGain,
    &StripProcessorT46::setAmpDisable};

TEST(StripProcessorT46, ChangesHeldTogetherSoundLikeTheSameChangesOneByOne)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> position(0.0, 1.0);
    StripProcessorT46 oneByOne, held;
    for (int burst = 0; burst < 600; ++burst) {
        if (burst % 100 == 50)
            for (StripProcessorT46* strip : {&oneByOne, &held})
                strip->setSampleRate(burst % 200 < 100 ? 176400.0 : 192000.0);
        held.holdUpdates();
        for (unsigned change = random() % 8; change > 0; --change) {
            const Setter setter = kSetters[random() % std::size(kSetters)];
            const double x = position(random);
            (oneByOne.*setter)(x);
            (held.*setter)(x);
        }
        const float process = random() % 8 ? 1.0f : 0.0f;
        oneByOne.setProcessOn(process);
        held.setProcessOn(process);
        held.releaseUpdates();
        double a[64], b[64];
        for (int i = 0; i < 64; ++i)
            a[i] = b[i] = 2.0 * position(random) - 1.0;
        oneByOne.process(a, 64);
        held.process(b, 64);
        ASSERT_EQ(std::memcmp(a, b, sizeof a), 0) << "burst " << burst;
    }
}

}  // namespace
