// Responses and harmonics of systems whose answers are known in closed form.
#include "FakePlugin.h"
#include "Harmonics.h"
#include "Plot.h"
#include "Response.h"
#include "ToolError.h"

#include <cmath>
#include <complex>
#include <gtest/gtest.h>

namespace {

using namespace tool;

constexpr double kPi = 3.141592653589793;

void ignoreProgress(double) { }

TEST(Projection, FindsAmplitudeAndPhaseOfATone)
{
    const WindowedTone tone = windowedTone(997.0, 44100.0, 4, 0.06);
    EXPECT_NEAR(tone.hz, 997.0, 0.2);
    const double periods = tone.hz * static_cast<double>(tone.samples) / 44100.0;
    EXPECT_NEAR(periods, std::round(periods), 1e-9);
    // Neither an offset that is still dying away nor a second harmonic may leak into the result.
    std::vector<float> signal(static_cast<std::size_t>(tone.samples) + 10);
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double t = static_cast<double>(i) - 10.0;
        const double angle = 2.0 * kPi * tone.hz / 44100.0 * t;
        signal[i] = static_cast<float>(0.25 * std::cos(angle + 0.7) + 0.1 * std::cos(2.0 * angle)
                                       + 0.1 * std::exp(-t / 2000.0));
    }
    const std::complex<double> found = projection(signal, 10, tone.samples, tone.hz, 44100.0);
    EXPECT_NEAR(std::abs(found), 0.25, 1e-5);
    EXPECT_NEAR(std::arg(found), 0.7, 1e-5);
}

TEST(Response, OfAOnePoleFilterBehindADelayIsTheFormula)
{
    // y[n] = (1 - a) x[n] + a y[n - 1] on the left; its inverse sign at half level on the right.
    const double a = 0.9;
    float state = 0.0f;
    FakePlugin plugin({}, 37, [&](int channel, float x, const auto&) {
        if (channel == 1)
            return -0.5f * x;
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
        EXPECT_NEAR(point.db[1], -6.0206, 1e-4);
        EXPECT_NEAR(std::fabs(point.degrees[1]), 180.0, 1e-2);
    }
}

TEST(Response, SeparatesMidFromSide)
{
    // The left channel doubled: mid and side are both (2 + 1) / 2 of what they were. With the right
    // one turned around, each turns into the other, and what is left is (2 - 1) / 2.
    FakePlugin same({}, 0,
                    [](int channel, float x, const auto&) { return channel == 0 ? 2.0f * x : x; });
    ResponsePlan plan;
    plan.points = 3;
    plan.fromHz = 100.0;
    plan.midSide = true;
    for (const ResponsePoint& point : measureResponse(same, {}, plan, ignoreProgress)) {
        EXPECT_NEAR(point.db[0], 20.0 * std::log10(1.5), 1e-4);
        EXPECT_NEAR(point.db[1], 20.0 * std::log10(1.5), 1e-4);
    }
    FakePlugin turned(
        {}, 0, [](int channel, float x, const auto&) { return channel == 0 ? 2.0f * x : -x; });
    for (const ResponsePoint& point : measureResponse(turned, {}, plan, ignoreProgress))
        EXPECT_NEAR(point.db[1], 20.0 * std::log10(0.5), 1e-4);
}

TEST(Harmonics, OfASquareAndACubeAreTheFormula)
{
    // Left: x + 0.1 x^2 + 0.05 x^3 of x = A sin: H1 = A + 0.0375 A^3, H2 = 0.05 A^2,
    // H3 = 0.0125 A^3. Right: untouched.
    FakePlugin plugin({}, 5, [](int channel, float x, const auto&) {
        return channel == 0 ? x + 0.1f * x * x + 0.05f * x * x * x : x;
    });
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
}

TEST(Harmonics, AboveHalfTheRateAreLeftOut)
{
    FakePlugin plugin;
    HarmonicsPlan plan;
    plan.hz = 7000.0;
    plan.levels = {0.0};
    const auto points = measureHarmonics(plugin, {}, plan, ignoreProgress);
    const auto& below = points.front().channels[0].belowHalfRate;
    EXPECT_TRUE(below[0] && below[1]);   // 14 and 21 kHz
    EXPECT_FALSE(below[2] || below[8]);  // 28 and 70 kHz
}

TEST(Plot, DrawsAndComplainsInOneLine)
{
    const std::string svg = drawPlot(plotHead(PictureKind::Svg, 400, 300) + "set title "
                                     + plotQuoted("it's_100%") + "\nplot sin(x) ls 1\n");
    EXPECT_NE(svg.find("</svg>"), std::string::npos);
    EXPECT_NE(svg.find("it's_100%"), std::string::npos) << "a title is drawn as it is written";
    const std::string png = drawPlot(plotHead(PictureKind::Png, 400, 300) + "plot sin(x) ls 1\n");
    EXPECT_EQ(png.substr(1, 3), "PNG");
    try {
        drawPlot("this is no plot\n");
        FAIL() << "drawn";
    } catch (const ToolError& error) {
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    }
    EXPECT_THROW(pictureKindOf("a.jpeg"), ToolError);
    EXPECT_EQ(pictureKindOf("a.b/C.SVG"), PictureKind::Svg);
}

}  // namespace
