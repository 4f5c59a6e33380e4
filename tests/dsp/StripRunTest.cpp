// The fast forms of the strips against the plain one under the same random automation: every sample
// and every byte of the strips' state.
#include "dsp/lanes/StripRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <numeric>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

constexpr int kMaxCount = StripProcessorQB9::kMaxCount;
constexpr int kMaxSubBlocks = 5;

// Constructed in zeroed memory, so that padding compares equal.
template <class Strip>
struct Zeroed {
    std::unique_ptr<unsigned char[]> memory{new unsigned char[sizeof(Strip)]()};
    Strip* const strip{new (memory.get()) Strip};

    Strip* operator->() const { return strip; }
    bool operator==(const Zeroed& other) const
    {
        return std::memcmp(memory.get(), other.memory.get(), sizeof(Strip)) == 0;
    }
};
struct Channel {
    Zeroed<StripProcessorQB9> preamp;
    Zeroed<StripProcessorT46> first, second;
    double samples[kMaxSubBlocks * kMaxCount];

    void expectSameAs(const Channel& plain, int count) const
    {
        const std::size_t size = sizeof(double) * static_cast<std::size_t>(count);
        EXPECT_EQ(0, std::memcmp(samples, plain.samples, size));
        EXPECT_TRUE(preamp == plain.preamp);
        EXPECT_TRUE(first == plain.first);
        EXPECT_TRUE(second == plain.second);
    }
};

// Two channels that run in one form. A layout may leave some of their strips out of the chain.
struct Rig {
    Channel left, right;
    std::function<ProcessingForm(int block)> form;
};

using Rigs = std::vector<std::unique_ptr<Rig>>;

// The strips in each channel's chain: P pre-amplifier, 1 first strip, 2 second strip.
struct Layout {
    const char *name, *left, *right;  // without right: mono
};
constexpr Layout kLayouts[] = {
    {"stereo", "P12", "P12"}, {"mono", "P12", nullptr},  {"no left", "", "P12"},
    {"no right", "P12", ""},  {"no preamp", "12", "12"}, {"one strip", "P1", "P1"},
    {"strip only", "1", "1"}, {"uneven", "P1", "P12"},
};

StripChain chainOf(const Channel& channel, const char* parts)
{
    const auto has = [&](char part) { return parts && std::strchr(parts, part); };
    return {has('P') ? channel.preamp.strip : nullptr, has('1') ? channel.first.strip : nullptr,
            has('2') ? channel.second.strip : nullptr};
}

// A block in sub-blocks of `counts` samples, mono without `right`. Returns whether strips worked at
// the same time, so that sub-blocks came back later.
bool run(ProcessingForm form, const StripChain& left, const StripChain* right, double* l, double* r,
         const std::vector<int>& counts)
{
    StripRun strips(form, left, right);
    double workL[kMaxCount], workR[kMaxCount];
    int done = 0, written = 0;
    const auto write = [&](int finished) {
        std::copy_n(workL, finished, l + written);
        if (right)
            std::copy_n(workR, finished, r + written);
        written += finished;
        return finished > 0;
    };
    bool later = false;
    for (const int count : counts) {
        std::copy_n(l + done, count, workL);
        std::copy_n(r + done, count, workR);
        done += count;
        later |= !write(strips.push(workL, workR, count));
    }
    while (write(strips.flush(workL, workR))) { }
    EXPECT_EQ(written, done);
    return later;
}

using T46 = StripProcessorT46;
using QB9 = StripProcessorQB9;
constexpr void (QB9::*kPreampSetters[])(double) = {&QB9::setDrive, &QB9::setHpf, &QB9::setOutput,
                                                   &QB9::set28k};
constexpr void (T46::*kStripSetters[])(double) = {&T46::setLowFrequency,
                                                  &T46::setMidFrequency,
                                                  &T46::setHighFrequency,
                                                  &T46::setLowShelf,
                                                  &T46::setLowGain,
                                                  &T46::setMidGain,
                                                  &T46::setHighShelf,
                                                  &T46::setHighGain,
                                                  &T46::setAmpDisable,
                                                  &T46::setInputTransformerDisable,
                                                  &T46::setOutputTransformerDisable};

class Automation {
public:
    explicit Automation(unsigned seed) : random(seed) { }

