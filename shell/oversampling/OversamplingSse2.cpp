// The oversampling stages with two lanes, on every x86-64 processor.
#include "shell/oversampling/OversamplingStages.h"

namespace {

struct Sse2Lanes {
    static constexpr int kChannels = 1;
    static constexpr int kLanes = 2;
    using Vector [[gnu::vector_size(16), gnu::may_alias]] = double;
    using Row [[gnu::vector_size(16), gnu::aligned(8), gnu::may_alias]] = double;

    static Vector loadRows(const double* left, const double*)
    {
        return *reinterpret_cast<const Row*>(left);
    }
    static void storeRows(double* left, double*, Vector v) { *reinterpret_cast<Row*>(left) = v; }
    [[gnu::always_inline]] static void transpose(Vector* v)
    {
        const Vector a = v[0];
        const Vector b = v[1];
        v[0] = __builtin_shufflevector(a, b, 0, 2);
        v[1] = __builtin_shufflevector(a, b, 1, 3);
    }
};

}  // namespace

const OversamplingKernels kOversamplingSse2 = Stages<Sse2Lanes>::kKernels;
