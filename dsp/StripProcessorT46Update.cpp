// StripProcessorT46: from switches, steps and gains to the settings of every filter. A band's gain
// never enters a filter design: the sections get frequency, Q and skirts, the gain ramp gets the
// gain. No setting depends on the sample rate; only the filters' own design compensates for it.
#include "dsp/StripProcessorT46.h"

namespace {

constexpr double kSectionLimitBias = 0.09;

// The step per sample of a gain glide; one far below 1e-14 becomes an exact 0.
double gainStep(double target, double current, int length)
{
    double perSample = (target - current) / length;
    perSample += 1e-14;
    perSample -= 1e-14;
    return perSample;
}

// The skirt of a band next to a neighbour; a bell's Q and gain are corrected in place.
Skirt interaction(Band band, BandModel& model, double x, double otherGainDb)
{
    if (band == kLowShelfBand || band == kHighShelfBand)
        return shelfInteraction(x, model.gainDb, otherGainDb);
    return bellInteraction(x, model.q, model.gainDb, otherGainDb);
}

}  // namespace

void StripProcessorT46::update()
{
    updatePending = false;
    chooseBandMode();

    // For bands out of circuit: when one is switched on again, its gain is near its new target.
    lowGainTarget = decibelsToGain(lowGainDb * 1.02);
    midGainTarget = decibelsToGain(midGainDb * 1.02);
    highGainTarget = decibelsToGain(highGainDb * 1.02);

    switch (bandMode) {
    case kNoBands:
        dampingAmount = 0.6;
        outputGainTarget = 1.0;
        break;
    case kLowShelfBand:
    case kHighShelfBand:
    case kLowBellBand:
    case kMidBellBand:
    case kHighBellBand:
        updateOneBand(static_cast<Band>(bandMode));
        break;
    case kLowShelfBand | kMidBellBand | kHighShelfBand:
    case kLowBellBand | kMidBellBand | kHighShelfBand:
    case kLowShelfBand | kMidBellBand | kHighBellBand:
    case kLowBellBand | kMidBellBand | kHighBellBand:
        updateThreeBands();
        break;
    default:
        // kBandsOff: more damping than with no band in circuit, on purpose.
        dampingAmount = 0.9;
        outputGainTarget = 1.0;
        for (const BandPair& pair : kBandPairs)
            if (pair.mode() == bandMode)
                updateTwoBands(pair);
    }

    updateFixedFilters();
    startGainRamp();
}

void StripProcessorT46::chooseBandMode()
{
    if (!processOn) {
        bandMode = kBandsOff;
        return;
    }
    bandMode = kNoBands;
    bandMode += lowOn * (lowShelfActive ? kLowShelfBand : kLowBellBand);
    bandMode += highOn * (highShelfOn ? kHighShelfBand : kHighBellBand);
    bandMode += midOn * kMidBellBand;
}

StripProcessorT46::BandInCircuit StripProcessorT46::inCircuit(Band band) const
{
    switch (band) {
    case kLowShelfBand:
        return {band, lowFrequency, lowGainDb, lowShelfModel(lowGainNormal, lowFrequency)};
    case kLowBellBand:
        return {band, lowFrequency, lowGainDb, lowBellModel(lowGainNormal, lowFrequency)};
    case kHighShelfBand:
        return {band, highFrequency, highGainDb, highShelfModel(highGainNormal, highFrequency)};
    case kHighBellBand:
        return {band, highFrequency, highGainDb, highBellModel(highGainNormal, highFrequency)};
    case kMidBellBand:
        break;
    }
    return {band, midFrequency, midGainDb, midBellModel(midGainNormal, midFrequency)};
}

PeakSection& StripProcessorT46::bellOf(Band band)
{
    if (band == kLowBellBand)
        return lowBell;
    return band == kHighBellBand ? highBell : midBell;
}

void StripProcessorT46::setGainTarget(const BandInCircuit& band)
{
    const double gain = decibelsToGain(band.model.gainDb);
    if (band.band & kLowBands)
        lowGainTarget = gain;
    else if (band.band & kHighBands)
        highGainTarget = gain;
    else
        midGainTarget = gain;
}

void StripProcessorT46::updateOneBand(Band band)
{
    const BandInCircuit only = inCircuit(band);
    outputGainTarget = only.model.outputGain;
    dampingAmount = only.model.damping;
    applyAlone(only);
    setGainTarget(only);
}

void StripProcessorT46::updateTwoBands(const BandPair& pair)
{
    BandInCircuit lower = inCircuit(pair.lower);
    BandInCircuit upper = inCircuit(pair.upper);
    const double x = lower.stepHz / upper.stepHz;
    const bool byModel = pair.otherGain == OtherGain::Model;
    const double lowerDb = byModel ? lower.model.gainDb : lower.knobDb;
    const double upperDb = byModel ? upper.model.gainDb : upper.knobDb;
    const Skirt lowerSkirt = interaction(lower.band, lower.model, x, upperDb);
    const Skirt upperSkirt = interaction(upper.band, upper.model, x, lowerDb);

    dampingAmount = lower.model.damping * 0.7 + upper.model.damping * 0.4;
    outputGainTarget = pair.outputGain == OutputGain::MostlyLower
        ? lower.model.outputGain * 0.8 + upper.model.outputGain * 0.2
        : std::sqrt(lower.model.outputGain * upper.model.outputGain);

    applyLower(lower, lowerSkirt);
    applyUpper(upper, upperSkirt, pair.upperRatio);
    setGainTarget(lower);
    setGainTarget(upper);
}

