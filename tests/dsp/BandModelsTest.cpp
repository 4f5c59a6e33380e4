// Band models, band interactions and control laws, against independently computed values.
#include "dsp/BandModels.h"

#include "dsp/BandInteractions.h"
#include "dsp/ControlLaws.h"
#include "tests/dsp/WorkedValues.h"

#include <gtest/gtest.h>

namespace {

TEST(BandModels, EveryStepGivesItsFilterGainAndDampingInCutAndBoost)
{
    const struct {
        const char* name;
        BandModel (*model)(double, double);
        std::size_t steps;
    } bands[] = {{"lowShelfModel", lowShelfModel, 5},
                 {"highShelfModel", highShelfModel, 9},
                 {"lowBellModel", lowBellModel, 9},
                 {"midBellModel", midBellModel, 9},
                 {"highBellModel", highBellModel, 9}};
    for (const auto& band : bands) {
        const std::vector<WorkedRow> rows = workedRows(band.name);
        ASSERT_EQ(rows.size(), band.steps);
        for (const WorkedRow& row : rows)
            for (const bool boost : {false, true}) {
                SCOPED_TRACE(testing::Message()
                             << band.name << " of " << row[0] << " Hz, boost " << boost);
                const double* const wanted = &row[boost ? 6 : 1];
                const BandModel model = band.model(boost ? 26.0 / 32.0 : 6.0 / 32.0, row[0]);
                EXPECT_NEAR(model.gainDb, wanted[0], 1e-8);
                EXPECT_NEAR(model.frequency / wanted[1], 1.0, 1e-9);
                EXPECT_NEAR(model.q, wanted[2], 1e-9);
                EXPECT_NEAR(model.outputGain, wanted[3], 2e-9);
                EXPECT_NEAR(model.damping, wanted[4], 2e-9);
            }
    }
}

TEST(BandModels, FiguresAtZero)
{
    const BandModel low = lowShelfModel(0.5, 63.0);
    EXPECT_EQ(low.gainDb, 0.0);
    EXPECT_DOUBLE_EQ(low.frequency, 63.0 * 6.75 * 0.92);
    EXPECT_EQ(low.outputGain, 1.0);
    EXPECT_EQ(low.damping, 0.8);
    EXPECT_NEAR(lowBellModel(0.5, 63.0).q, 0.31 * 0.96, 1e-12);  // that of a boost
    EXPECT_NEAR(lowBellModel(0.5, 120.0).frequency, 120.0 * 0.7, 1e-9);
    EXPECT_NEAR(midBellModel(0.5, 3000.0).frequency, 3000.0 * 0.96, 1e-9);
    EXPECT_NEAR(highBellModel(0.5, 6800.0).q, 0.31 * 0.96, 1e-12);  // and its factor, 1
}

// Also at 0 dB (a boost for a shelf, a cut for a bell) and beyond 16 dB (clamped to 16).
TEST(BandInteractions, CurvesAndTheirWeights)
{
    ASSERT_EQ(workedRows("shelf").size(), 29u);
    ASSERT_EQ(workedRows("bell").size(), 31u);
    for (const char* const kind : {"shelf", "bell"})
        for (const WorkedRow& row : workedRows(kind)) {
            SCOPED_TRACE(testing::Message()
                         << kind << " at " << row[0] << ", " << row[1] << " and " << row[2]);
            const bool bell = row.size() > 6;
            double q = 0.7, gainDb = row[1];
            const Skirt skirt = bell ? bellInteraction(row[0], q, gainDb, row[2])
                                     : shelfInteraction(row[0], row[1], row[2]);
            EXPECT_NEAR(skirt.mix, row[3], 1e-9);
            EXPECT_NEAR(skirt.ratio, row[4], 1e-9);
            EXPECT_NEAR(skirt.scale, bell ? 1.0 : row[5], 1e-9);
            EXPECT_NEAR(q, 0.7 * (bell ? row[5] : 1.0), 1e-9);
            EXPECT_NEAR(gainDb, bell ? row[6] : row[1], 6e-9);
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
    EXPECT_EQ(bandGainDb(std::nan("")), -16.0);
    EXPECT_EQ(levelDb(1.5), 32.0);  // not limited just beyond the ends
    for (const double bad : {std::nan(""), 1e300, -1e300})
        EXPECT_EQ(switchValue(bad), bad > 0.0 ? 1 : 0) << bad;
    EXPECT_EQ(switchValue(0.5), 1);
    EXPECT_EQ(switchValue(0.49999999), 0);
    EXPECT_EQ(glideSamples(std::nan("")), 0);
    EXPECT_EQ(glideSamples(-48000.0), 0);
    EXPECT_EQ(glideSamples(176400.0), 26460);
}

}  // namespace
