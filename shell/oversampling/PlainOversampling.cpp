// Design of the filters, and their plain form.
//
// The order of the additions is part of the result, which the kernels have to match bit for bit.
#include "shell/oversampling/PlainOversampling.h"

#include "dsp/ElementaryFunctions.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr double kPi = 3.14159265358979323846;

// Half-band interpolator of 2 * half - 1 taps, centred at half - 1: the periodic sinc of that
// period under a Blackman window (its cosine counted from the centre, hence the plus sign).
void designHalfBand(double* coeffs, int half)
{
    const double taps = 2 * half - 1;
    for (int i = 0; i < half; ++i) {
        // sin(i * pi / 2), exactly. The stages skip the taps that are 0.
        const double sign = i % 2 == 0 ? 0.0 : i % 4 == 1 ? 1.0 : -1.0;
        double v = i == 0 ? 0.5 : sign / (elementary::sine(i * kPi / taps) * (taps + 1.0));
        v *= 0.42 + 0.5 * elementary::cosine(2.0 * kPi * i / taps)
            + 0.08 * elementary::cosine(4.0 * kPi * i / taps);
        coeffs[half - 1 + i] = 2.0 * v;
        coeffs[half - 1 - i] = 2.0 * v;
    }
}

// Doubles the rate of one channel and returns the new cursor. The ring has 2 * half entries and
// holds the input with a zero after each sample; the cursor `p` runs downward, so that
// ring[p + 2m] is the sample of m steps ago. Only the taps that meet a sample are visited, folded
// in pairs: half / 2 multiplications for the even output, the centre tap alone for the odd one.
//
// The ring is one sample too short for the far end of the filter: there the first pair reads the
// newest sample instead. That is part of the sound; the tap is only -8.6e-7.
int doubleRate(const double* coeffs, int half, double* ring, int p, const double* in, double* out,
               int count)
{
    const int mask = 2 * half - 1;
    for (int n = 0; n < count; ++n) {
        ring[p] = in[n];
        double even = 0.0;
        for (int k = 0; k < half; k += 2)
            even += coeffs[k] * (ring[(p + 2 * half - k) & mask] + ring[(p + 2 + k) & mask]);
        p = (p + mask) & mask;
        out[2 * n] = even;

        ring[p] = 0.0;
        const double odd = coeffs[half - 1] * ring[(p + half + 1) & mask];
        p = (p + mask) & mask;
        out[2 * n + 1] = odd;
    }
    return p;
}

// Low-passes one channel and returns the new cursor. A sample is used from the step after its own
// on, so that the centre lies 128 steps back.
int lowPass(const double* coeffs, double* ring, int cursor, const double* in, double* out,
            int count)
{
    constexpr int mask = 255;
    constexpr int centre = kDecimationTaps - 1;
    for (int i = 0; i < count; ++i) {
        ring[cursor] = in[i];
        cursor = (cursor + 1) & mask;
        int forward = cursor;
        int backward = (cursor + 254) & mask;
        double y = 0.0;
        for (int k = 0; k < centre; ++k) {
            y += coeffs[k] * (ring[forward] + ring[backward]);
            forward = (forward + 1) & mask;
            backward = (backward + 255) & mask;
        }
        y += coeffs[centre] * ring[forward];
        out[i] = y;
    }
    return cursor;
}

}  // namespace

PlainOversampling::PlainOversampling() : upStage1Coeffs{}, upStage2Coeffs{}
{
    designOversamplingFilters();
    clear();
}

void PlainOversampling::designOversamplingFilters()
{
    designHalfBand(upStage1Coeffs, 64);
    designHalfBand(upStage2Coeffs, 128);
}

void PlainOversampling::clear()
{
    for (double* ring : {upRing1L, upRing1R})
        std::fill_n(ring, std::size(upRing1L), 0.0);
    for (double* ring : {upRing2L, upRing2R, downRingL, downRingR})
        std::fill_n(ring, std::size(upRing2L), 0.0);
    upIndex1 = 127;
    upIndex2 = 255;
    downIndex = 255;
}

void PlainOversampling::firstDoubling(const SubBlock& in, const SubBlock& out, int count)
{
    const int start = upIndex1;
    upIndex1 = doubleRate(upStage1Coeffs, 64, upRing1L, start, in.left, out.left, count);
    if (in.right)
        doubleRate(upStage1Coeffs, 64, upRing1R, start, in.right, out.right, count);
}

void PlainOversampling::secondDoubling(const SubBlock& in, const SubBlock& out, int count)
{
    const int start = upIndex2;
    upIndex2 = doubleRate(upStage2Coeffs, 128, upRing2L, start, in.left, out.left, count);
    if (in.right)
        doubleRate(upStage2Coeffs, 128, upRing2R, start, in.right, out.right, count);
}

void PlainOversampling::decimationFilter(const double* coeffs, const SubBlock& in,
                                         const SubBlock& out, int count)
{
    const int start = downIndex;
    downIndex = lowPass(coeffs, downRingL, start, in.left, out.left, count);
    if (in.right)
        lowPass(coeffs, downRingR, start, in.right, out.right, count);
}

void keepOddSamples(const double* in, double* out, int count)
{
    for (int i = 0; i < count; ++i)
        out[i] = in[2 * i + 1];
}
