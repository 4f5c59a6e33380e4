// The design of a BiquadFilter: coefficients by the cookbook formulas (bilinear transform), and
// from these the zeros, poles and gain.
#include "dsp/BiquadFilter.h"

#include "dsp/ControlLaws.h"
#include "dsp/ElementaryFunctions.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;

// Q falls towards half the sample rate: times 1 - (frequency / (rate * edge))^power. The edge lies
// just above one half on purpose, so that this factor stays positive up to the frequency limit.
struct QWarp {
    double edge, power;
};

struct Design {
    double divisor, b0, b1, b2, a1, a2;  // b's and a's are yet to be divided by the divisor
};

double warpedQ(const QWarp& warp, double q, double frequency, double sampleRate)
{
    return q * (1.0 - elementary::power(frequency / (sampleRate * warp.edge), warp.power));
}

// clang-format off
QWarp warpOf(FilterType type)
{
    switch (type) {
    case FilterType::HighPass2: return {0.5001,  6.0};
    case FilterType::LowPass2:  return {0.50001, 8.0};
    case FilterType::LowShelf:  return {0.5001,  3.5};
    case FilterType::HighShelf: return {0.5001,  4.0};
    default:                    return {0.5001,  2.8};
    }
}

// The formulas of the cookbook, with its A and alpha, for s = sin(w), c = cos(w) and the warped Q.
Design secondOrder(FilterType type, double s, double c, double qw, double gainDb)
{
    const double alpha = s / (2.0 * qw);
    const double A = elementary::powerOfTen(gainDb / 40.0);
    const double P = A + 1.0;
    const double M = A - 1.0;
    const double B = std::sqrt(A) / qw;
    switch (type) {
    //                           divisor          b0                b1         b2                a1        a2
    case FilterType::HighPass2:  return {1.0 + alpha, (1.0 + c) * 0.5, -(1.0 + c), (1.0 + c) * 0.5, -2.0 * c, 1.0 - alpha};
    case FilterType::BandPass:   return {1.0 + alpha, alpha,           0.0,        -alpha,          -2.0 * c, 1.0 - alpha};
    case FilterType::Notch:      return {1.0 + alpha, 1.0,             -2.0 * c,   1.0,             -2.0 * c, 1.0 - alpha};
    case FilterType::LowPass2:   return {1.0 + alpha, (1.0 - c) * 0.5, 1.0 - c,    (1.0 - c) * 0.5, -2.0 * c, 1.0 - alpha};
    case FilterType::AllPass:    return {1.0 + alpha, 1.0 - alpha,     -2.0 * c,   1.0 + alpha,     -2.0 * c, 1.0 - alpha};
    case FilterType::PeakingEq:
        return {1.0 + alpha / A, 1.0 + alpha * A, -2.0 * c, 1.0 - alpha * A, -2.0 * c, 1.0 - alpha / A};
    case FilterType::LowShelf:
        return {P + M * c + B * s,
                A * (P - M * c + B * s), 2.0 * A * (M - P * c), A * (P - M * c - B * s),
                -2.0 * (M + P * c), P + M * c - B * s};
    case FilterType::HighShelf:
        return {P - M * c + B * s,
                A * (P + M * c + B * s), -2.0 * A * (M + P * c), A * (P + M * c - B * s),
                2.0 * (M - P * c), P - M * c - B * s};
    default:
        return {1.0, 1.0, 0.0, 0.0, 0.0, 0.0};
    }
}
// clang-format on

// Roots of k2 * z^2 + k1 * z + k0.
struct Roots {
    double re1, im1, re2, im2;
};

Roots rootsOf(double k2, double k1, double k0)
{
    const double d = k1 * k1 - 4.0 * k2 * k0;
    if (d < 0.0) {
        const double re = -k1 / (2.0 * k2);
        const double im = -std::sqrt(-d) / (2.0 * k2);
        return {re, im, re, -im};
    }
    const double root = std::sqrt(d);
    return {(-k1 - root) / (2.0 * k2), 0.0, (-k1 + root) / (2.0 * k2), 0.0};
}

double limitedFrequency(double hz, double sampleRate)
{
    return limited(hz, 0.001, sampleRate * 0.499);
}

double limitedQ(double q)
{
    return limited(q, 0.0001, 1000.0);
}

}  // namespace

BiquadFilter::BiquadFilter(double sampleRate, FilterType type, double frequency, double q,
                           double gainDb)
    : sampleRate(sampleRate), type(type), frequency(frequency), q(q), gainDb(gainDb),
      rampLength(static_cast<unsigned int>(glideSamples(sampleRate)))
{
}

void BiquadFilter::setSampleRate(double rate)
{
    constexpr double kMinRate = 20000.0, kMaxRate = 400000.0, kFallbackRate = 44100.0;
    sampleRate = rate >= kMinRate && rate <= kMaxRate ? rate : kFallbackRate;
    rampLength = static_cast<unsigned int>(glideSamples(sampleRate));
    redesign();
    setLimitDrive(limitDrive);
}

void BiquadFilter::setFrequency(double hz)
{
    design(limitedFrequency(hz, sampleRate), q);
}

void BiquadFilter::setQ(double quality)
{
    design(frequency, limitedQ(quality));
}

