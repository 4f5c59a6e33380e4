// The strips of one or two channels in their order, behind the polarity stage. The plain form calls
// the strips one after the other; the fast forms run the same arithmetic on both channels at once.
#pragma once

#include "dsp/ProcessingForm.h"
#include "dsp/StripProcessorQB9.h"
#include "dsp/StripProcessorT46.h"

// One channel's strips; null for one that is not in the chain.
struct StripChain {
    StripProcessorQB9* preamp;
    StripProcessorT46* first;
    StripProcessorT46* second;
};

// In place, on 1 to StripProcessorQB9::kMaxCount samples; all finite. A null `r` means one channel,
// and `right` is then not looked at. Every form leaves the same bits in the samples and the strips,
// so that forms may change from call to call; all but the plain one share the same kernels.
void processStrips(ProcessingForm form, const StripChain& left, const StripChain& right, double* l,
                   double* r, int count);
