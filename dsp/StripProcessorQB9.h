// One channel's pre-amplifier strip: it drives the equaliser strips harder or softer and takes the
// drive back behind them, and adds a polarity switch, a high-pass, a boost at 28 kHz and an output
// gain. It has no saturation of its own.
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
    // applies a waiting change of polarity at once.
    void setSampleRate(double rate);

    // All take a knob position from 0 to 1. Levels go on beyond 16 dB for positions outside, but
    // stay finite; the others take the nearest step or switch position.
    void setDrive(double v);
    void setHpf(double v);
    void setOutput(double v);
    void set28k(double v);
    void setPhase(double v);  // only marks a change as waiting

    // The polarity stage, in place: keeps up the polarity in force, or carries out a waiting change
    // at the quietest sample. The float forms take any count, the others up to kMaxCount.
    void applyPhase(double* x, int n);
    void applyPhaseFloat(float* x, int n);

    // Both channels change at one point, where they are quietest together. The caller hands in both
    // strips' `inverted` and clears both strips' `phaseChangePending` afterwards.
    void applyPhaseLinked(double* a, double* b, int* invertedA, int* invertedB, int n);
    void applyPhaseLinkedFloat(float* a, float* b, int* invertedA, int* invertedB, int n);

    // In front of the equaliser strips and behind them, on the same samples; up to kMaxCount.
    void processInputStage(double* x, int n);
    void processOutputStage(double* x, int n);

    // Moves the drive on by one sample; returns what takes it back out behind the equaliser strips.
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

    // A gain one sample later; the add-and-subtract keeps denormal numbers out of it.
    static double smoothed(double current, double target, double coeff)
    {
        current += (target - current) * coeff;
        current += 1e-14;
        current -= 1e-14;
        return current;
    }

    static constexpr int kMaxCount = 64;  // samples of a sub-block
    static constexpr double kInitialSampleRate = 44100.0;

    // Asked for
    double sampleRate = kInitialSampleRate;  // Hz
    double outputGainTarget = 1.0;
    double driveGainTarget = 1.0;
    double driveMakeupTarget = 1.0;  // what remains of the drive after compensation
    int boostOn = 0;
    int stripActive = 1;         // gate of all stages; nothing in the system clears it
    int phaseChangePending = 0;  // waits for a quiet sample

    // Follows from it
    double smoothingCoeff = 0.0;
    double boostGain = 1.0;

    // Left behind by the signal; the filters hold their settings as well
    int inverted = 0;  // polarity in force
    double outputGainCurrent = 1.0;
    double driveGainCurrent = 1.0;
    double driveMakeupCurrent = 1.0;
    std::array<double, kMaxCount> compensation;  // per sample, from input stage to output stage
    BiquadFilter highPass{kInitialSampleRate, FilterType::HighPass2, 1000.0, 1.0, 0.0};
    BiquadFilter boostBand{kInitialSampleRate, FilterType::BandPass, 1000.0, 1.0, 0.0};
};
