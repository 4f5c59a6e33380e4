#include "dsp/WetBiquadFilter.h"

#include "dsp/ControlLaws.h"

void WetBiquadFilter::setWet(double wet)
{
    wetTarget = limited(wet, 0.0, 1.0);
    wetStep = stepTo(wetTarget, wetCurrent);
    if (!isDesigned())
        redesign();
}

void WetBiquadFilter::process(double* buffer, int count)
{
    if (type == FilterType::None)
        return;
    if (isOff()) {
        clearHistory();
        return;
    }
    for (int i = 0; i < count; ++i)
        buffer[i] = stepWet(buffer[i]);
}
