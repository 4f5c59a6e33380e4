#include "dsp/lanes/StripRun.h"

#include <algorithm>

namespace {

// The chain without a pre-amplifier whose stages are all off.
StripChain inUse(const StripChain& chain)
{
    const bool preampInUse = chain.preamp && chain.preamp->stripActive;
    return {preampInUse ? chain.preamp : nullptr, chain.first, chain.second};
}

bool canRunFast(const StripChain& chain)
{
    return (!chain.preamp || canRunFast(*chain.preamp))
        && (!chain.first || canRunFast(*chain.first))
        && (!chain.second || canRunFast(*chain.second));
}

bool haveSameStrips(const StripChain& a, const StripChain& b)
{
    return !a.preamp == !b.preamp && !a.first == !b.first && !a.second == !b.second;
}

bool haveTransformers(const StripProcessorT46& strip, bool atInput, bool atOutput)
{
    return (strip.inputTransformerOn != 0) == atInput
        && (strip.outputTransformerOn != 0) == atOutput;
}

// By the number of strips in each channel; null for a form without.
const ParallelKernels* kernelsOf(ProcessingForm form, int stripCount)
{
    if (stripCount == 0 || form < ProcessingForm::Avx2)
        return nullptr;
    return (form == ProcessingForm::Avx2 ? kParallelAvx2 : kParallelAvx512) + stripCount - 1;
}

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

// The number of strips in each of two channels if all can work at the same time: a transformer at
// either end of the chain, all other switches equal. Else 0.
int stripsAtTheSameTime(const StripChain& a, const StripChain& b)
{
    if (!a.first || !haveSameBands(*a.first, *b.first)
        || (a.preamp && !haveSameStages(*a.preamp, *b.preamp)))
        return 0;
    const bool one = !a.second;
    for (const StripChain* chain : {&a, &b}) {
        if (!haveTransformers(*chain->first, true, one))
            return 0;
        if (!one
            && (!haveTransformers(*chain->second, false, true)
                || !haveSameBands(*a.first, *chain->second)))
            return 0;
    }
    return one ? 1 : 2;
}

void interleave(const double* l, const double* r, double* rows, int count)
{
    for (int i = 0; i < count; ++i) {
        rows[2 * i] = l[i];
        rows[2 * i + 1] = r[i];
    }
}

void separate(const double* rows, double* l, double* r, int count)
{
    for (int i = 0; i < count; ++i) {
        l[i] = rows[2 * i];
        r[i] = rows[2 * i + 1];
    }
}

}  // namespace

StripRun::StripRun(ProcessingForm form, const StripChain& left, const StripChain* right)
    : chains{inUse(left), right ? inUse(*right) : StripChain{}}, channels(right ? 2 : 1)
{
    fast = form != ProcessingForm::Plain && canRunFast(chains[0]) && canRunFast(chains[1]);
    together = fast && right && haveSameStrips(chains[0], chains[1]);
    for (int k = 0; k < channels; ++k) {
        preamps[k] = chains[k].preamp;
        strips[k] = chains[k].first;
        strips[2 + k] = chains[k].second;
    }
    const int parallelStrips = together ? stripsAtTheSameTime(chains[0], chains[1]) : 0;
    kernels = kernelsOf(form, parallelStrips);
    stripCount = kernels ? parallelStrips : 0;
}

int StripRun::push(double* l, double* r, int count)
{
    if (stripCount == 0) {
        processAtOnce(l, r, count);
        return count;
    }
    interleave(l, r, next, count);
    ++pushed;
    return advance(l, r, count);
}

int StripRun::flush(double* l, double* r)
{
    while (finished < pushed)
        if (const int count = advance(l, r, 0))
            return count;
    return 0;
}

void StripRun::processAtOnce(double* l, double* r, int count)
{
    if (together) {
        interleave(l, r, next, count);
        processRows(next, count, 0, 2);
        return separate(next, l, r, count);
    }
    double* const samples[] = {l, r};
    for (int k = 0; k < channels; ++k) {
        if (fast)
            processRows(samples[k], count, k, 1);
        else
            processPlain(chains[k], samples[k], count);
    }
}

void StripRun::processRows(double* rows, int count, int channel, int lanes)
{
    const FastStrips run(lanes);
    if (preamps[channel])
        run.runPreampInput(preamps + channel, gainsOf(0), rows, count);
    for (int k = channel; k < 2 * kMaxStrips; k += 2)
        if (strips[k]) {
            run.runInput(strips + k, rows, count);
            run.runBands(strips + k, rows, count);
            run.runOutputTransformer(strips + k, rows, count);
        }
    if (preamps[channel])
        run.runPreampOutput(preamps + channel, gainsOf(0), rows, count);
}

// One step: the first strip takes `count` rows of `next` (none for 0), every other one those of the
// strip in front. Returns the number of rows that leave the last one.
int StripRun::advance(double* l, double* r, int count)
{
    const FastStrips run(2);
    const int leavingCount = rowCounts[stripCount - 1];
    if (count > 0 && rowCounts[0] == count && leavingCount == count) {
        if (!parallel)
            all.setUp(*kernels, preamps[0] ? preamps : nullptr, strips, stripCount, next, body,
                      leaving, scratch);
        parallel = true;
        all.run(*gainsOf(pushed - 1), count);
    } else {
        if (parallel)
            all.writeBack();
        parallel = false;
        advanceOneByOne(run, count);
    }
    for (int k = stripCount - 1; k > 0; --k)
        rowCounts[k] = rowCounts[k - 1];
    rowCounts[0] = count;
    if (leavingCount == 0)
        return 0;

    if (preamps[0])
        run.runPreampOutput(preamps, gainsOf(finished), leaving, leavingCount);
    ++finished;
    separate(leaving, l, r, leavingCount);
    return leavingCount;
}

// A step in which some strips have no rows, or not the same number.
void StripRun::advanceOneByOne(const FastStrips& run, int count)
{
    if (preamps[0] && count > 0)
        run.runPreampInput(preamps, gainsOf(pushed - 1), next, count);
    const int last = stripCount - 1;
    take(last, leaving);
    if (rowCounts[last] > 0)
        run.runOutputTransformer(strips + 2 * last, leaving, rowCounts[last]);
    for (int k = last; k >= 0; --k) {
        double inFront[2 * kMaxRows];
        double* const rows = k > 0 ? inFront : next;
        const int rowCount = k > 0 ? rowCounts[k - 1] : count;
        if (k > 0)
            take(k - 1, rows);
        if (rowCount == 0)
            continue;
        run.runInput(strips + 2 * k, rows, rowCount);
        run.runBands(strips + 2 * k, rows, rowCount);
        put(k, rows, rowCount);
    }
}

// The rows behind a strip, from and to two lanes.
void StripRun::take(int strip, double* rows) const
{
    for (int i = 0; i < rowCounts[strip]; ++i)
        std::copy_n(body + (i * stripCount + strip) * 2, 2, rows + 2 * i);
}

void StripRun::put(int strip, const double* rows, int count)
{
    for (int i = 0; i < count; ++i)
        std::copy_n(rows + 2 * i, 2, body + (i * stripCount + strip) * 2);
}
