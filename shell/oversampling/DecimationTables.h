// The stored low-passes that bring the oversampled signal back to the host's rate.
#pragma once

// Taps 0 to 126 and the centre, 127; tap 254 - k repeats tap k.
constexpr int kDecimationTaps = 128;

extern const double down2xCoeffs[kDecimationTaps];
extern const double down4xCoeffs[kDecimationTaps];
