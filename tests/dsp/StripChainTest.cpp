// The fast forms of the strips against the plain one: side by side through random automation, every
// sample and every byte the strips keep.
#include "StripChain.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

constexpr int kMaxCount = StripProcessorQB9::kMaxCount;

// In memory that was zero before, so that padding compares equal.
template <class Strip>
class Zeroed {
public:
    Zeroed() : memory(new unsigned char[sizeof(Strip)]()) { strip = new (memory.get()) Strip; }
    ~Zeroed() { strip->~Strip(); }
    Zeroed(const Zeroed&) = delete;
    Zeroed& operator=(const Zeroed&) = delete;

    Strip* operator->() const { return strip; }
    Strip* get() const { return strip; }
    bool sameBytesAs(const Zeroed& other) const
    {
        return std::memcmp(memory.get(), other.memory.get(), sizeof(Strip)) == 0;
    }

private:
    std::unique_ptr<unsigned char[]> memory;
    Strip* strip;
};

struct Channel {
    Zeroed<StripProcessorQB9> preamp;
    Zeroed<StripProcessorT46> first, second;
    double samples[kMaxCount];

    void expectSameAs(const Channel& plain, int count) const
    {
        EXPECT_EQ(
            0,
            std::memcmp(samples, plain.samples, sizeof(double) * static_cast<std::size_t>(count)));
        EXPECT_TRUE(preamp.sameBytesAs(plain.preamp));
        EXPECT_TRUE(first.sameBytesAs(plain.first));
        EXPECT_TRUE(second.sameBytesAs(plain.second));
    }
};

// Two channels in one form; what is not in the chain stays as it is.
struct Rig {
    Channel left, right;
    std::function<ProcessingForm(int block)> form;
};

using Rigs = std::vector<std::unique_ptr<Rig>>;

enum class Layout { Stereo, Mono, NoLeft, NoRight, NoPreamp, OneStrip, StripOnly, Uneven };
constexpr Layout kLayouts[] = {Layout::Stereo,    Layout::Mono,     Layout::NoLeft,
                               Layout::NoRight,   Layout::NoPreamp, Layout::OneStrip,
                               Layout::StripOnly, Layout::Uneven};

StripChain chainOf(const Channel& channel, Layout layout, bool isLeft)
{
    StripChain chain{channel.preamp.get(), channel.first.get(), channel.second.get()};
    if (layout == (isLeft ? Layout::NoLeft : Layout::NoRight))
        return {};
    if (layout == Layout::NoPreamp || layout == Layout::StripOnly)
        chain.preamp = nullptr;
    if (layout == Layout::OneStrip || layout == Layout::StripOnly
        || (layout == Layout::Uneven && isLeft))
        chain.second = nullptr;
    return chain;
}

class Automation {
public:
    explicit Automation(unsigned seed) : random(seed) { }

