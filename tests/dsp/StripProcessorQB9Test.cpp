// The pre-amplifier strip: rate changes, smoothing and the boost.
#include "dsp/StripProcessorQB9.h"

#include "tests/dsp/Responses.h"

#include <gtest/gtest.h>

namespace {

TEST(StripProcessorQB9, ARateChangeAppliesAPendingPolarityAndEndsEveryGlide)
{
    StripProcessorQB9 strip;
    strip.setPhase(1.0);
    strip.setDrive(1.0);
    strip.setOutput(0.0);
    strip.setSampleRate(176400.0);
    EXPECT_EQ(strip.inverted, 1);
    EXPECT_EQ(strip.phaseChangePending, 0);
    EXPECT_NEAR(strip.smoothingCoeff, 22.05000114440918 / 176400.0, 1e-18);
    EXPECT_EQ(strip.outputGainCurrent, strip.outputGainTarget);
    EXPECT_EQ(strip.driveGainCurrent, strip.driveGainTarget);
    EXPECT_EQ(strip.driveMakeupCurrent, strip.driveMakeupTarget);
    for (const double c : strip.compensation)
        EXPECT_EQ(c, 1.0 / strip.driveGainTarget);  // without the make-up
    EXPECT_EQ(strip.highPass.sampleRate, 176400.0);
    EXPECT_EQ(strip.boostBand.sampleRate, 176400.0);
    strip.setSampleRate(48000.0);
    EXPECT_EQ(strip.inverted, 1);
}

TEST(StripProcessorQB9, EverySmootherFlushesTinyValues)
{
    StripProcessorQB9 strip;
    const double tiny = 1e-20, cut = flushed(tiny, 1e-14);
    ASSERT_NE(cut, tiny);
    strip.driveGainCurrent = strip.driveGainTarget = tiny;
    strip.driveMakeupCurrent = strip.driveMakeupTarget = tiny;
    strip.outputGainCurrent = strip.outputGainTarget = tiny;
    double x = 1.0;
    strip.processInputStage(&x, 1);
    strip.processOutputStage(&x, 1);
    EXPECT_EQ(strip.driveGainCurrent, cut);
    EXPECT_EQ(strip.driveMakeupCurrent, cut);
    EXPECT_EQ(strip.outputGainCurrent, cut);
}

TEST(StripProcessorQB9, TheBoostIsDesignedWhenSwitchedAndOnlyThen)
{
    StripProcessorQB9 strip;
    strip.set28k(1.0);
    strip.setSampleRate(192000.0);
    EXPECT_DOUBLE_EQ(strip.boostBand.frequency, 44100.0 * 0.499);  // clamped at the first rate
    strip.boostBand.b0 = 42.0;
    strip.set28k(0.7);  // no change: still on
    EXPECT_EQ(strip.boostBand.b0, 42.0);
    strip.boostBand.y1 = 0.5;
    strip.set28k(0.0);
    EXPECT_EQ(strip.boostBand.frequency, 28000.0);
    EXPECT_EQ(strip.boostBand.enabled, 1);  // still enabled, but no longer called
    double x = 1.0;
    strip.processInputStage(&x, 1);
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(strip.boostBand.y1, 0.5);
}

}  // namespace