    double unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(random); }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }

    // Applies one random change to all rigs; mostly to all strips, so that left and right often
    // agree.
    void turnSomething(const Rigs& rigs, const Layout& layout)
    {
        const int side = below(10);
        const int strip = below(6);
        const auto onPreamps = [&](auto change) {
            for (const auto& rig : rigs) {
                if (side != 0)
                    change(*rig->left.preamp.strip);
                if (side != 1)
                    change(*rig->right.preamp.strip);
            }
        };
        const auto onStrips = [&](auto change) {
            for (const auto& rig : rigs)
                for (Channel* channel : {&rig->left, &rig->right}) {
                    if (side == (channel == &rig->left ? 0 : 1))
                        continue;
                    if (strip != 0)
                        change(*channel->first.strip);
                    if (strip != 1)
                        change(*channel->second.strip);
                }
        };
        const double v = unit();
        switch (below(20)) {
        case 0: {  // at the lowest rates a gain glide ends within a few blocks
            const double rates[] = {250.0, 700.0, 3000.0, 44100.0, 192000.0};
            const double rate = rates[below(5)];
            onPreamps([=](QB9& s) { s.setSampleRate(rate); });
            return onStrips([=](T46& s) { s.setSampleRate(rate); });
        }
        case 1:
            return onPreamps([=](QB9& s) { s.stripActive = v < 0.9; });
        case 2:
            return onStrips([=](T46& s) { s.setProcessOn(v < 0.8 ? 1.0F : 0.0F); });
        case 3:  // cleared by the band's next update
            return onStrips([=](T46& s) { s.midBell.main.setLimitDrive(0.5); });
        case 4:
            return onStrips([=](T46& s) {
                s.lowShelf.skirt.instant = s.highBell.main.instant = v < 0.5;
                s.lowShelf.setFrequency(100.0 + v);
                s.highBell.setFrequency(7000.0 + v);
            });
        case 7:  // a transformer at each end of the chain, as in the product
            for (const auto& rig : rigs)
                for (Channel* channel : {&rig->left, &rig->right}) {
                    const bool two = std::strchr(layout.left, '2') != nullptr;
                    channel->first->setInputTransformerDisable(0.0);
                    channel->first->setOutputTransformerDisable(two ? 1.0 : 0.0);
                    channel->second->setInputTransformerDisable(1.0);
                    channel->second->setOutputTransformerDisable(0.0);
                }
            return;
        case 5:
        case 6:
            return onPreamps([=, set = kPreampSetters[below(4)]](QB9& s) { (s.*set)(v); });
        default: {
            // Switches bands off, and stages on, more often than a uniform value would.
            const int index = below(14);
            const bool zero = index >= 11 ? v < 0.3 : index >= 8 && v < 0.8;
            const auto set = kStripSetters[index % 11];
            return onStrips([=](T46& s) { (s.*set)(zero ? 0.0 : v); });
        }
        }
    }

    double sample(int kind)
    {
        constexpr double kSizes[] = {0.2, 3.0, 60.0, 0.0, 1e-310, 1e-40, 1e30, 1e-5};
        if (kind < 8)
            return kSizes[kind] * std::normal_distribution<double>()(random);
        return below(kind == 8 ? 2 : 40) ? -0.0 : kind == 8 ? 0.0 : 1e-30;
    }
    static constexpr int kKinds = 10;

private:
    std::mt19937 random;
};

Rigs makeRigs()
{
    Rigs rigs;
    const auto add = [&](std::function<ProcessingForm(int)> form) {
        rigs.push_back(std::make_unique<Rig>());
        rigs.back()->form = std::move(form);
    };
    const ProcessingForms forms;  // plain first
    for (const ProcessingForm form : forms)
        add([form](int) { return form; });
    add([forms](int block) {  // another form for each block
        return forms.begin()[block % (forms.end() - forms.begin())];
    });
    return rigs;
}

