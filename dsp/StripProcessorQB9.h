// One channel's pre-amplifier strip: polarity switch, drive gain, high-pass and a boost at 28 kHz
// in front of the equaliser strips; compensation of the drive and output gain behind them. It has
// no saturation of its own.
#pragma once

#include "dsp/BiquadFilter.h"

#include <array>

class StripProcessorQB9 {
public:
    StripProcessorQB9();
    virtual ~StripProcessorQB9() = default;
    StripProcessorQB9(const StripProcessorQB9&) = delete;
    StripProcessorQB9& operator=(const StripProcessorQB9&) = delete;

    // Hz, stored without limits; the filters apply their own. Ends every glide at its target and
    // carries out a pending change of polarity.
    void setSampleRate(double rate);

    // All take a knob position from 0 to 1. A position outside gives a finite level beyond 16 dB,
    // or the nearest step or switch position.
    void setDrive(double v);
    void setHpf(double v);
    void setOutput(double v);
    void set28k(double v);
    void setPhase(double v);  // marks a change as pending

    // The polarity stage, in place: applies the present polarity, or carries out a pending change
    // at the quietest sample. The float forms take any count, the others up to kMaxCount.
    void applyPhase(double* x, int n);
    void applyPhaseFloat(float* x, int n);

    // Changes both channels at the sample where the sum of their magnitudes is least. The caller
    // passes both strips' `inverted` and clears both strips' `phaseChangePending` afterwards.
    void applyPhaseLinked(double* a, double* b, int* invertedA, int* invertedB, int n);
    void applyPhaseLinkedFloat(float* a, float* b, int* invertedA, int* invertedB, int n);

    // Before and after the equaliser strips, on the same samples; n is at most kMaxCount.
    void processInputStage(double* x, int n);
    void processOutputStage(double* x, int n);

    // Advances the drive by one sample; returns the gain that compensates it in the output stage.
    double stepDrive()
    {
        driveGainCurrent = smoothed(driveGainCurrent, driveGainTarget, smoothingCoeff);
        driveMakeupCurrent = smoothed(driveMakeupCurrent, driveMakeupTarget, smoothingCoeff);
        return 1.0 / driveGainCurrent * driveMakeupCurrent;
    }
    void stepOutputGain()
    {
        outputGainCurrent = smoothed(outputGainCurrent, outputGainTarget, smoothingCoeff);
    }

    // A gain one sample later; adding and subtracting 1e-14 turns denormal numbers into 0.
    static double smoothed(double current, double target, double coeff)
    {
        current += (target - current) * coeff;
        current += 1e-14;
        current -= 1e-14;
        return current;
    }

    static constexpr int kMaxCount = 64;  // samples of a sub-block
    static constexpr double kInitialSampleRate = 44100.0;

    // Settings
    double sampleRate = kInitialSampleRate;  // Hz
    double outputGainTarget = 1.0;
    double driveGainTarget = 1.0;
    double driveMakeupTarget = 1.0;  // the part of the drive that is not compensated, a gain
    int boostOn = 0;
    int stripActive = 1;         // 0 turns all stages off; never cleared in the product
    int phaseChangePending = 0;  // until the polarity stage runs

    // Derived from the settings
    double smoothingCoeff = 0.0;
    double boostGain = 1.0;

    // State of the signal; the filters also hold settings
    int inverted = 0;  // the present polarity
    double outputGainCurrent = 1.0;
    double driveGainCurrent = 1.0;
    double driveMakeupCurrent = 1.0;
    std::array<double, kMaxCount> compensation;  // per sample, from input stage to output stage
    BiquadFilter highPass{kInitialSampleRate, FilterType::HighPass2, 1000.0, 1.0, 0.0};
    BiquadFilter boostBand{kInitialSampleRate, FilterType::BandPass, 1000.0, 1.0, 0.0};
};