void BiquadFilter::setFrequencyAndQ(double hz, double quality)
{
    design(limitedFrequency(hz, sampleRate), limitedQ(quality));
}

void BiquadFilter::design(double hz, double quality)
{
    if (isDesigned() && hz == frequency && quality == q)
        return;
    frequency = hz;
    q = quality;
    redesign();
}

void BiquadFilter::setEnabled(int on)
{
    if (on == enabled)
        return;
    enabled = on;
    redesign();
}

void BiquadFilter::setInstant(bool atOnce)
{
    instant = atOnce;
    snapToTarget();
}

void BiquadFilter::setLimitDrive(double drive)
{
    limitDrive = drive;
    if (!(drive > 0.0)) {
        limitCeiling = 1000.0;
        limitSlope = 0.001;
        limitEnabled = 0;
        return;
    }
    // The ceiling falls as drive and frequency rise, and rises with Q.
    const double load = drive * (44100.0 / sampleRate) * 3.0 * frequency * 0.01;
    limitCeiling = 1000.0 / (load / elementary::power(q, 0.75));
    limitSlope = 1.0 / limitCeiling;
    limitEnabled = 1;
}

void BiquadFilter::setLimitBias(double bias)
{
    limitBias = bias;
}

void BiquadFilter::snapToTarget()
{
    for (Glide* value : {&zero1Re, &zero1Im, &zero2Re, &zero2Im, &pole1Re, &pole1Im, &pole2Re,
                         &pole2Im, &rampGain}) {
        value->current = value->target;
        value->step = 0.0;
    }
    rampCount = 0;
}

void BiquadFilter::process(double* buffer, int count)
{
    if (type == FilterType::None)
        return;
    if (isOff()) {
        clearHistory();
        return;
    }
    for (int i = 0; i < count; ++i)
        buffer[i] = step(buffer[i]);
}

void BiquadFilter::redesign()
{
    designCoefficients();
    placePolesAndZeros();
    everDesigned = true;
}

void BiquadFilter::designCoefficients()
{
    a0 = b0 = 1.0;
    a1 = a2 = b1 = b2 = 0.0;
    if (!enabled)
        return;  // the signal passes unchanged

    const double w = frequency * kTwoPi / sampleRate;
    const double s = elementary::sine(w);
    const double c = elementary::cosine(w);
    if (type == FilterType::HighPass1) {
        const double k = c / (1.0 + s);
        a1 = -k;
        b0 = (k + 1.0) * 0.5;
        b1 = -b0;
        return;
    }
    if (type == FilterType::LowPass1) {
        const double e = 2.0 - c;
        a1 = std::sqrt(e * e - 1.0) - e;
        b0 = a1 + 1.0;
        return;
    }
    const double qw = type == FilterType::AllPass ? q  // an all-pass keeps its Q at every frequency
                                                  : warpedQ(warpOf(type), q, frequency, sampleRate);
    const Design d = secondOrder(type, s, c, qw, gainDb);
    a0 = d.divisor;
    a1 = d.a1 / d.divisor;
    a2 = d.a2 / d.divisor;
    b0 = d.b0 / d.divisor;
    b1 = d.b1 / d.divisor;
    b2 = d.b2 / d.divisor;
}

void BiquadFilter::placePolesAndZeros()
{
    rampGain.target = b0;
    // At the lowest frequencies b0 of a low-pass rounds to 0: there are no zeros to compute.
    const Roots zeros = b0 == 0.0 ? Roots{0.0, 0.0, 0.0, 0.0} : rootsOf(b0, b1, b2);
    zero1Re.target = zeros.re1;
    zero1Im.target = zeros.im1;
    zero2Re.target = zeros.re2;
    zero2Im.target = zeros.im2;
    const Roots poles = rootsOf(1.0, a1, a2);
    pole1Re.target = poles.re1;
    pole1Im.target = poles.im1;
    pole2Re.target = poles.re2;
    pole2Im.target = poles.im2;

    for (Glide* value : {&zero1Re, &zero2Re, &zero1Im, &zero2Im, &pole1Re, &pole2Re, &pole1Im,
                         &pole2Im, &rampGain})
        value->step = stepTo(value->target, value->current);
    rampCount = static_cast<int>(rampLength);
    if (instant)
        snapToTarget();
}

// The step per sample of a glide; a denormal one becomes an exact 0.
double BiquadFilter::stepTo(double target, double current) const
{
    double perSample = (target - current) / rampLength;
    perSample += 1e-30;
    perSample -= 1e-30;
    return perSample;
}

BiquadFilter::Coefficients BiquadFilter::glide()
{
    --rampCount;
    for (Glide* value : {&zero1Re, &zero2Re, &zero1Im, &zero2Im, &pole1Re, &pole2Re, &pole1Im,
                         &pole2Im, &rampGain})
        value->current += value->step;
    const double gain = rampGain.current;
    return {gain, -gain * (zero1Re.current + zero2Re.current),
            gain * (zero1Re.current * zero2Re.current - zero1Im.current * zero2Im.current),
            -(pole1Re.current + pole2Re.current),
            pole1Re.current * pole2Re.current - pole1Im.current * pole2Im.current};
}
