// Band models, interactions and the laws behind the knobs, against values worked out apart.
#include "BandModels.h"

#include "BandInteractions.h"
#include "ControlLaws.h"
#include "WorkedValues.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

double position(double db)
{
    return (db + 16.0) / 32.0;
}

void expectSame(const BandModel& expected, const BandModel& actual)
{
    EXPECT_NEAR(actual.gainDb, expected.gainDb, 1e-8);
    EXPECT_NEAR(actual.frequency / expected.frequency, 1.0, 1e-9);
    EXPECT_NEAR(actual.q, expected.q, 1e-9);
    EXPECT_NEAR(actual.outputGain, expected.outputGain, 2e-9);
    EXPECT_NEAR(actual.damping, expected.damping, 2e-9);
}

TEST(BandModels, EveryStepGivesItsFilterGainAndDampingInCutAndBoost)
{
    for (const ModelCase& c : kModelCases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - kModelCases.data() << ", " << c.stepHz);
        expectSame(c.cut, c.model(position(-10.0), c.stepHz));
        expectSame(c.boost, c.model(position(10.0), c.stepHz));
    }
}

TEST(BandModels, FiguresAtZeroAndAtTheEnds)
{
    const BandModel low = lowShelfModel(0.5, 63.0);
    EXPECT_EQ(low.gainDb, 0.0);
    EXPECT_DOUBLE_EQ(low.frequency, 63.0 * 6.75 * 0.92);
    EXPECT_EQ(low.outputGain, 1.0);
    EXPECT_EQ(low.damping, 0.8);

    // k = 6.54894 - 2.00016 * ln(16) = 1.00339...: the corner of a full boost is close to the step.
    EXPECT_NEAR(10000.0 / highShelfModel(1.0, 10000.0).frequency, 1.0034, 1e-4);
    EXPECT_DOUBLE_EQ(highShelfModel(0.1, 10000.0).frequency, 10000.0 * (1.0 / 6.75));

    EXPECT_NEAR(lowBellModel(1.0, 63.0).q, 0.9696, 1e-12);
    EXPECT_NEAR(lowBellModel(1.0, 63.0).gainDb, 15.52, 1e-12);
    EXPECT_NEAR(lowBellModel(0.5, 63.0).q, 0.31 * 0.96, 1e-12);  // 0 dB has the Q of a boost
    EXPECT_NEAR(lowBellModel(0.5, 120.0).frequency, 120.0 * 0.7, 1e-9);
    EXPECT_NEAR(midBellModel(0.5, 3000.0).frequency, 3000.0 * 0.96, 1e-9);
    EXPECT_NEAR(highBellModel(0.5, 6800.0).q, 0.31 * 0.96, 1e-12);  // and its factor, 1
    // At 16 dB every w and u is 1, so the boost's curves end at the sum of their constants.
    EXPECT_NEAR(lowBellModel(1.0, 120.0).frequency, 120.0 * 0.8600001, 1e-9);
    EXPECT_NEAR(midBellModel(1.0, 5600.0).damping, 1.7, 1e-12);
}

TEST(BandInteractions, ShelfCurvesAndTheirWeights)
{
    for (const InteractionCase& c : kShelfCases) {
        SCOPED_TRACE(testing::Message() << c.x << ", " << c.gainDb << ", " << c.otherGainDb);
        const Skirt skirt = shelfInteraction(c.x, c.gainDb, c.otherGainDb);
        EXPECT_NEAR(skirt.mix, c.mix, 1e-9);
        EXPECT_NEAR(skirt.ratio, c.ratio, 1e-9);
        EXPECT_NEAR(skirt.scale, c.scale, 1e-9);
    }
}

TEST(BandInteractions, BellCurvesCorrectQAndGainInPlace)
{
    for (const InteractionCase& c : kBellCases) {
        SCOPED_TRACE(testing::Message() << c.x << ", " << c.gainDb << ", " << c.otherGainDb);
        double q = 0.7, gainDb = c.gainDb;
        const Skirt skirt = bellInteraction(c.x, q, gainDb, c.otherGainDb);
        EXPECT_NEAR(skirt.mix, c.mix, 1e-9);
        EXPECT_NEAR(skirt.ratio, c.ratio, 1e-9);
        EXPECT_EQ(skirt.scale, 1.0);
        EXPECT_NEAR(q, 0.7 * c.qFactor, 1e-9);
        EXPECT_NEAR(gainDb, c.newGainDb, 6e-9);
    }
}

TEST(BandInteractions, ZeroDecibelsIsABoostForAShelfAndACutForABell)
{
    EXPECT_NEAR(shelfInteraction(0.1, 0.0, 16.0).ratio, -0.512777 * std::log(0.192941), 1e-12);
    double q = 1.0, gainDb = 0.0;
    EXPECT_NEAR(bellInteraction(0.5, q, gainDb, 16.0).mix,
                1.29121 * 0.25 - 1.83502 * 0.5 + 0.665356, 1e-12);
}

TEST(BandInteractions, GainsBeyond16DecibelsCountAs16)
{
    // Opposed, since all that pushes together is limited once more.
    for (const double sign : {1.0, -1.0}) {
        EXPECT_EQ(shelfInteraction(0.1, sign * 17.0, sign * -8.0).mix,
                  shelfInteraction(0.1, sign * 16.0, sign * -8.0).mix);
        EXPECT_EQ(shelfInteraction(0.1, sign * -8.0, sign * 17.0).mix,
                  shelfInteraction(0.1, sign * -8.0, sign * 16.0).mix);
    }
}

TEST(ControlLaws, BandGainsMoveInQuartersOfADecibelWithZeroInTheMiddle)
{
    EXPECT_EQ(bandGainDb(0.0), -16.0);
    EXPECT_EQ(bandGainDb(1.0), 16.0);
    EXPECT_EQ(bandGainDb(0.49609375), 0.0);
    EXPECT_EQ(bandGainDb(std::nextafter(0.49609375, 0.0)), -0.25);
    EXPECT_EQ(bandGainDb(std::nextafter(0.50390625, 0.0)), 0.0);
    EXPECT_EQ(bandGainDb(0.50390625), 0.25);
}

TEST(ControlLaws, BadNumbersBecomeSomethingFinite)
{
    const double inf = std::numeric_limits<double>::infinity();
    for (const double bad : {std::nan(""), inf, -inf, 1e300, -1e300}) {
        EXPECT_TRUE(std::isfinite(decibelsToGain(bandGainDb(bad)))) << bad;
        EXPECT_TRUE(std::isfinite(decibelsToGain(levelDb(bad)))) << bad;
        EXPECT_EQ(switchValue(bad), bad > 0.5 ? 1 : 0);
    }
    EXPECT_EQ(bandGainDb(std::nan("")), -16.0);
    EXPECT_EQ(levelDb(1.5), 32.0);  // not limited just beyond the ends
    EXPECT_EQ(switchValue(0.5), 1);
    EXPECT_EQ(switchValue(0.49999999), 0);
    EXPECT_EQ(glideSamples(std::nan("")), 0);
    EXPECT_EQ(glideSamples(-48000.0), 0);
    EXPECT_EQ(glideSamples(176400.0), 26460);
}

}  // namespace
