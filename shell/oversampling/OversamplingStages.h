// The fast oversampling stages, for any instruction set. Each instruction set has a file that is
// compiled for it, defines its lanes and includes this file. Everything here is local to that file,
// and nothing comes from the standard library: otherwise the linker might use a function that was
// compiled for one instruction set in place of the same function in the rest of the program.
//
// `Lanes` has
//   kChannels, kLanes       channels in a vector (1 or 2), lanes for each
//   Vector                  kChannels * kLanes doubles, left channel first
//   loadRows, storeRows     kLanes neighbouring doubles of each channel
//   transpose               kLanes vectors, rows to columns in each channel
#pragma once

#include "shell/oversampling/OversamplingKernels.h"

namespace {

// Vectors that are summed in parallel, which hides the latency of the additions.
constexpr int kSums = 4;

template <class Lanes>
struct Stages {
    using Vector = typename Lanes::Vector;
    static constexpr int kWidth = Lanes::kChannels * Lanes::kLanes;
    static constexpr int kStride = kOutputsAtOnce / Lanes::kLanes;  // outputs from lane to lane

    // Entry q, counted from the one at `now`.
    static const Vector& entry(const double* now, int q)
    {
        return *reinterpret_cast<const Vector*>(now + q * kWidth);
    }

    // Writes `count` samples, M for each output, and the entries that they complete. Returns the
    // address of the first sample's entry.
    template <int M>
    static const double* write(SlidingHistory& history, const SubBlock& in, int count)
    {
        constexpr int kBlock = kOutputsAtOnce * M;
        constexpr int kDistance = kStride * M;  // samples from lane to lane
        if (history.position + kBlock > history.capacity)
            slideToFront(history);
        double* const rows = history.samples;
        constexpr int kOtherRows = Lanes::kChannels == 2 ? 2 * kBlock : 0;
        append<kBlock>(in.left, rows, count);
        if (Lanes::kChannels == 2)
            append<kBlock>(in.right, rows + kOtherRows, count);

        double* const now = history.entries + history.position * kWidth;
        for (int q = kDistance - kBlock; q < kDistance; q += Lanes::kLanes) {
            Vector columns[Lanes::kLanes];
            for (int j = 0; j < Lanes::kLanes; ++j) {
                const double* const row = rows + q + j * kDistance;
                columns[j] = Lanes::loadRows(row, row + kOtherRows);
            }
            Lanes::transpose(columns);
            for (int j = 0; j < Lanes::kLanes; ++j)
                *reinterpret_cast<Vector*>(now + (q + j) * kWidth) = columns[j];
        }
        history.position += count;
        constexpr int kPast = kBlock - kDistance;  // samples that the next call needs
        for (int c = 0; c < Lanes::kChannels; ++c) {
            double* const past = rows + c * kOtherRows - kPast;
            __builtin_memmove(past, past + count, sizeof(double) * kPast);
        }
        return now;
    }

    // A short block is padded with zeros, which the next block overwrites.
    template <int kBlock>
    static void append(const double* in, double* out, int count)
    {
        if (count == kBlock) {
            __builtin_memcpy(out, in, sizeof(double) * kBlock);
            return;
        }
        for (int i = 0; i < count; ++i)
            out[i] = in[i];
        for (int i = count; i < kBlock; ++i)
            out[i] = 0.0;
    }

    // Moves the part of the history that is still needed to the front of the memory.
    static void slideToFront(SlidingHistory& history)
    {
        const int from = (history.position - history.reach) * kWidth;
        __builtin_memmove(history.entries, history.entries + from,
                          sizeof(double) * static_cast<unsigned>(history.reach * kWidth));
        history.position = history.reach;
    }

    // Adds one folded pair of taps to kSums sums of even outputs. From pair to pair every vector
    // takes its neighbour's entries, the older one of vector v + 1 and the newer one of v - 1, so
    // that only one entry of each kind has to be read. U is the pair's number modulo kSums: it
    // gives the places of the entries in the arrays, and the place of the one to replace.
    template <int U>
    [[gnu::always_inline]] static void addPair(double tap, const Vector& nextOlder,
                                               const Vector& nextNewer, Vector (&older)[kSums],
                                               Vector (&newer)[kSums], Vector (&sums)[kSums])
    {
        older[(U + kSums - 1) % kSums] = nextOlder;
        newer[(kSums - 1 - U) % kSums] = nextNewer;
        for (int v = 0; v < kSums; ++v)
            sums[v] += tap * (older[(v + U) % kSums] + newer[(v + 2 * kSums - 1 - U) % kSums]);
    }

