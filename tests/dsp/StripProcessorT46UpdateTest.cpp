// What an update sets in the sections and the gain ramp, for each combination of bands.
#include "dsp/StripProcessorT46.h"
#include "params/lookup/FrequencySteps.h"
#include "tests/dsp/WorkedValues.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

double knob(double db)
{
    return (db + 16.0) / 32.0;
}

// The knob position of a step; that of "Off" for a frequency that is not in the table.
template <class Table>
double position(const Table& table, double hz)
{
    const auto step = std::find(table.begin(), table.end(), hz) - table.begin();
    return static_cast<double>(step % 10) / 9.0;
}

// In the order of the columns of worked_values.txt.
std::vector<double> setUpOf(const ShelfSection& shelf)
{
    return {shelf.main.frequency, 1.0, 0.0, 1.0, shelf.skirtMix, shelf.skirtRatio};
}

std::vector<double> setUpOf(const PeakSection& bell)
{
    return {bell.main.frequency, bell.main.q,      bell.highSkirtMix,
            bell.highSkirtRatio, bell.lowSkirtMix, bell.lowSkirtRatio};
}

TEST(T46Update, EveryCombinationSetsUpItsSectionsGainsAndDamping)
{
    const std::vector<WorkedRow> rows = workedRows("update");
    ASSERT_EQ(rows.size(), 30u);
    for (const WorkedRow& row : rows) {
        const int mode = static_cast<int>(row[0]);
        const double *const low = &row[3], *const mid = low + 9, *const high = mid + 9;
        StripProcessorT46 strip;
        strip.setLowShelf(mode & kLowShelfBand ? 1.0 : 0.0);
        strip.setHighShelf(mode & kHighShelfBand ? 1.0 : 0.0);
        strip.setLowFrequency(position(kLowStepsHz, low[0]));
        strip.setMidFrequency(position(kMidStepsHz, mid[0]));
        strip.setHighFrequency(position(kHighStepsHz, high[0]));
        strip.setLowGain(knob(low[1]));
        strip.setMidGain(knob(mid[1]));
        strip.setHighGain(knob(high[1]));
        strip.setSampleRate(192000.0);
        strip.setSampleRate(176400.0);

        SCOPED_TRACE(testing::Message()
                     << "mode " << mode << " of " << low[0] << ", " << mid[0] << ", " << high[0]);
        EXPECT_EQ(strip.bandMode, mode);
        EXPECT_NEAR(strip.outputGainTarget, row[1], 2e-9);
        EXPECT_NEAR(strip.dampingAmount, row[2], 2e-9);
        EXPECT_NEAR(strip.damping.first.wetTarget, std::min(row[2] * 0.5, 1.0), 1e-7);
        const struct {
            int band;
            std::vector<double> setUp;
            const double* wanted;
            double gain;
            const BiquadFilter& filter;
        } bands[] = {
            {kLowShelfBand, setUpOf(strip.lowShelf), low, strip.lowGainTarget, strip.lowShelf.main},
            {kLowBellBand, setUpOf(strip.lowBell), low, strip.lowGainTarget, strip.lowBell.main},
            {kMidBellBand, setUpOf(strip.midBell), mid, strip.midGainTarget, strip.midBell.main},
            {kHighShelfBand, setUpOf(strip.highShelf), high, strip.highGainTarget,
             strip.highShelf.main},
            {kHighBellBand, setUpOf(strip.highBell), high, strip.highGainTarget,
             strip.highBell.main}};
        constexpr const char* kNames[] = {"Hz",          "Q",         "upper mix",
                                          "upper ratio", "lower mix", "lower ratio"};
        for (const auto& band : bands)
            for (std::size_t i = 0; mode & band.band && i < band.setUp.size(); ++i) {
                const double wanted = band.wanted[2 + i];
                EXPECT_NEAR(band.setUp[i], wanted, 1e-9 * std::max(2.0, std::fabs(wanted)))
                    << kNames[i] << " of band " << band.band;
                EXPECT_NEAR(band.gain, decibelsToGain(band.wanted[8]), 1e-8);
                EXPECT_EQ(band.filter.sampleRate, 176400.0);
            }

        strip.setProcessOn(0.0f);
        EXPECT_EQ(strip.outputGainTarget, 1.0) << "process switch off";
        EXPECT_EQ(strip.dampingAmount, 0.9);
        strip.setProcessOn(1.0f);
        strip.setLowFrequency(0.0);
        strip.setMidFrequency(0.0);
        strip.setHighFrequency(0.0);
        EXPECT_EQ(strip.outputGainTarget, 1.0) << "all bands off";
        EXPECT_EQ(strip.dampingAmount, 0.6);
    }
}

}  // namespace
