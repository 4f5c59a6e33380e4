#include "tools/audio/Quantizer.h"

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

// For 44.1 and 48 kHz: the five coefficients of S. P. Lipshitz, J. Vanderkooy and R. A. Wannamaker,
// "Minimally Audible Noise Shaping", J. Audio Eng. Soc. 39 (1991), fitted to the ear's sensitivity.
constexpr std::array<double, 5> kEarShaped{2.033, -2.165, 1.959, -1.590, 0.6149};
// For other rates: (1 - z^-1)^2, which lowers the noise below a sixth of the rate.
constexpr std::array<double, 5> kSecondOrder{2.0, -1.0, 0.0, 0.0, 0.0};

}  // namespace

Quantizer::Quantizer(int bits, Dither dither, int channels, int rate)
    : unusedBits(32 - bits), fullScale(std::ldexp(1.0, bits - 1)), dither(dither),
      feedback(rate >= 44100 && rate <= 48000 ? kEarShaped : kSecondOrder),
      errors(static_cast<std::size_t>(channels)), channel(0), clippedCount(0)
{
    if (dither != Dither::Shaped)
        feedback.fill(0.0);
}

void Quantizer::quantize(const float* interleaved, std::int64_t count, int* integers)
{
    for (std::int64_t i = 0; i < count; ++i) {
        std::array<double, kOrder>& error = errors[channel];
        channel = (channel + 1) % errors.size();

        double wanted =
            std::isnan(interleaved[i]) ? 0.0 : static_cast<double>(interleaved[i]) * fullScale;
        for (std::size_t k = 0; k < kOrder; ++k)
            wanted -= feedback[k] * error[k];
        double noise = 0.0;
        if (dither != Dither::None) {
            const auto first = static_cast<double>(random());
            noise = (first - static_cast<double>(random())) / 4294967296.0;
        }
        double level = std::nearbyint(wanted + noise);
        if (level > fullScale - 1.0 || level < -fullScale) {
            // Dither alone does not make a clipped sample.
            if (std::nearbyint(wanted) > fullScale - 1.0 || std::nearbyint(wanted) < -fullScale)
                ++clippedCount;
            level = std::clamp(level, -fullScale, fullScale - 1.0);
        }
        std::copy_backward(error.begin(), error.end() - 1, error.end());
        // Limited, so that clipped samples do not disturb those after them for long.
        error[0] = std::clamp(level - wanted, -2.0, 2.0);
        integers[i] = static_cast<int>(level) * (1 << unusedBits);
    }
}

}  // namespace tool
