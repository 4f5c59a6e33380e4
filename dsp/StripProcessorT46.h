// One channel's equaliser strip: a model of an input transformer, three interacting bands with
// stepped frequencies, and models of an amplifier and an output transformer. Each band is a
// filtered copy of the signal, subtracted with the factor 1 - G, where G is the band's linear gain.
#pragma once

#include "dsp/BandInteractions.h"
#include "dsp/BandMode.h"
#include "dsp/BandModels.h"
#include "dsp/BandPairs.h"
#include "dsp/BiquadFilter.h"
#include "dsp/ControlLaws.h"
#include "dsp/DampingFilterPair.h"
#include "dsp/PeakSection.h"
#include "dsp/ShelfSection.h"

class StripProcessorT46 {
public:
    StripProcessorT46();
    virtual ~StripProcessorT46() = default;
    StripProcessorT46(const StripProcessorT46&) = delete;
    StripProcessorT46& operator=(const StripProcessorT46&) = delete;

    // Hz, stored without limits; the filters apply their own. Ends every gain glide at its target.
    // A section that is not in use takes the rate when its band is in circuit again.
    void setSampleRate(double rate);

    // All take a knob position from 0 to 1. A position outside gives a finite gain beyond 16 dB, or
    // the nearest step or switch position.
    void setProcessOn(float x);
    void setLowShelf(double x);  // acts from 63 to 300 Hz only
    void setLowFrequency(double x);
    void setLowGain(double x);
    void setMidFrequency(double x);
    void setMidGain(double x);
    void setHighShelf(double x);
    void setHighFrequency(double x);
    void setHighGain(double x);
    void setInputTransformerDisable(double x);
    void setOutputTransformerDisable(double x);
    void setAmpDisable(double x);

    void configureAmp();        // slope and bias of the amplifier's curve
    void updateFixedFilters();  // DC block and damping, at the present rate

    // Sets up every filter from the settings and starts a 150 ms glide of the gains. The setters of
    // bands, process switch and amplifier end with it.
    void update();

    // Between the two, setters postpone the update, so that several changes cost only one. The
    // sound is the same: an update does not depend on the update before it.
    void holdUpdates();
    void releaseUpdates();

    // In place, at the rate of setSampleRate. A count of 0 or less does nothing.
    void process(double* buffer, int count);

    // Advances the gains by one sample.
    void stepGains()
    {
        if (gainRampCount == 0) {
            lowGain = lowGainTarget;
            midGain = midGainTarget;
            highGain = highGainTarget;
            outputGain = outputGainTarget;
            return;
        }
        --gainRampCount;
        lowGain += lowGainStep;
        midGain += midGainStep;
        highGain += highGainStep;
        outputGain += outputGainStep;
    }

    static constexpr double kInitialSampleRate = 96000.0;

    // Settings
    double sampleRate = kInitialSampleRate;  // Hz
    int processOn = 1;
    int lowOn = 0, midOn = 0, highOn = 0;
    int lowShelfRequested = 0, highShelfOn = 0;
    double lowFrequency = 1000.0, midFrequency = 1000.0, highFrequency = 1000.0;  // Hz, last step
    double lowGainDb = 0.0, midGainDb = 0.0, highGainDb = 0.0;                    // dB, quantised
    double lowGainNormal = 0.5, midGainNormal = 0.5, highGainNormal = 0.5;        // positions
    int inputTransformerOn = 1, ampOn = 1, outputTransformerOn = 1;

    // Derived from the settings
    int lowShelfActive = 0;
    int bandMode = kNoBands;
    double ampSlope = 0.0, ampBias = 0.0;
    double sectionLimitDrive = 0.0;  // the sections' limiters stay off
    double dampingAmount = 1.0;
    double lowGainTarget = 1.0, midGainTarget = 1.0, highGainTarget = 1.0, outputGainTarget = 1.0;
    double lowGainStep = 0.0, midGainStep = 0.0, highGainStep = 0.0, outputGainStep = 0.0;
    int gainRampLength = glideSamples(kInitialSampleRate);

    // State of the signal; the filters also hold settings
    double lowGain = 1.0, midGain = 1.0, highGain = 1.0, outputGain = 1.0;
    int gainRampCount = 0;
    BiquadFilter dcBlock{kInitialSampleRate, FilterType::HighPass1, 1000.0, 1.0, 0.0};
    DampingFilterPair damping{kInitialSampleRate};
    BiquadFilter inputLowPass{kInitialSampleRate, FilterType::LowPass1, 50.0, 1.0, 0.0};
    BiquadFilter inputHighPass{kInitialSampleRate, FilterType::HighPass1, 50.0, 1.0, 0.0};
    BiquadFilter outputLowPass{kInitialSampleRate, FilterType::LowPass1, 30.0, 1.0, 0.0};
    BiquadFilter outputHighPass{kInitialSampleRate, FilterType::HighPass1, 30.0, 1.0, 0.0};
    ShelfSection lowShelf{kInitialSampleRate, FilterType::LowPass1};
    ShelfSection highShelf{kInitialSampleRate, FilterType::HighPass1};
    PeakSection midBell{kInitialSampleRate, FilterType::BandPass};
    PeakSection highBell{kInitialSampleRate, FilterType::BandPass};
    PeakSection lowBell{kInitialSampleRate, FilterType::BandPass};

private:
    void settingChanged();

    bool updatesHeld = false;
    bool updatePending = false;

    // A band in circuit, during an update.
    struct BandInCircuit {
        Band band;
        double stepHz;
        double knobDb;
        BandModel model;
    };

    void applyShelfRule();
    void chooseBandMode();

    BandInCircuit inCircuit(Band band) const;
    PeakSection& bellOf(Band band);
    void setGainTarget(const BandInCircuit& band);
    void updateOneBand(Band band);
    void updateTwoBands(const BandPair& pair);
    void updateThreeBands();
    void applyAlone(const BandInCircuit& band);
    void applyLower(const BandInCircuit& band, const Skirt& skirt);
    void applyUpper(const BandInCircuit& band, const Skirt& skirt, UpperRatio ratio);
    void applyShelf(ShelfSection& section, double frequency, double mix, double ratio);
    void applyBell(PeakSection& section, double frequency, double q, double highMix,
                   double highRatio, double lowMix, double lowRatio);
    void startGainRamp();

    void processInputTransformer(double* buffer, int count);
    void processBands(double* buffer, int count);
    void processAmp(double* buffer, int count);
    void processOutputTransformer(double* buffer, int count);
    double processBandsOf(int mode, double x);
};