void StripProcessorT46::updateThreeBands()
{
    BandInCircuit low = inCircuit(lowShelfActive ? kLowShelfBand : kLowBellBand);
    BandInCircuit mid = inCircuit(kMidBellBand);
    BandInCircuit high = inCircuit(highShelfOn ? kHighShelfBand : kHighBellBand);
    const double fL = low.stepHz;
    const double fM = mid.stepHz;
    const double fH = high.stepHz;

    // The mid band interacts on both sides; the second correction is applied to the first one's
    // result.
    const Skirt midUpper = interaction(mid.band, mid.model, fM / fH, high.knobDb);
    const Skirt midLower = interaction(mid.band, mid.model, fL / fM, low.knobDb);
    // The outer bands interact through one term, the same for both, with the low frequency as its
    // numerator; on purpose, also for the high band.
    const double acrossMid = (fL * 0.5) / fH;
    const Skirt lowSkirt = interaction(low.band, low.model, fL / fM + acrossMid, mid.knobDb);
    const Skirt highSkirt = interaction(high.band, high.model, fM / fH + acrossMid, mid.knobDb);

    // 0.33 and not 1/3, on purpose: the sum of three bands ends 0.09 dB below their mean.
    constexpr double kShare = 0.33;
    dampingAmount = (low.model.damping + mid.model.damping + high.model.damping) * kShare;
    outputGainTarget =
        (low.model.outputGain + mid.model.outputGain + high.model.outputGain) * kShare;

    applyLower(low, lowSkirt);
    applyBell(midBell, mid.model.frequency, mid.model.q, midLower.mix, 1.0 / midLower.ratio,
              midUpper.mix, midUpper.ratio);
    applyUpper(high, highSkirt, UpperRatio::Inverted);
    setGainTarget(low);
    setGainTarget(mid);
    setGainTarget(high);
}

void StripProcessorT46::applyAlone(const BandInCircuit& band)
{
    if (band.band == kLowShelfBand)
        applyShelf(lowShelf, band.model.frequency, 0.0, 1.0);
    else if (band.band == kHighShelfBand)
        applyShelf(highShelf, band.model.frequency, 0.0, 1.0);
    else
        applyBell(bellOf(band.band), band.model.frequency, band.model.q, 0.0, 1.0, 0.0, 1.0);
}

// The lower of two bands has its skirt on the upper side.
void StripProcessorT46::applyLower(const BandInCircuit& band, const Skirt& skirt)
{
    if (band.band == kLowShelfBand)
        applyShelf(lowShelf, band.model.frequency * skirt.scale, skirt.mix, skirt.ratio);
    else
        applyBell(bellOf(band.band), band.model.frequency, band.model.q, 0.0, 1.0, skirt.mix,
                  skirt.ratio);
}

// The upper of two bands has its skirt on the lower side, with ratio and scale inverted.
void StripProcessorT46::applyUpper(const BandInCircuit& band, const Skirt& skirt, UpperRatio ratio)
{
    const double upperRatio = ratio == UpperRatio::Inverted ? 1.0 / skirt.ratio : skirt.ratio;
    if (band.band == kHighShelfBand)
        applyShelf(highShelf, band.model.frequency / skirt.scale, skirt.mix, upperRatio);
    else
        applyBell(bellOf(band.band), band.model.frequency, band.model.q, skirt.mix, upperRatio, 0.0,
                  1.0);
}

void StripProcessorT46::applyShelf(ShelfSection& section, double frequency, double mix,
                                   double ratio)
{
    if (section.sampleRate != sampleRate)
        section.setSampleRate(sampleRate);
    section.setAll(frequency, mix, ratio);
    section.setEnabled();
    section.setLimitBias(kSectionLimitBias);
    section.setLimitDrive(sectionLimitDrive);
}

void StripProcessorT46::applyBell(PeakSection& section, double frequency, double q, double highMix,
                                  double highRatio, double lowMix, double lowRatio)
{
    if (section.sampleRate != sampleRate)
        section.setSampleRate(sampleRate);
    section.setAll(frequency, q, highMix, highRatio, lowMix, lowRatio);
    section.setEnabled();
    section.setLimitBias(kSectionLimitBias);
    section.setLimitDrive(sectionLimitDrive);
}

void StripProcessorT46::startGainRamp()
{
    gainRampCount = gainRampLength;
    lowGainStep = gainStep(lowGainTarget, lowGain, gainRampLength);
    midGainStep = gainStep(midGainTarget, midGain, gainRampLength);
    highGainStep = gainStep(highGainTarget, highGain, gainRampLength);
    outputGainStep = gainStep(outputGainTarget, outputGain, gainRampLength);
}
