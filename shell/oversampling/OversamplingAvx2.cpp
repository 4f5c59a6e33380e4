// The oversampling stages with four lanes of one channel.
#include "shell/oversampling/OversamplingStages.h"

namespace {

struct Avx2Lanes {
    static constexpr int kChannels = 1;
    static constexpr int kLanes = 4;
    using Vector [[gnu::vector_size(32), gnu::may_alias]] = double;
    using Row [[gnu::vector_size(32), gnu::aligned(8), gnu::may_alias]] = double;

    static Vector loadRows(const double* left, const double*)
    {
        return *reinterpret_cast<const Row*>(left);
    }
    static void storeRows(double* left, double*, Vector v) { *reinterpret_cast<Row*>(left) = v; }
    [[gnu::always_inline]] static void transpose(Vector* v)
    {
        const Vector even01 = __builtin_shufflevector(v[0], v[1], 0, 4, 2, 6);
        const Vector odd01 = __builtin_shufflevector(v[0], v[1], 1, 5, 3, 7);
        const Vector even23 = __builtin_shufflevector(v[2], v[3], 0, 4, 2, 6);
        const Vector odd23 = __builtin_shufflevector(v[2], v[3], 1, 5, 3, 7);
        v[0] = __builtin_shufflevector(even01, even23, 0, 1, 4, 5);
        v[1] = __builtin_shufflevector(odd01, odd23, 0, 1, 4, 5);
        v[2] = __builtin_shufflevector(even01, even23, 2, 3, 6, 7);
        v[3] = __builtin_shufflevector(odd01, odd23, 2, 3, 6, 7);
    }
};

}  // namespace

const OversamplingKernels kOversamplingAvx2 = Stages<Avx2Lanes>::kKernels;
