// The text that a host shows for a position against the value in the processor, for every step of
// every stepped parameter; and the latency.
#include "editor/CInfo.h"
#include "tests/params/ParameterDisplay.h"
#include "tests/shell/ProcessorProbe.h"

#include <cstdio>

using namespace probe;

namespace {

std::string twoDecimals(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

// The ids of one parameter in all four strips, given that of the first left one.
std::vector<ParamID> inEveryStrip(ParamID left)
{
    return {left, left + 1, left + (kProcL2 - kProcL), left + (kProcR2 - kProcL)};
}

const StripProcessorT46& stripOf(const Processor& processor, ParamID id)
{
    if (id >= kProcL2)
        return id % 2 ? *processor.eqStripR2 : *processor.eqStripL2;
    return id % 2 ? *processor.eqStripR : *processor.eqStripL;
}

const StripProcessorQB9& preampOf(const Processor& processor, ParamID id)
{
    return id % 2 ? *processor.preampStripR : *processor.preampStripL;
}

double decibels(double gain)
{
    return 20.0 * std::log10(gain);
}

}  // namespace

TEST_F(ParameterDisplay, FrequenciesAreThoseInForceAtEveryStep)
{
    using Strip = StripProcessorT46;
    const struct {
        std::vector<ParamID> ids;
        std::vector<double> hz;  // behind "Off"
        int Strip::*on;          // null for the high-pass
        double Strip::*frequency;
    } rows[] = {
        {{kHpfL, kHpfR}, {20, 30, 50, 70, 100, 140, 200, 280, 400, 560, 800}, nullptr, nullptr},
        {inEveryStrip(kLFreqL),
         {550, 430, 370, 300, 200, 120, 82, 63, 33},
         &Strip::lowOn,
         &Strip::lowFrequency},
        {inEveryStrip(kMFreqL),
         {5600, 4600, 3800, 3000, 2500, 1800, 1200, 800, 680},
         &Strip::midOn,
         &Strip::midFrequency},
        {inEveryStrip(kHFreqL),
         {28000, 24000, 20000, 17500, 14000, 12000, 10000, 8200, 6800},
         &Strip::highOn,
         &Strip::highFrequency},
    };
    for (const auto& row : rows)
        for (const ParamID id : row.ids)
            for (std::size_t step = 0; step <= row.hz.size(); ++step) {
                SCOPED_TRACE(testing::Message() << "parameter " << id << ", step " << step);
                const double position =
                    static_cast<double>(step) / static_cast<double>(row.hz.size());
                const double hz = step == 0 ? 0.0 : row.hz[step - 1];
                EXPECT_EQ(shown(id, position), step == 0 ? "Off" : twoDecimals(hz));
                Processor processor;
                processor.set(id, position);
                processor.flush();
                const BiquadFilter& highPass = preampOf(processor, id).highPass;
                const bool on = row.on ? stripOf(processor, id).*row.on : highPass.enabled;
                const double frequency =
                    row.on ? stripOf(processor, id).*row.frequency : highPass.frequency;
                EXPECT_EQ(on ? frequency : 0.0, hz);
            }
}

// Band gains are shown in tenths of a decibel and applied in quarters; drive and output are applied
// as shown.
TEST_F(ParameterDisplay, LevelsAreThoseInForceAtEveryStep)
{
    using Strip = StripProcessorT46;
    const struct {
        ParamID left;
        double Strip::*gainDb;
    } bands[] = {
        {kLGainL, &Strip::lowGainDb}, {kMGainL, &Strip::midGainDb}, {kHGainL, &Strip::highGainDb}};
    Processor processor;
    const auto put = [&](ParamID id, int step, int steps) {
        SCOPED_TRACE(testing::Message() << "parameter " << id << ", step " << step);
        const double position = static_cast<double>(step) / steps;
        processor.set(id, position);
        processor.flush();
        const double db = 32.0 * (step - steps / 2) / steps;
        EXPECT_EQ(shown(id, position), twoDecimals(db));
        return db;
    };
    for (int step = 0; step <= 320; ++step) {
        for (const auto& band : bands)
            for (const ParamID id : inEveryStrip(band.left)) {
                const double db = put(id, step, 320);
                const double quarters = 4.0 * (stripOf(processor, id).*band.gainDb);
                EXPECT_EQ(quarters, std::floor(4.0 * db + 0.5)) << db;
            }
        for (const ParamID id : {kOutputL, kOutputR}) {
            const double db = put(id, step, 320);
            EXPECT_NEAR(decibels(preampOf(processor, id).outputGainTarget), db, 1e-9);
        }
    }
    for (int step = 0; step <= 128; ++step)
        for (const ParamID id : {kDriveL, kDriveR}) {
            const double db = put(id, step, 128);
            EXPECT_NEAR(decibels(preampOf(processor, id).driveGainTarget), db, 1e-9);
        }
}

TEST_F(ParameterDisplay, LatencyIsWhatTheProcessorReports)
{
    EXPECT_EQ(CInfo({}, nullptr, 60).latencyText(), "Latency: 2.18 ms, 96 samples");
    const struct {
        double rate;
        const char *milliseconds, *samples;
    } rows[] = {{8000, "12.00", "96"}, {22050, "4.35", "96"},  {44100, "2.18", "96"},
                {48000, "2.00", "96"}, {64000, "1.50", "96"},  {88200, "1.09", "96"},
                {96000, "1.00", "96"}, {128000, "0.75", "96"}, {129000, "0.74", "0"},
                {176400, "0.00", "0"}, {192000, "0.00", "0"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rate);
        Processor processor(row.rate);
        processor.flush();
        int32 offset = 0;
        ParamValue value = -1.0;
        processor.reports.getParameterData(0)->getPoint(0, offset, value);
        EXPECT_EQ(shown(kLatency, value), row.milliseconds);
        CInfo info({}, nullptr, 60);
        info.setLatency(value);
        EXPECT_EQ(info.latencyText(),
                  std::string("Latency: ") + row.milliseconds + " ms, " + row.samples + " samples");
    }
}
