// The fast oversampling stages against the plain ones: every bit, in every form that the machine
// can run.
#include "FastOversampling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

using Random = std::mt19937;

double uniform(Random& random)
{
    return static_cast<double>(random()) / 2147483648.0 - 1.0;
}

struct Signal {
    const char* name;
    double (*next)(Random&);
};

double ofSize(Random& random, int smallest, int binades)
{
    return std::ldexp(uniform(random), smallest + static_cast<int>(random() % 4096) % binades);
}

// Sums whose terms differ widely in size show a changed order of additions at once.
const Signal kSignals[] = {
    {"noise", uniform},
    {"1e-40", [](Random& random) { return uniform(random) * 1e-40; }},
    {"denormal to 1e-40", [](Random& random) { return ofSize(random, -1040, 908); }},
    {"1e300", [](Random& random) { return uniform(random) * 1e300; }},
    {"any size", [](Random& random) { return ofSize(random, -1040, 2030); }},
    {"zeros of both signs, few samples",
     [](Random& random) {
         return random() % 64 == 0 ? uniform(random) : random() % 2 == 0 ? 0.0 : -0.0;
     }},
};

// The two ways through the plain stages, as their definition has them.
struct PlainStages {
    Oversampling stages;
    double left[64], right[64];

    void raise(int mode, const SubBlock& work, int count)
    {
        const SubBlock temp{left, work.right ? right : nullptr};
        stages.firstDoubling(work, temp, count);
        copy(temp, work, 2 * count);
        if (mode == 1)
            return;
        stages.secondDoubling(work, temp, 2 * count);
        copy(temp, work, 4 * count);
    }

    void lower(int mode, const SubBlock& work, int count)
    {
        const int factor = 2 * mode;
        stages.decimationFilter(mode == 1 ? down2xCoeffs : down4xCoeffs, work, work,
                                count * factor);
        for (double* x : {work.left, work.right})
            for (int i = 0; x && i < count; ++i)
                x[i] = x[factor * i + factor - 1];
    }

    static void copy(const SubBlock& from, const SubBlock& to, int count)
    {
        std::copy_n(from.left, count, to.left);
        if (from.right)
            std::copy_n(from.right, count, to.right);
    }
};

struct Buffers {
    double left[64] = {}, right[64] = {};

    SubBlock subBlock(bool stereo) { return {left, stereo ? right : nullptr}; }
    void fill(const Signal& signal, Random& random, int count)
    {
        for (double* x : {left, right})
            std::generate_n(x, count, [&] { return signal.next(random); });
    }
    // Whether the first `count` samples have the same bits; a channel out of use has to be left
    // alone.
    bool equals(const Buffers& other, int count, bool stereo) const
    {
        const auto size = static_cast<std::size_t>(count) * sizeof(double);
        return std::memcmp(left, other.left, size) == 0
            && std::memcmp(right, other.right, stereo ? size : sizeof(right)) == 0;
    }
};

// Runs both forms side by side on a long signal in sub-blocks of changing length. What goes down is
// a signal of its own, not what came up.
void compare(FastOversampling& fast, int mode, bool stereo, const Signal& signal)
{
    SCOPED_TRACE(std::string(signal.name) + (stereo ? ", stereo" : ", mono") + ", mode "
                 + std::to_string(mode));
    PlainStages plain;
    Random random(static_cast<unsigned>(mode) + 100);
    for (int turn = 0; turn < 400; ++turn) {
        const int count = turn % 3 ? 16 : static_cast<int>(random() % 16) + 1;
        Buffers ours;
        ours.fill(signal, random, count);
        Buffers theirs = ours;
        plain.raise(mode, theirs.subBlock(stereo), count);
        const int raised = 2 * mode * count;
        ASSERT_EQ(fast.raiseRate(mode, ours.subBlock(stereo), count), raised);
        ASSERT_TRUE(ours.equals(theirs, raised, stereo)) << "up, sub-block " << turn;

        ours.fill(signal, random, raised);
        theirs = ours;
        plain.lower(mode, theirs.subBlock(stereo), count);
        ASSERT_EQ(fast.lowerRate(mode, ours.subBlock(stereo), raised), count);
        ASSERT_TRUE(ours.equals(theirs, count, stereo)) << "down, sub-block " << turn;
    }
}

class FastOversamplingTest : public testing::TestWithParam<ProcessingForm> { };

}  // namespace

// One object goes through all cases: after clear() nothing is left of the case before.
TEST_P(FastOversamplingTest, GivesEveryBitOfThePlainForm)
{
    FastOversampling fast(GetParam());
    for (const Signal& signal : kSignals)
        for (const int mode : {1, 2})
            for (const bool stereo : {true, false}) {
                compare(fast, mode, stereo, signal);
                if (HasFatalFailure())
                    return;
                fast.clear();
            }
}

const ProcessingForms kForms;
INSTANTIATE_TEST_SUITE_P(Forms, FastOversamplingTest,
                         testing::ValuesIn(kForms.begin(), kForms.end()),
                         [](const auto& form) { return std::string(nameOf(form.param)); });

TEST(ProcessingForms, AreThoseThatLinuxReports)
{
    std::ifstream file("/proc/cpuinfo");
    if (!file)
        GTEST_SKIP() << "no Linux to ask";
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const auto has = [&](const char* flag) { return text.find(flag) != std::string::npos; };
    ASSERT_TRUE(has(" sse2 "));
    std::vector<ProcessingForm> wanted{ProcessingForm::Plain, ProcessingForm::Sse2};
    if (has(" avx2 "))
        wanted.push_back(ProcessingForm::Avx2);
    if (has(" avx2 ") && has(" avx512f ") && has(" avx512dq ") && has(" avx512vl "))
        wanted.push_back(ProcessingForm::Avx512);
    const ProcessingForms forms;
    EXPECT_EQ(std::vector<ProcessingForm>(forms.begin(), forms.end()), wanted);
    EXPECT_EQ(bestProcessingForm(), wanted.back());
}
