// Oversampling: selection of the kernels, memory for their histories, order of the stages.
#include "shell/oversampling/Oversampling.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace {

// The most lanes that any kernel has for one channel; an entry has a double for each lane.
constexpr int kMaxLanes = 4;

// The histories, one for each channel, of a stage that reads `kReach` entries of the past and takes
// up to `kBlock` samples a call. After `kBlocks` calls a history is moved to the front of its memory:
// few moves cost the least time, but the memory of many instances does not fit into the cache. A
// kernel for both channels uses the memory of both as one history.
template <int kReach, int kBlock, int kBlocks>
struct StageMemory {
    static constexpr int kCapacity = kReach + kBlocks * kBlock;

    StageMemory()
    {
        for (int c = 0; c < 2; ++c)
            histories[c] = {entries + c * kMaxLanes * kCapacity, samples + (2 * c + 1) * kBlock,
                            kReach, kCapacity, kReach};
    }

    void clear()
    {
        std::fill(std::begin(entries), std::end(entries), 0.0);
        std::fill(std::begin(samples), std::end(samples), 0.0);
        for (SlidingHistory& history : histories)
            history.position = kReach;
    }

    alignas(64) double entries[2 * kMaxLanes * kCapacity];
    alignas(64) double samples[2 * 2 * kBlock];  // of each channel, the block before and this one
    SlidingHistory histories[2];
};

using KernelStage = void (*)(SlidingHistory&, const double*, const SubBlock&, const SubBlock&, int);

// Runs a stage for one channel or two with a kernel for `channels` of them.
void run(KernelStage stage, int channels, SlidingHistory* histories, const double* coeffs,
         const SubBlock& in, const SubBlock& out, int count)
{
    stage(histories[0], coeffs, in, out, count);
    if (in.right && channels == 1)
        stage(histories[1], coeffs, {in.right, nullptr}, {out.right, nullptr}, count);
}

}  // namespace

struct Oversampling::Memory {
    StageMemory<64, kOutputsAtOnce, 8> first;
    StageMemory<128, kOutputsAtOnce, 16> second;
    StageMemory<256, 4 * kOutputsAtOnce, 8> down;
};

Oversampling::Oversampling(ProcessingForm form)
    : stereoKernels(nullptr), monoKernels(nullptr), tempL{}, tempR{}
{
    switch (form) {
    case ProcessingForm::Plain:
        break;
    case ProcessingForm::Sse2:
        stereoKernels = monoKernels = &kOversamplingSse2;
        break;
    case ProcessingForm::Avx2:
        stereoKernels = monoKernels = &kOversamplingAvx2;
        break;
    case ProcessingForm::Avx512:
        stereoKernels = &kOversamplingAvx512;
        monoKernels = &kOversamplingAvx2;
        break;
    }
    if (stereoKernels)
        memory.reset(new (std::nothrow) Memory);
    clear();
}

Oversampling::~Oversampling() = default;

void Oversampling::clear()
{
    plain.clear();
    if (!memory)
        return;
    memory->first.clear();
    memory->second.clear();
    memory->down.clear();
}

int Oversampling::raiseRate(int mode, const SubBlock& work, int count)
{
    if (mode == 0)
        return count;
    if (!memory)
        return raisePlainly(mode, work, count);
    const OversamplingKernels& kernels = work.right ? *stereoKernels : *monoKernels;
    const SubBlock temp{tempL, work.right ? tempR : nullptr};
    const SubBlock& doubled = mode == 1 ? work : temp;
    run(kernels.firstDoubling, kernels.channels, memory->first.histories, plain.upStage1Coeffs,
        work, doubled, count);
    count *= 2;
    if (mode == 1)
        return count;
    for (int done = 0; done < count; done += kOutputsAtOnce) {
        const auto from = [done](double* x, int factor) { return x ? x + done * factor : nullptr; };
        run(kernels.secondDoubling, kernels.channels, memory->second.histories,
            plain.upStage2Coeffs, {from(temp.left, 1), from(temp.right, 1)},
            {from(work.left, 2), from(work.right, 2)}, std::min(kOutputsAtOnce, count - done));
    }
    return 2 * count;
}

int Oversampling::lowerRate(int mode, const SubBlock& work, int count)
{
    if (mode == 0)
        return count;
    if (!memory)
        return lowerPlainly(mode, work, count);
    const OversamplingKernels& kernels = work.right ? *stereoKernels : *monoKernels;
    count /= mode == 1 ? 2 : 4;
    run(mode == 1 ? kernels.keepEverySecond : kernels.keepEveryFourth, kernels.channels,
        memory->down.histories, mode == 1 ? down2xCoeffs : down4xCoeffs, work, work, count);
    return count;
}

int Oversampling::raisePlainly(int mode, const SubBlock& work, int count)
{
    const SubBlock temp{tempL, work.right ? tempR : nullptr};
    const auto copyBack = [&](int length) {
        std::copy_n(temp.left, length, work.left);
        if (work.right)
            std::copy_n(temp.right, length, work.right);
    };
    plain.firstDoubling(work, temp, count);
    count *= 2;
    copyBack(count);
    if (mode == 2) {
        plain.secondDoubling(work, temp, count);
        count *= 2;
        copyBack(count);
    }
    return count;
}

int Oversampling::lowerPlainly(int mode, const SubBlock& work, int count)
{
    const SubBlock temp{tempL, work.right ? tempR : nullptr};
    plain.decimationFilter(mode == 1 ? down2xCoeffs : down4xCoeffs, work, temp, count);
    const auto keepOdd = [](const SubBlock& in, const SubBlock& out, int kept) {
        keepOddSamples(in.left, out.left, kept);
        if (in.right)
            keepOddSamples(in.right, out.right, kept);
    };
    count /= 2;
    keepOdd(temp, work, count);
    if (mode == 2) {
        count /= 2;
        keepOdd(work, work, count);
    }
    return count;
}