    double unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(random); }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }

    // The same for all rigs; mostly on all strips, so that left and right often agree.
    void turnSomething(const Rigs& rigs)
    {
        const int side = below(10);
        const int strip = below(6);
        const auto onPreamps = [&](auto change) {
            for (const auto& rig : rigs) {
                if (side != 0)
                    change(*rig->left.preamp.get());
                if (side != 1)
                    change(*rig->right.preamp.get());
            }
        };
        const auto onStrips = [&](auto change) {
            for (const auto& rig : rigs)
                for (Channel* channel : {&rig->left, &rig->right}) {
                    if (side == (channel == &rig->left ? 0 : 1))
                        continue;
                    if (strip != 0)
                        change(*channel->first.get());
                    if (strip != 1)
                        change(*channel->second.get());
                }
        };
        using T46 = StripProcessorT46;
        using QB9 = StripProcessorQB9;
        const double v = unit();
        switch (below(20)) {
        case 0: {  // at the lowest rates a gain glide is over within a block or a few
            const double rates[] = {250.0, 700.0, 3000.0, 44100.0, 192000.0};
            const double rate = rates[below(5)];
            onPreamps([=](QB9& s) { s.setSampleRate(rate); });
            return onStrips([=](T46& s) { s.setSampleRate(rate); });
        }
        case 1:
            return onPreamps([=](QB9& s) { s.stripActive = v < 0.9; });
        case 2:
            return onStrips([=](T46& s) { s.setProcessOn(v < 0.8 ? 1.0F : 0.0F); });
        case 3:  // until the next update of the band switches it off again
            return onStrips([=](T46& s) { s.midBell.main.setLimitDrive(0.5); });
        case 4:
            return onStrips([=](T46& s) {
                s.lowShelf.skirt.instant = s.highBell.main.instant = v < 0.5;
                s.lowShelf.setFrequency(100.0 + v);
                s.highBell.setFrequency(7000.0 + v);
            });
        case 5:
        case 6: {
            constexpr void (QB9::*kSetters[])(double) = {&QB9::setDrive, &QB9::setHpf,
                                                         &QB9::setOutput, &QB9::set28k};
            return onPreamps([=, set = kSetters[below(4)]](QB9& s) { (s.*set)(v); });
        }
        default: {
            // Bands are out, and stages in circuit, more often than chance would have them.
            constexpr struct {
                void (T46::*set)(double);
                double zeroBelow;
            } kSetters[] = {
                {&T46::setLowShelf, 0},     {&T46::setLowFrequency, 0.3},
                {&T46::setLowGain, 0},      {&T46::setMidFrequency, 0.3},
                {&T46::setMidGain, 0},      {&T46::setHighShelf, 0},
                {&T46::setHighGain, 0},     {&T46::setHighFrequency, 0.3},
                {&T46::setAmpDisable, 0.8}, {&T46::setInputTransformerDisable, 0.8},
                {&T46::setLowFrequency, 0}, {&T46::setOutputTransformerDisable, 0.8},
                {&T46::setMidFrequency, 0}, {&T46::setHighFrequency, 0},
            };
            const auto& knob = kSetters[below(14)];
            return onStrips([=](T46& s) { (s.*knob.set)(v < knob.zeroBelow ? 0.0 : v); });
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
    add([forms](int block) {  // a different one each time
        return forms.begin()[block % (forms.end() - forms.begin())];
    });
    return rigs;
}

void runSideBySide(unsigned seed, Layout layout, int blocks, std::set<int>& bandModes,
                   int& glidesEnded)
{
    Automation automation(seed);
    const Rigs rigs = makeRigs();
    int kind = 0;
    for (int block = 0; block < blocks; ++block) {
        // Now and then a burst of changes, then quiet, so that glides run and come to their end.
        if (automation.below(12) == 0)
            for (int i = automation.below(12); i >= 0; --i)
                automation.turnSomething(rigs);
        if (automation.below(25) == 0)
            kind = automation.below(Automation::kKinds);
        const int count = automation.below(3) ? 1 + automation.below(kMaxCount) : kMaxCount;
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
        for (const auto& rig : rigs)
            processStrips(rig->form(block), chainOf(rig->left, layout, true),
                          chainOf(rig->right, layout, false), rig->left.samples,
                          layout == Layout::Mono ? nullptr : rig->right.samples, count);
        if (glide > 0 && glide < count && plain.left.first->gainRampCount == 0)
            ++glidesEnded;
        bandModes.insert(plain.left.first->bandMode);
        for (const auto& rig : rigs) {
            rig->left.expectSameAs(plain.left, count);
            rig->right.expectSameAs(plain.right, count);
        }
        ASSERT_FALSE(::testing::Test::HasFailure())
            << "seed " << seed << ", layout " << static_cast<int>(layout) << ", block " << block
            << " of " << count << ", input " << kind << ", band mode " << plain.left.first->bandMode
            << " and " << plain.right.first->bandMode;
    }
}

TEST(StripChain, EveryFormLeavesTheSameBitsInSamplesAndStrips)
{
    std::set<int> bandModes;
    int glidesEnded = 0;
    for (unsigned seed = 1; seed <= 3; ++seed)
        for (const Layout layout : kLayouts) {
            runSideBySide(seed, layout, layout == Layout::Stereo ? 3000 : 700, bandModes,
                          glidesEnded);
            if (HasFatalFailure())
                return;
        }
    EXPECT_EQ(bandModes.size(), 19U);  // all there are, and the process switch
    EXPECT_GT(glidesEnded, 20);
}

}  // namespace
