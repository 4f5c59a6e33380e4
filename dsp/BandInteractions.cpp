// The interaction curves. Like the band models, they define the sound: presets and the worked
// values of the tests depend on every digit of the constants.
#include "dsp/BandInteractions.h"

#include "dsp/ElementaryFunctions.h"

#include <algorithm>
#include <cmath>

namespace {

double quadratic(double k2, double k1, double k0, double x)
{
    return k2 * (x * x) + k1 * x + k0;
}

// The magnitude of the sum of two gains, each limited to 16 dB, in units of 16 dB: 0 to 2.
double summedGain(double gainDb, double otherGainDb)
{
    const double a = std::clamp(gainDb, -16.0, 16.0);
    const double b = std::clamp(otherGainDb, -16.0, 16.0);
    return std::clamp(std::fabs(a + b) * 0.0625, 0.0, 2.0);
}

}  // namespace

Skirt shelfInteraction(double x, double gainDb, double otherGainDb)
{
    const bool cut = gainDb < 0.0;
    double mix, ratio, scale;
    if (x < 0.025) {
        mix = 20.8716 * x - 0.0240826;
        ratio = cut ? 1.0 : quadratic(238.095, -22.8571, 2.02262, x);
        scale = quadratic(-238.095, 22.8571, 0.977381, x);
    } else if (x < 0.167) {
        mix = 0.0286114 * elementary::logarithm(x) + 0.615374;
        ratio = cut ? -0.273109 * elementary::logarithm(1.03646 * x)
                    : -0.512777 * elementary::logarithm(1.92941 * x);
        scale = 1.41891 - 0.833567 * x;
    } else {
        mix = cut ? quadratic(-1.39553, 1.03096, 0.416749, x)
                  : quadratic(1.63263, -1.54008, 0.761662, x);
        ratio = cut ? quadratic(0.474206, -1.01824, 0.636822, x)
                    : quadratic(1.22163, -1.91064, 0.885006, x);
        scale = quadratic(-2.16859, 2.92434, 0.852115, x);
    }

    const double s = summedGain(gainDb, otherGainDb);
    double mixWeight, weight;
    if (s <= 1.0) {
        mixWeight = (1.0 - s) * 0.2 + s;
        weight = (1.0 - s) * 0.1 + s;
    } else {
        mixWeight = (s - 1.0) * 1.34 + (2.0 - s);
        weight = 1.0;
    }
    return {mix * mixWeight, (ratio - 1.0) * weight + 1.0, (scale - 1.0) * weight + 1.0};
}

Skirt bellInteraction(double x, double& q, double& gainDb, double otherGainDb)
{
    const bool cut = gainDb <= 0.0;
    const double xc = std::clamp(x, 0.0, 1.0);
    double mix, ratio;
    double qFactor = 1.0;
    double gainFactor = 1.0;
    if (xc <= 0.064) {
        mix = 0.100494
            * elementary::logarithm(373.844 * xc);  // negative, thus no skirt, below 0.0027
        ratio = 1.0;
    } else if (xc <= 0.2) {
        mix = quadratic(-2.93607, 1.14277, 0.238889, xc);
        ratio = quadratic(3.82966, -4.09926, 1.24667, xc);
        if (cut)
            gainFactor = quadratic(3.82966, -1.59926, 1.06667, xc);
    } else {
        const double boostQFactor = quadratic(0.481178, -0.84529, 1.14981, xc);
        if (cut) {
            mix = quadratic(1.29121, -1.83502, 0.665356, xc);
            ratio = quadratic(-0.505388, -0.41197, 0.682609, xc);
            qFactor = 2.0 - boostQFactor;
            gainFactor = quadratic(0.465542, -0.685048, 1.01839, xc);
        } else {
            mix = 0.384056 - 0.175833 * xc;
            ratio = quadratic(1.83191, -2.6451, 1.03574, xc);
            qFactor = boostQFactor;
            gainFactor = quadratic(0.30061, -0.500132, 1.088, xc);
        }
    }

    const double s = summedGain(gainDb, otherGainDb);
    double mixWeight, weight;
    if (s <= 1.0) {
        mixWeight = weight = (1.0 - s) * 0.2 + s;
    } else {
        // Above a summed 16 dB only the mix still changes, with a weight that depends on xc.
        mixWeight = quadratic(-2.73452, 3.47681, 0.818196, xc) * (s - 1.0) + (2.0 - s);
        weight = 1.0;
    }
    q = q + (q * qFactor - q) * weight;
    gainDb = gainDb + (gainDb * gainFactor - gainDb) * weight;
    return {mix * mixWeight, (ratio - 1.0) * weight + 1.0, 1.0};
}
