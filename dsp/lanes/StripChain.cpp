// The plain form of the chain, and the choice between it and the fast form.
#include "dsp/lanes/StripChain.h"

#include "dsp/lanes/FastStrips.h"

namespace {

void processPlain(const StripChain& chain, double* x, int count)
{
    if (chain.preamp)
        chain.preamp->processInputStage(x, count);
    if (chain.first)
        chain.first->process(x, count);
    if (chain.second)
        chain.second->process(x, count);
    if (chain.preamp)
        chain.preamp->processOutputStage(x, count);
}

// One chain, or two with the same strips present.
void processFast(const StripChain* chains, int channels, double* rows, int count)
{
    StripProcessorQB9* preamp[2];
    StripProcessorT46* first[2];
    StripProcessorT46* second[2];
    for (int k = 0; k < channels; ++k) {
        preamp[k] = chains[k].preamp;
        first[k] = chains[k].first;
        second[k] = chains[k].second;
    }
    FastStrips strips(rows, count, channels);
    if (preamp[0])
        strips.runPreampInput(preamp);
    if (first[0])
        strips.runStrip(first);
    if (second[0])
        strips.runStrip(second);
    if (preamp[0])
        strips.runPreampOutput(preamp);
}

// The chain without a pre-amplifier whose stages are all off.
StripChain inUse(const StripChain& chain)
{
    const bool preampInUse = chain.preamp && chain.preamp->stripActive;
    return {preampInUse ? chain.preamp : nullptr, chain.first, chain.second};
}

bool haveSameStrips(const StripChain& a, const StripChain& b)
{
    return !a.preamp == !b.preamp && !a.first == !b.first && !a.second == !b.second;
}

}  // namespace

void processStrips(ProcessingForm form, const StripChain& left, const StripChain& right, double* l,
                   double* r, int count)
{
    const StripChain chains[] = {inUse(left), r ? inUse(right) : StripChain{}};
    const bool fast =
        form != ProcessingForm::Plain && canRunFast(chains[0]) && canRunFast(chains[1]);
    if (fast && r && haveSameStrips(chains[0], chains[1])) {
        alignas(16) double rows[2 * StripProcessorQB9::kMaxCount];
        for (int i = 0; i < count; ++i) {
            rows[2 * i] = l[i];
            rows[2 * i + 1] = r[i];
        }
        processFast(chains, 2, rows, count);
        for (int i = 0; i < count; ++i) {
            l[i] = rows[2 * i];
            r[i] = rows[2 * i + 1];
        }
        return;
    }
    double* const samples[] = {l, r};
    for (int k = 0; k < (r ? 2 : 1); ++k) {
        if (fast)
            processFast(&chains[k], 1, samples[k], count);
        else
            processPlain(chains[k], samples[k], count);
    }
}
