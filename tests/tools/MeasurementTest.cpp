// Measured responses and harmonics of systems with known closed forms.
#include "tests/tools/FakePlugin.h"
#include "tools/measuring/Delay.h"
#include "tools/measuring/Harmonics.h"
#include "tools/measuring/Plot.h"
#include "tools/measuring/Response.h"

#include <cmath>
#include <complex>
#include <gtest/gtest.h>

namespace {

using namespace tool;

constexpr double kPi = 3.141592653589793;

void ignoreProgress(double) { }

TEST(Response, OfAOnePoleFilterWithADelayMatchesTheFormula)
{
    // y[n] = (1 - a) x[n] + a y[n - 1] on the left; -y[n] / 2 on the right, where neither a slow
    // drift nor a second harmonic may affect the result.
    const double a = 0.9;
    float state = 0.0f, drift = 0.0f;
    FakePlugin plugin(37, [&](int channel, float x) {
        drift += 5e-7f;
        if (channel == 1)
            return drift + 0.1f * x * x - 0.5f * x;
        state =
            static_cast<float>((1.0 - a) * static_cast<double>(x) + a * static_cast<double>(state));
        return state;
    });
    ResponsePlan plan;
    plan.points = 25;
    plan.rate = 48000.0;
    plan.level = -20.0;
    const std::vector<ResponsePoint> points = measureResponse(plugin, {}, plan, ignoreProgress);
    ASSERT_EQ(points.size(), 25u);
    EXPECT_NEAR(points.front().hz, 10.0, 0.01);
    EXPECT_NEAR(points.back().hz, 21600.0, 20.0);
    for (const ResponsePoint& point : points) {
        SCOPED_TRACE(point.hz);
        const std::complex<double> expected =
            (1.0 - a) / (1.0 - a * std::polar(1.0, -2.0 * kPi * point.hz / plan.rate));
        EXPECT_NEAR(point.db[0], 20.0 * std::log10(std::abs(expected)), 1e-4);
        EXPECT_NEAR(point.degrees[0], std::arg(expected) * 180.0 / kPi, 1e-2);
        EXPECT_NEAR(point.db[1], -6.0206, 2e-2);
        EXPECT_NEAR(point.degrees[1], std::copysign(180.0, points.front().degrees[1]), 0.1);
    }
}

TEST(Delay, IsThatOfTheChannelThatIsNotAsReported)
{
    for (const int late : {-1, 0, 1}) {
        float before = 0.0f;
        FakePlugin plugin(37, [&](int channel, float x) {
            return channel == late ? std::exchange(before, x) : x;
        });
        const Delay delay = measureDelay(plugin, 48000.0, 64, {});
        EXPECT_EQ(delay.reported, 37);
        EXPECT_EQ(delay.measured, late < 0 ? 37 : 38) << late;
    }
}

TEST(Response, SeparatesMidFromSide)
{
    // Left doubled: the gain of mid and of side is (2 + 1) / 2. With right inverted as well, each
    // goes mostly into the other, and (2 - 1) / 2 remains.
    ResponsePlan plan;
    plan.points = 3;
    plan.fromHz = 100.0;
    plan.midSide = true;
    for (const float right : {1.0f, -1.0f}) {
        FakePlugin plugin(37, [&](int channel, float x) { return (channel ? right : 2.0f) * x; });
        for (const ResponsePoint& point : measureResponse(plugin, {}, plan, ignoreProgress))
            for (const std::size_t side : {0, 1}) {
                EXPECT_NEAR(point.db[side],
                            20.0 * std::log10((2.0 + static_cast<double>(right)) / 2.0), 1e-4);
                EXPECT_NEAR(point.degrees[side], 0.0, 1e-2);
            }
    }
}

TEST(Harmonics, OfASquareAndACubeMatchTheFormula)
{
    // Left: x + 0.1 x^2 + 0.05 x^3 of x = A sin: H1 = A + 0.0375 A^3, H2 = 0.05 A^2,
    // H3 = 0.0125 A^3. Right: unchanged.
    FakePlugin plugin(
        5, [](int channel, float x) { return channel ? x : x + 0.1f * x * x + 0.05f * x * x * x; });
    HarmonicsPlan plan;
    plan.hz = 50.0;
    plan.levels = {-20.0, 0.0};
    const std::vector<HarmonicsPoint> points = measureHarmonics(plugin, {}, plan, ignoreProgress);
    ASSERT_EQ(points.size(), 2u);
    for (const HarmonicsPoint& point : points) {
        SCOPED_TRACE(point.level);
        const double level = std::pow(10.0, point.level / 20.0);
        const double first = level + 0.0375 * level * level * level;
        const double second = 0.05 * level * level / first;
        const double third = 0.0125 * level * level * level / first;
        const ChannelHarmonics& left = point.channels[0];
        EXPECT_NEAR(left.fundamentalDb, 20.0 * std::log10(first), 1e-4);
        EXPECT_NEAR(left.db[0], 20.0 * std::log10(second), 1e-2);
        EXPECT_NEAR(left.db[1], 20.0 * std::log10(third), 1e-2);
        EXPECT_LT(left.db[2], -130.0);
        EXPECT_NEAR(left.thd, std::hypot(second, third), 1e-6);
        EXPECT_LT(point.channels[1].db[0], -130.0);
    }
    // There are no harmonics above half the rate.
    plan.hz = 7000.0;
    const auto high = measureHarmonics(plugin, {}, plan, ignoreProgress);
    const auto& below = high.front().channels[0].belowHalfRate;
    EXPECT_TRUE(below[0] && below[1]);   // 14 and 21 kHz
    EXPECT_FALSE(below[2] || below[8]);  // 28 and 70 kHz
}

TEST(Plot, LabelsAtTheEndsOfCurvesKeepApartAndBesideTheAxis)
{
    // An axis of ten lines of 2 dB each.
    EXPECT_EQ(
        endLabels({{"low", 1, -30}, {"it's", 2, 5}, {"b", 3, 5.5}, {"c", 4, -9}}, -10, 10, 10),
        "unset label\n"
        "set label 'b' at graph 1.008, first 5.5000 left tc ls 3\n"
        "set label 'it''s' at graph 1.008, first 3.5000 left tc ls 2\n"
        "set label 'c' at graph 1.008, first -8.0000 left tc ls 4\n"
        "set label 'low' at graph 1.008, first -10.0000 left tc ls 1\n");
}

}  // namespace
