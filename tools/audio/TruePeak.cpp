#include "tools/audio/TruePeak.h"

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

// Places are taken in groups, whose sums stay in vector registers.
constexpr std::size_t kLanes = 4;
constexpr std::size_t kGroup = 4 * kLanes;
using Vector [[gnu::vector_size(4 * kLanes)]] = float;
using Unaligned [[gnu::vector_size(4 * kLanes), gnu::aligned(4), gnu::may_alias]] = float;

constexpr double kPi = 3.14159265358979323846;

constexpr std::size_t kTaps = 64;
constexpr double kBeta = 7.0;  // of the Kaiser window: 70 dB

// Modified Bessel function of the first kind and order 0, by its power series.
double bessel(double x)
{
    double term = 1.0, sum = 1.0;
    for (int k = 1; term > 1e-12 * sum; ++k) {
        term *= x * x / (4.0 * k * k);
        sum += term;
    }
    return sum;
}

// A sinc in a Kaiser window, sampled at the distances of the taps from a place `offset` samples
// behind the middle one.
std::vector<float> interpolator(double offset)
{
    std::vector<float> taps(kTaps);
    for (std::size_t k = 0; k < kTaps; ++k) {
        const double x = static_cast<double>(k) - (kTaps / 2 - 1) - offset;
        const double place = x / (kTaps / 2.0);
        const double window = bessel(kBeta * std::sqrt(std::max(0.0, 1.0 - place * place)));
        taps[k] = static_cast<float>(std::sin(kPi * x) / (kPi * x) * window / bessel(kBeta));
    }
    return taps;
}

// The highest level of kGroup interpolated places, the first of which lies behind line[kTaps/2 -
// 1].
float peakOfGroup(const float* taps, const float* line)
{
    Vector sums[kGroup / kLanes]{};
    for (std::size_t k = 0; k < kTaps; ++k)
        for (std::size_t i = 0; i < kGroup / kLanes; ++i)
            sums[i] += taps[k] * reinterpret_cast<const Unaligned&>(line[k + i * kLanes]);
    float highest = 0.0f;
    for (const Vector& sum : sums)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            highest = std::max(highest, std::fabs(sum[lane]));
    return highest;
}

}  // namespace

TruePeak::TruePeak(int rate) : line(kTaps - 1), highest(0.0f), gain(0.0f)
{
    const int factor = rate < 96000 ? 4 : rate < 192000 ? 2 : 1;
    for (int phase = 1; phase < factor; ++phase)
        phases.push_back(interpolator(static_cast<double>(phase) / factor));
    for (const std::vector<float>& taps : phases) {
        float sum = 0.0f;
        for (const float tap : taps)
            sum += std::fabs(tap);
        gain = std::max(gain, sum);
    }
}

void TruePeak::add(const float* samples, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        highest = std::max(highest, std::fabs(samples[i]));
    line.insert(line.end(), samples, samples + count);
    interpolate(count);
    line.erase(line.begin(), line.end() - (kTaps - 1));
}

double TruePeak::peak()
{
    const std::vector<float> silence(kTaps / 2);
    add(silence.data(), silence.size());
    return static_cast<double>(highest);
}

void TruePeak::interpolate(std::size_t count)
{
    line.resize(line.size() + kGroup);  // so that the last group is whole; silence follows there
    for (std::size_t start = 0; start < count; start += kGroup) {
        const float* first = line.data() + start;
        float loudest = 0.0f;
        for (std::size_t i = 0; i < kTaps + kGroup; ++i)
            loudest = std::max(loudest, std::fabs(first[i]));
        if (loudest * gain <= highest)
            continue;  // no place there can be higher
        for (const std::vector<float>& taps : phases)
            highest = std::max(highest, peakOfGroup(taps.data(), first));
    }
    line.resize(line.size() - kGroup);
}

}  // namespace tool