    // Even output n of a doubling: pair j is x[n - half + j] and x[n - 1 - j], with the newest
    // sample in place of x[n - half].
    template <int kHalf>
    [[gnu::always_inline]] static void evenOutputs(const double* coeffs, const double* now,
                                                   Vector (&sums)[kSums])
    {
        constexpr int kPairs = kHalf / 2;
        static_assert(kSums == 4 && kPairs % kSums == 0, "the pairs are taken in fours");
        Vector older[kSums], newer[kSums];
        for (int v = 0; v < kSums; ++v) {
            newer[(v + kSums - 1) % kSums] = entry(now, v - 1);
            sums[v] = Vector{} + coeffs[0] * (entry(now, v) + entry(now, v - 1));
            older[(v + 1) % kSums] = entry(now, v + 1 - kHalf);
        }
        const double* nextOlder = now + (kSums - kHalf) * kWidth;
        const double* nextNewer = now - 2 * kWidth;
        for (int j = 1;; j += kSums) {
            const double* const tap = coeffs + 2 * j;
            addPair<1>(tap[0], entry(nextOlder, 0), entry(nextNewer, 0), older, newer, sums);
            addPair<2>(tap[2], entry(nextOlder, 1), entry(nextNewer, -1), older, newer, sums);
            addPair<3>(tap[4], entry(nextOlder, 2), entry(nextNewer, -2), older, newer, sums);
            if (j + 3 == kPairs)
                break;
            addPair<0>(tap[6], entry(nextOlder, 3), entry(nextNewer, -3), older, newer, sums);
            nextOlder += kSums * kWidth;
            nextNewer -= kSums * kWidth;
        }
    }

    // Lane j of vectors[i] goes to out[i + j * distance].
    template <int kCount>
    [[gnu::always_inline]] static void store(Vector (&vectors)[kCount], int distance,
                                             const SubBlock& out, int offset)
    {
        for (int i = 0; i < kCount; i += Lanes::kLanes) {
            Lanes::transpose(vectors + i);
            for (int j = 0; j < Lanes::kLanes; ++j) {
                const int to = offset + i + j * distance;
                Lanes::storeRows(out.left + to, Lanes::kChannels == 2 ? out.right + to : nullptr,
                                 vectors[i + j]);
            }
        }
    }

    template <int kHalf>
    static void doubleRate(SlidingHistory& history, const double* coeffs, const SubBlock& in,
                           const SubBlock& out, int count)
    {
        const double* const start = write<1>(history, in, count);
        for (int first = 0; first < kStride; first += kSums) {
            const double* const now = start + first * kWidth;
            Vector even[kSums];
            evenOutputs<kHalf>(coeffs, now, even);
            Vector outputs[2 * kSums];
            for (int v = 0; v < kSums; ++v) {
                outputs[2 * v] = even[v];
                outputs[2 * v + 1] = coeffs[kHalf - 1] * entry(now, v - kHalf / 2);
            }
            store(outputs, 2 * kStride, out, 2 * first);
        }
    }

    // Output n of the low-pass: pair k is x[n - 255 + k] and x[n - 1 - k], the centre x[n - 128].
    // Of every M outputs the last is kept, and only that one computed.
    template <int M>
    static void decimate(SlidingHistory& history, const double* coeffs, const SubBlock& in,
                         const SubBlock& out, int count)
    {
        constexpr int kCentre = kDecimationTaps - 1;
        const double* const start = write<M>(history, in, count * M);
        for (int first = 0; first < kStride; first += kSums) {
            const double* const now = start + (first * M + M - 1) * kWidth;
            const double* older = now - 255 * kWidth;
            const double* newer = now - kWidth;
            Vector sums[kSums] = {};
            for (int k = 0; k < kCentre; ++k) {
                for (int v = 0; v < kSums; ++v)
                    sums[v] += coeffs[k] * (entry(older, v * M) + entry(newer, v * M));
                older += kWidth;
                newer -= kWidth;
            }
            for (int v = 0; v < kSums; ++v)
                sums[v] += coeffs[kCentre] * entry(now, v * M - 128);
            store(sums, kStride, out, first);
        }
    }

    static constexpr OversamplingKernels kKernels = {Lanes::kChannels, doubleRate<64>,
                                                     doubleRate<128>, decimate<2>, decimate<4>};
};

}  // namespace
