// The whole processor in its plain and its fast forms, side by side: the same bits, whatever is
// played, set or asked for.
#include "ProcessorProbe.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>

using namespace probe;

namespace {

constexpr double kRates[] = {44100.0, 96000.0, 192000.0};
constexpr int kLengths[] = {0, 1, 5, 15, 16, 17, 31, 64, 100, 512, 1000, 4096};

// One block of input, of a kind that changes now and then: noise, silence, far below and far above
// what music is.
float inputSample(std::mt19937& random, unsigned kind)
{
    const float noise = std::uniform_real_distribution<float>(-1.0f, 1.0f)(random);
    switch (kind % 6) {
    case 0:
        return 0.0f;
    case 1:
        return -0.0f;
    case 2:
        return noise * 1e-40f;
    case 3:
        return noise * 1e30f;
    case 4:
        return noise * 30.0f;
    default:
        return noise;
    }
}

bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void compareForms(double rate, SpeakerArrangement in, SpeakerArrangement out)
{
    const std::size_t channelsIn = in == SpeakerArr::kMono ? 1 : 2;
    const std::size_t channelsOut = out == SpeakerArr::kMono ? 1 : 2;
    std::vector<std::unique_ptr<Processor>> processors;
    for (const ProcessingForm form : ProcessingForms()) {
        processors.push_back(std::make_unique<Processor>(rate, form));
        processors.back()->arrange(in, out);
    }

    std::mt19937 random(static_cast<unsigned>(rate + static_cast<double>(channelsIn)));
    std::uniform_real_distribution<double> position(0.0, 1.0);
    unsigned kind = 5;
    for (int block = 0; block < 250; ++block) {
        // Nothing, a few parameters or all of them; ends and steps included.
        const unsigned odds = block % 20 == 0 ? 1 : random() % 3 ? 30 : 1000;
        for (ParamID id = 0; id < kPresetParamCount; ++id) {
            if (random() % odds)
                continue;
            double value = position(random);
            if (id == kPower || random() % 3 == 0)
                value = std::round(value * 9.0) / 9.0;
            for (auto& processor : processors)
                processor->set(id, value);
        }
        if (random() % 10 == 0)
            kind = static_cast<unsigned>(random());
        const auto length = static_cast<std::size_t>(kLengths[random() % std::size(kLengths)]);
        std::vector<Signal> input(channelsIn, Signal(length));
        for (Signal& channel : input)
            for (float& x : channel)
                x = inputSample(random, kind);

        std::vector<Signal> wanted;
        for (auto& processor : processors) {
            std::vector<Signal> own = input;
            const std::vector<Signal> result = processor->block(own, channelsOut);
            if (wanted.empty())
                wanted = result;
            for (std::size_t c = 0; c < channelsOut; ++c)
                ASSERT_TRUE(
                    std::equal(result[c].begin(), result[c].end(), wanted[c].begin(), sameBits))
                    << "form " << (&processor - processors.data()) << ", block " << block << " of "
                    << length << ", channel " << c;
        }
        if (block % 100 == 99)
            for (auto& processor : processors)
                processor->setActive(true);
    }
}

}  // namespace

TEST(Forms, OfTheWholeProcessorAgreeInEveryBitUnderRandomAutomation)
{
    for (const double rate : kRates)
        for (const auto& [in, out] : {std::pair{SpeakerArr::kMono, SpeakerArr::kMono},
                                      {SpeakerArr::kMono, SpeakerArr::kStereo},
                                      {SpeakerArr::kStereo, SpeakerArr::kStereo}}) {
            SCOPED_TRACE(testing::Message() << rate << " Hz, buses " << in << " and " << out);
            compareForms(rate, in, out);
        }
}
