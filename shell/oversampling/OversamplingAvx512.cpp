// The oversampling stages with four lanes of the left channel and four of the right.
#include "shell/oversampling/OversamplingStages.h"

namespace {

struct Avx512Lanes {
    static constexpr int kChannels = 2;
    static constexpr int kLanes = 4;
    using Vector [[gnu::vector_size(64), gnu::may_alias]] = double;
    using Row [[gnu::vector_size(32), gnu::aligned(8), gnu::may_alias]] = double;

    static Vector loadRows(const double* left, const double* right)
    {
        const Row l = *reinterpret_cast<const Row*>(left);
        const Row r = *reinterpret_cast<const Row*>(right);
        return __builtin_shufflevector(l, r, 0, 1, 2, 3, 4, 5, 6, 7);
    }
    static void storeRows(double* left, double* right, Vector v)
    {
        *reinterpret_cast<Row*>(left) = __builtin_shufflevector(v, v, 0, 1, 2, 3);
        *reinterpret_cast<Row*>(right) = __builtin_shufflevector(v, v, 4, 5, 6, 7);
    }
    // Transposes four by four doubles of each channel.
    [[gnu::always_inline]] static void transpose(Vector* v)
    {
        const Vector even01 = __builtin_shufflevector(v[0], v[1], 0, 8, 2, 10, 4, 12, 6, 14);
        const Vector odd01 = __builtin_shufflevector(v[0], v[1], 1, 9, 3, 11, 5, 13, 7, 15);
        const Vector even23 = __builtin_shufflevector(v[2], v[3], 0, 8, 2, 10, 4, 12, 6, 14);
        const Vector odd23 = __builtin_shufflevector(v[2], v[3], 1, 9, 3, 11, 5, 13, 7, 15);
        v[0] = __builtin_shufflevector(even01, even23, 0, 1, 8, 9, 4, 5, 12, 13);
        v[1] = __builtin_shufflevector(odd01, odd23, 0, 1, 8, 9, 4, 5, 12, 13);
        v[2] = __builtin_shufflevector(even01, even23, 2, 3, 10, 11, 6, 7, 14, 15);
        v[3] = __builtin_shufflevector(odd01, odd23, 2, 3, 10, 11, 6, 7, 14, 15);
    }
};

}  // namespace

const OversamplingKernels kOversamplingAvx512 = Stages<Avx512Lanes>::kKernels;
