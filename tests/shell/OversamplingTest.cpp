// The oversampling filters: the taps, the plain direct form that every stage must equal, and what
// the whole chain does to a signal.
#include "Oversampling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <deque>
#include <numeric>
#include <vector>

namespace {

constexpr double kPi = 3.14159265358979323846;

std::vector<double> wholeFilter(const double* half)
{
    std::vector<double> taps(half, half + kDecimationTaps);
    for (int k = kDecimationTaps - 2; k >= 0; --k)
        taps.push_back(half[k]);
    return taps;
}

double magnitude(const std::vector<double>& taps, double cyclesPerSample)
{
    std::complex<double> sum = 0.0;
    for (std::size_t k = 0; k < taps.size(); ++k)
        sum += taps[k] * std::polar(1.0, -2.0 * kPi * cyclesPerSample * static_cast<double>(k));
    return std::abs(sum);
}

std::vector<double> noise(std::size_t length)
{
    std::vector<double> x(length);
    unsigned seed = 7;
    for (double& sample : x) {
        seed = seed * 1664525u + 1013904223u;
        sample = seed / 2147483648.0 - 1.0;
    }
    return x;
}

// Runs a stage over a long signal in sub-blocks of changing length.
template <typename Stage>
std::vector<double> inSubBlocks(const std::vector<double>& in, int factor, Stage stage)
{
    std::vector<double> out;
    std::size_t done = 0;
    for (int wanted = 1; done < in.size(); wanted = wanted % 16 + 1) {
        const int count = std::min(wanted, static_cast<int>(in.size() - done));
        double from[64] = {}, to[64] = {}, fromRight[64] = {}, toRight[64] = {};
        std::copy_n(in.begin() + static_cast<std::ptrdiff_t>(done), count, from);
        for (int i = 0; i < count; ++i)
            fromRight[i] = -from[i];
        stage(SubBlock{from, fromRight}, SubBlock{to, toRight}, count);
        for (int i = 0; i < count * factor; ++i)
            EXPECT_EQ(toRight[i], -to[i]) << "the channels are not treated alike";
        out.insert(out.end(), to, to + count * factor);
        done += static_cast<std::size_t>(count);
    }
    return out;
}

}  // namespace

TEST(Interpolator, TapsAreHalfBandWithTheirSumLeftAsItIs)
{
    struct Table {
        const double* taps;
        int centre;
        double one, three, five;
    };
    Oversampling oversampling;
    for (const Table& table :
         {Table{oversampling.upStage1Coeffs, 63, 0.63108, -0.20885, 0.12351},
          Table{oversampling.upStage2Coeffs, 127, 0.63399, -0.21095, 0.12612}}) {
        SCOPED_TRACE(table.centre);
        const double* centre = table.taps + table.centre;
        EXPECT_DOUBLE_EQ(centre[0], 1.0);
        EXPECT_NEAR(centre[1], table.one, 5e-6);
        EXPECT_NEAR(centre[3], table.three, 5e-6);
        EXPECT_NEAR(centre[5], table.five, 5e-6);
        double oddSum = 0.0;
        for (int i = 1; i <= table.centre; ++i) {
            EXPECT_EQ(centre[i], centre[-i]);
            if (i % 2 == 0)
                EXPECT_EQ(centre[i], 0.0) << i;
            else
                oddSum += 2.0 * centre[i];
        }
        EXPECT_NEAR(oddSum, 1.0 - 1.0 / (2 * table.centre + 2), 3e-6);
    }
}