void runSideBySide(unsigned seed, const Layout& layout, int blocks, std::set<int>& bandModes,
                   int& glidesEnded, int& together)
{
    Automation automation(seed);
    const Rigs rigs = makeRigs();
    int kind = 0;
    for (int block = 0; block < blocks; ++block) {
        // Bursts of changes with pauses between them, so that glides reach their end.
        if (automation.below(12) == 0)
            for (int i = automation.below(12); i >= 0; --i)
                automation.turnSomething(rigs, layout);
        if (automation.below(25) == 0)
            kind = automation.below(Automation::kKinds);
        // Mostly full sub-blocks and a shorter one, sometimes any.
        std::vector<int> counts(static_cast<std::size_t>(automation.below(kMaxSubBlocks)),
                                kMaxCount);
        if (automation.below(8) == 0)
            for (int& one : counts)
                one = automation.below(2) ? kMaxCount : 1 + automation.below(kMaxCount);
        counts.push_back(automation.below(3) ? 1 + automation.below(kMaxCount) : kMaxCount);
        const int count = std::accumulate(counts.begin(), counts.end(), 0);
        Rig& plain = *rigs.front();
        for (int i = 0; i < count; ++i) {
            plain.left.samples[i] = automation.sample(kind);
            plain.right.samples[i] = automation.sample(kind);
        }
        for (const auto& rig : rigs)
            if (rig != rigs.front()) {
                std::memcpy(rig->left.samples, plain.left.samples, sizeof plain.left.samples);
                std::memcpy(rig->right.samples, plain.right.samples, sizeof plain.right.samples);
            }
        const int glide = plain.left.first->gainRampCount;
        for (const auto& rig : rigs) {
            const StripChain right = chainOf(rig->right, layout.right);
            together +=
                run(rig->form(block), chainOf(rig->left, layout.left),
                    layout.right ? &right : nullptr, rig->left.samples, rig->right.samples, counts);
        }
        if (glide > 0 && glide < count && plain.left.first->gainRampCount == 0)
            ++glidesEnded;
        bandModes.insert(plain.left.first->bandMode);
        for (const auto& rig : rigs) {
            rig->left.expectSameAs(plain.left, count);
            rig->right.expectSameAs(plain.right, count);
        }
        ASSERT_FALSE(::testing::Test::HasFailure())
            << "seed " << seed << ", " << layout.name << ", block " << block << " of " << count
            << ", input " << kind << ", band mode " << plain.left.first->bandMode << " and "
            << plain.right.first->bandMode;
    }
}

TEST(StripRun, EveryFormLeavesTheSameBitsInSamplesAndStrips)
{
    std::set<int> bandModes;
    int glidesEnded = 0, together = 0;
    for (unsigned seed = 1; seed <= 3; ++seed)
        for (const Layout& layout : kLayouts) {
            runSideBySide(seed, layout, &layout == kLayouts ? 1200 : 350, bandModes, glidesEnded,
                          together);
            if (HasFatalFailure())
                return;
        }
    EXPECT_EQ(bandModes.size(), 19U);  // every band mode, and the process switched off
    EXPECT_GT(glidesEnded, 20);
    if (bestProcessingForm() > ProcessingForm::Sse2) {
        EXPECT_GT(together, 500);
    }
}

TEST(StripRun, BadNumbersInItsSettersLeaveTheSignalFinite)
{
    const double inf = std::numeric_limits<double>::infinity();
    for (const double bad : {std::nan(""), inf, -inf, 1e300, -1e300, 7.0})
        for (const auto& rig : makeRigs()) {
            Channel& channel = rig->left;
            const auto expectFinite = [&] {
                for (int block = 0; block < 100; ++block) {
                    std::fill_n(channel.samples, kMaxCount, 0.5);
                    channel.preamp->applyPhase(channel.samples, kMaxCount);
                    run(rig->form(block), chainOf(channel, "P12"), nullptr, channel.samples,
                        channel.samples, {kMaxCount});
                    for (int i = 0; i < kMaxCount; ++i)
                        ASSERT_TRUE(std::isfinite(channel.samples[i]))
                            << bad << " in block " << block;
                }
            };
            channel.preamp->setSampleRate(96000.0);
            channel.first->setSampleRate(96000.0);
            channel.first->setProcessOn(static_cast<float>(bad));
            channel.first->setProcessOn(1.0F);
            for (const auto setter : kPreampSetters)
                (channel.preamp.strip->*setter)(bad);
            for (const double value : {1.0, bad})  // with all bands on, then with the bad value
                for (const auto setter : kStripSetters)
                    (channel.first.strip->*setter)(value);
            channel.preamp->setPhase(bad);
            channel.first->setLowFrequency(1.0);
            channel.first->setMidFrequency(1.0);
            channel.first->setHighFrequency(1.0);
            expectFinite();
            channel.first->setSampleRate(bad);
            expectFinite();
        }
}

}  // namespace
