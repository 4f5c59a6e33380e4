// StripProcessorQB9: the polarity stage, and the stages before and after the equaliser strips.
#include "dsp/StripProcessorQB9.h"

#include <cmath>

namespace {

// The index of the least of n magnitudes; of equal ones the first.
template <class Magnitude>
int quietest(int n, Magnitude magnitude)
{
    auto best = magnitude(0);
    int index = 0;
    for (int i = 0; i < n; ++i) {
        if (magnitude(i) < best) {
            best = magnitude(i);
            index = i;
        }
    }
    return index;
}

// Changes the polarity at `index`; that sample already takes the new one.
template <class Sample>
void flipAt(Sample* x, int n, int index, int& inverted)
{
    const Sample before = inverted ? Sample(-1) : Sample(1);
    const Sample after = -before;
    inverted = inverted ? 0 : 1;
    for (int i = 0; i < index; ++i)
        x[i] *= before;
    for (int i = index; i < n; ++i)
        x[i] *= after;
}

template <class Sample>
void applyOne(StripProcessorQB9& strip, Sample* x, int n)
{
    if (!strip.stripActive || n <= 0)
        return;
    if (!strip.phaseChangePending) {
        if (strip.inverted)
            for (int i = 0; i < n; ++i)
                x[i] *= Sample(-1);
        return;
    }
    const int index = quietest(n, [x](int i) { return std::fabs(x[i]); });
    flipAt(x, n, index, strip.inverted);
    strip.phaseChangePending = 0;
}

template <class Sample>
void applyLinked(const StripProcessorQB9& strip, Sample* a, Sample* b, int* invertedA,
                 int* invertedB, int n)
{
    if (!strip.stripActive || n <= 0)
        return;
    const int index = quietest(n, [a, b](int i) { return std::fabs(a[i]) + std::fabs(b[i]); });
    flipAt(a, n, index, *invertedA);
    flipAt(b, n, index, *invertedB);
}

}  // namespace

void StripProcessorQB9::applyPhase(double* x, int n)
{
    applyOne(*this, x, n);
}

void StripProcessorQB9::applyPhaseFloat(float* x, int n)
{
    applyOne(*this, x, n);
}

void StripProcessorQB9::applyPhaseLinked(double* a, double* b, int* invertedA, int* invertedB,
                                         int n)
{
    applyLinked(*this, a, b, invertedA, invertedB, n);
}

void StripProcessorQB9::applyPhaseLinkedFloat(float* a, float* b, int* invertedA, int* invertedB,
                                              int n)
{
    applyLinked(*this, a, b, invertedA, invertedB, n);
}

void StripProcessorQB9::processInputStage(double* x, int n)
{
    if (!stripActive)
        return;
    for (int i = 0; i < n; ++i) {
        compensation[static_cast<std::size_t>(i)] = stepDrive();
        x[i] *= driveGainCurrent;
    }
    highPass.process(x, n);
    if (!boostOn)
        return;
    for (int i = 0; i < n; ++i) {
        const double d = boostBand.processSample(x[i]) * (1.0 - boostGain);
        x[i] = x[i] - d;
    }
}

// Compensates the drive of each sample with the value that the input stage stored for it.
void StripProcessorQB9::processOutputStage(double* x, int n)
{
    if (!stripActive)
        return;
    for (int i = 0; i < n; ++i) {
        x[i] *= compensation[static_cast<std::size_t>(i)];
        stepOutputGain();
        x[i] *= outputGainCurrent;
    }
}