// The even output is a sum over the last 64 (128) samples; in place of one more sample at the far
// end it takes the newest again. The odd output is the sample of 32 (64) steps ago.
TEST(Interpolator, DoublingEqualsADirectSumWithTheNewestSampleAtTheFarEnd)
{
    const std::vector<double> in = noise(700);
    for (const bool first : {true, false}) {
        SCOPED_TRACE(first);
        Oversampling oversampling;
        const double* taps = first ? oversampling.upStage1Coeffs : oversampling.upStage2Coeffs;
        const int half = first ? 64 : 128;
        const std::vector<double> out =
            inSubBlocks(in, 2, [&](const SubBlock& from, const SubBlock& to, int count) {
                if (first)
                    oversampling.firstDoubling(from, to, count);
                else
                    oversampling.secondDoubling(from, to, count);
            });
        ASSERT_EQ(out.size(), 2 * in.size());
        const auto ago = [&](std::size_t n, int steps) {
            return n < static_cast<std::size_t>(steps) ? 0.0
                                                       : in[n - static_cast<std::size_t>(steps)];
        };
        for (std::size_t n = 0; n < in.size(); ++n) {
            double even = 0.0;
            for (int pair = 0; pair < half / 2; ++pair)
                even +=
                    taps[2 * pair] * ((pair == 0 ? in[n] : ago(n, half - pair)) + ago(n, pair + 1));
            EXPECT_EQ(out[2 * n], even) << n;
            EXPECT_EQ(out[2 * n + 1], taps[half - 1] * ago(n, half / 2)) << n;
        }
    }
}

TEST(Decimator, EqualsADirectSumThatStartsWithTheSampleBefore)
{
    const std::vector<double> in = noise(900);
    for (const double* half : {down2xCoeffs, down4xCoeffs}) {
        Oversampling oversampling;
        const std::vector<double> out =
            inSubBlocks(in, 1, [&](const SubBlock& from, const SubBlock& to, int count) {
                oversampling.decimationFilter(half, from, to, count);
            });
        for (std::size_t i = 0; i < in.size(); ++i) {
            const auto ago = [&](std::size_t steps) { return i < steps ? 0.0 : in[i - steps]; };
            double y = 0.0;
            for (std::size_t k = 0; k < 127; ++k)
                y += half[k] * (ago(255 - k) + ago(k + 1));
            y += half[127] * ago(128);
            ASSERT_EQ(out[i], y) << i;
        }
    }
}

TEST(Decimator, TablesMeetTheirEdgesRippleAndSum)
{
    struct Design {
        const double* half;
        double passEdge, stopEdge, ripple, stopPeak, halfPoint, sum;
    };
    for (const Design& design :
         {Design{down2xCoeffs, 0.2417, 0.2620, 0.000236, 1.0e-5, 0.2505, 1.00023459},
          Design{down4xCoeffs, 0.1198, 0.1344, 0.00229, 9.8e-5, 0.126, 1.00228389}}) {
        const std::vector<double> taps = wholeFilter(design.half);
        SCOPED_TRACE(design.sum);
        ASSERT_EQ(taps.size(), 255u);
        EXPECT_NEAR(std::accumulate(taps.begin(), taps.end(), 0.0), design.sum, 2e-7);
        // The edges are rounded outwards by up to 5e-5, so the ripple holds just inside them.
        for (double f = 0.0; f <= design.passEdge - 1e-4; f += 1e-4)
            ASSERT_NEAR(magnitude(taps, f), 1.0, design.ripple * 1.02) << f;
        for (double f = design.stopEdge + 1e-4; f <= 0.5; f += 1e-4)
            ASSERT_LT(magnitude(taps, f), design.stopPeak * 1.02) << f;
        EXPECT_NEAR(magnitude(taps, design.halfPoint), 0.5, 0.02);
    }
    // These are given to the last digit.
    const struct {
        int index;
        double twice, four;
    } rows[] = {{127, 0.5008973513207254, 0.2520075516092188},
                {126, 0.3182404979182361, 0.2264599339448374},
                {125, -0.0008964083749538523, 0.15904622159086873},
                {124, -0.10589529166210374, 0.07349378892170595},
                {123, 0.0008935847935306259, -0.002001883629095488},
                {122, 0.0633158475569329, -0.04623722785925243},
                {121, -0.0008888983615124295, -0.052726305640184934},
                {120, -0.0449893974887747, -0.03047876874841836},
                {2, 5.336438149995856e-05, 0.00011356958741892228},
                {1, 6.450443441051257e-05, 2.938923986703578e-05},
                {0, 2.4234479444189413e-05, -4.8663899718994306e-05}};
    for (const auto& row : rows) {
        EXPECT_EQ(down2xCoeffs[row.index], row.twice) << row.index;
        EXPECT_EQ(down4xCoeffs[row.index], row.four) << row.index;
    }
}
