// The strips of one or two channels, in the order of processing, after the polarity stage. The
// plain form calls the strips one after the other; the fast forms do the same arithmetic on both
// channels at once.
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

// In place, on 1 to StripProcessorQB9::kMaxCount finite samples. A null `r` means one channel, and
// `right` is then ignored. Every form leaves the same bits in the samples and in the strips, so the
// form may differ from call to call. All forms but the plain one use the same kernels.
void processStrips(ProcessingForm form, const StripChain& left, const StripChain& right, double* l,
                   double* r, int count);
