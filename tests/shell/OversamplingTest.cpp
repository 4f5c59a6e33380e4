// The oversampling stages against their definition, bit for bit, in every form that the machine can
// run.
#include "shell/oversampling/Oversampling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

using Random = std::mt19937;
using Samples = std::vector<double>;

double uniform(Random& random)
{
    return static_cast<double>(random()) / 2147483648.0 - 1.0;
}

struct Signal {
    const char* name;
    double (*next)(Random&);
};

double ofSize(Random& random, int smallest, int binades)
{
    return std::ldexp(uniform(random), smallest + static_cast<int>(random() % 4096) % binades);
}

// Terms of widely different size make a changed order of additions visible.
const Signal kSignals[] = {
    {"noise", uniform},
    {"1e-40", [](Random& random) { return uniform(random) * 1e-40; }},
    {"denormal to 1e-40", [](Random& random) { return ofSize(random, -1040, 908); }},
    {"1e300", [](Random& random) { return uniform(random) * 1e300; }},
    {"any size", [](Random& random) { return ofSize(random, -1040, 2030); }},
    {"zeros of both signs, few samples",
     [](Random& random) {
         return random() % 64 == 0 ? uniform(random) : random() % 2 == 0 ? 0.0 : -0.0;
     }},
};

// Even outputs are a symmetric sum over the last `half` samples, in which the newest sample also
// stands in for the one at the far end; odd outputs are the scaled sample of half / 2 steps ago.
Samples doubled(const Samples& in, const double* taps, std::size_t half)
{
    Samples out;
    for (std::size_t n = 0; n < in.size(); ++n) {
        const auto ago = [&](std::size_t steps) { return n < steps ? 0.0 : in[n - steps]; };
        double even = 0.0;
        for (std::size_t pair = 0; pair < half / 2; ++pair)
            even += taps[2 * pair] * (ago(pair == 0 ? 0 : half - pair) + ago(pair + 1));
        out.push_back(even);
        out.push_back(taps[half - 1] * ago(half / 2));
    }
    return out;
}

// A low-pass, delayed by one sample, of whose outputs every `factor`th is kept.
Samples lowered(const Samples& in, const double* half, std::size_t factor)
{
    Samples out;
    for (std::size_t n = factor - 1; n < in.size(); n += factor) {
        const auto ago = [&](std::size_t steps) { return n < steps ? 0.0 : in[n - steps]; };
        double y = 0.0;
        for (std::size_t k = 0; k < 127; ++k)
            y += half[k] * (ago(255 - k) + ago(k + 1));
        out.push_back(y + half[127] * ago(128));
    }
    return out;
}

void expectSameBits(const Samples& got, const Samples& wanted, const char* where)
{
    ASSERT_EQ(got.size(), wanted.size());
    for (std::size_t i = 0; i < got.size(); ++i)
        ASSERT_EQ(std::memcmp(&got[i], &wanted[i], sizeof(double)), 0)
            << where << ", sample " << i << " is " << got[i] << ", not " << wanted[i];
}

// Runs a long signal in sub-blocks of varying length. The decimation gets a signal of its own, not
// the output of the interpolation.
void compare(Oversampling& oversampling, int mode, bool stereo, const Signal& signal)
{
    SCOPED_TRACE(std::string(signal.name) + (stereo ? ", stereo" : ", mono") + ", mode "
                 + std::to_string(mode));
    Random random(static_cast<unsigned>(mode) + 100);
    Samples in[2], up[2], wide[2], down[2];
    double work[2][64];
    const SubBlock subBlock{work[0], stereo ? work[1] : nullptr};
    const auto fill = [&](int count, Samples(&kept)[2]) {
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < count; ++i)
                kept[c].push_back(work[c][i] = signal.next(random));
    };
    const auto append = [&](int count, Samples(&kept)[2]) {
        for (int c = 0; c < 2; ++c)
            kept[c].insert(kept[c].end(), work[c], work[c] + count);
    };
    for (int turn = 0; turn < 200; ++turn) {
        const int count = turn % 3 ? 16 : static_cast<int>(random() % 16) + 1;
        const int raised = 2 * mode * count;
        fill(count, in);
        ASSERT_EQ(oversampling.raiseRate(mode, subBlock, count), raised);
        append(raised, up);
        fill(raised, wide);
        ASSERT_EQ(oversampling.lowerRate(mode, subBlock, raised), count);
        append(count, down);
    }
    const PlainOversampling taps;
    for (int c = 0; c < (stereo ? 2 : 1); ++c) {
        Samples wanted = doubled(in[c], taps.upStage1Coeffs, 64);
        if (mode == 2)
            wanted = doubled(wanted, taps.upStage2Coeffs, 128);
        expectSameBits(up[c], wanted, c == 0 ? "left, up" : "right, up");
        expectSameBits(down[c],
                       lowered(wide[c], mode == 1 ? down2xCoeffs : down4xCoeffs,
                               static_cast<std::size_t>(2 * mode)),
                       c == 0 ? "left, down" : "right, down");
    }
}

class OversamplingTest : public testing::TestWithParam<ProcessingForm> { };

}  // namespace

// One object for all cases: clear() must remove all state of the previous case.
TEST_P(OversamplingTest, GivesEveryBitOfTheDirectForm)
{
    Oversampling oversampling(GetParam());
    for (const Signal& signal : kSignals)
        for (const int mode : {1, 2})
            for (const bool stereo : {true, false}) {
                compare(oversampling, mode, stereo, signal);
                if (HasFatalFailure())
                    return;
                oversampling.clear();
            }
}

const ProcessingForms kForms;
INSTANTIATE_TEST_SUITE_P(Forms, OversamplingTest, testing::ValuesIn(kForms.begin(), kForms.end()),
                         [](const auto& form) { return std::string(nameOf(form.param)); });

// The sum is the filter's gain at 0 Hz. A change of any single tap changes it.
TEST(Decimator, TapsAddUpToTheirSum)
{
    for (const auto& [half, sum] :
         {std::pair(down2xCoeffs, 1.000234739969064), std::pair(down4xCoeffs, 1.0022839337255172)})
        EXPECT_NEAR(2.0 * std::accumulate(half, half + kDecimationTaps - 1, 0.0)
                        + half[kDecimationTaps - 1],
                    sum, 1e-12);
}

TEST(ProcessingForms, AreThoseThatLinuxReportsAsSupported)
{
    std::ifstream file("/proc/cpuinfo");
    if (!file)
        GTEST_SKIP() << "needs Linux";
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const auto has = [&](const char* flag) { return text.find(flag) != std::string::npos; };
    ASSERT_TRUE(has(" sse2 "));
    std::vector<ProcessingForm> wanted{ProcessingForm::Plain, ProcessingForm::Sse2};
    if (has(" avx2 "))
        wanted.push_back(ProcessingForm::Avx2);
    if (has(" avx2 ") && has(" avx512f ") && has(" avx512dq ") && has(" avx512vl "))
        wanted.push_back(ProcessingForm::Avx512);
    const ProcessingForms forms;
    EXPECT_EQ(std::vector<ProcessingForm>(forms.begin(), forms.end()), wanted);
    EXPECT_EQ(bestProcessingForm(), wanted.back());
}
