// Vst2Wrapper as a host meets it: creation, the C border, parameters, rates, buses and blocks.
#include "Times.h"
#include "FakePlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>
#include <thread>

using namespace fake;

namespace {

struct WrappedEffect : testing::Test {
    Plugin plugin;
    Host host{plugin};
};

TEST(WrapperCreation, AnythingThatFailsOnTheWayGivesNullAndLeavesNothingAlive)
{
    Plugin plugin;
    const auto create = [&plugin](const TUID id) {
        plugin.factory->addRef();
        return Vst2Wrapper::create(plugin.factory, id, 1, nullptr);
    };
    TUID unknown = {};
    EXPECT_EQ(Vst2Wrapper::create(nullptr, unknown, 1, nullptr), nullptr);
    EXPECT_EQ(create(unknown), nullptr);
    EXPECT_EQ(create(plugin.controllerId), nullptr);
    plugin.controllerStarts = false;
    EXPECT_EQ(create(plugin.componentId), nullptr);
    plugin.componentStarts = false;
    EXPECT_EQ(create(plugin.componentId), nullptr);
    EXPECT_EQ(plugin.alive, 0);
    plugin.factory->addRef();
    EXPECT_EQ(plugin.factory->release(), 1u) << "references of the factory were kept";
}

TEST_F(WrappedEffect, AsksTheHostNothingBeforeThatHoldsItAndClosesWithoutARest)
{
    EXPECT_EQ(host.effect->numParams, kWritable);
    EXPECT_EQ(host.effect->flags, 16 + 32 + 512);
    EXPECT_EQ(host.call(effIdentify), 0x4E764566);
    EXPECT_TRUE(host.log.empty());
    Plugin other;
    {
        Host closing(other);
    }
    EXPECT_EQ(other.alive, 0);
    other.factory->addRef();
    EXPECT_EQ(other.factory->release(), 1u);
}

TEST_F(WrappedEffect, NoCallWithNastyArgumentsWritesMoreThanAHostHasRoomFor)
{
    const auto roomFor = [](VstInt32 opcode) -> std::size_t {
        switch (opcode) {
        case effGetProgramName:
        case effGetProgramNameIndexed:
            return 24;
        case effGetParamLabel:
        case effGetParamDisplay:
            return 9;
        case effGetParamName:
        case effGetEffectName:
            return 32;
        case effGetVendorString:
        case effGetProductString:
            return 64;
        case effGetInputProperties:
        case effGetOutputProperties:
            return 128;
        case effGetParameterProperties:
            return 152;
        case effGetChunk:
            return sizeof(void*);
        default:
            return 0;
        }
    };
    const std::string untouched(1000, 'x');
    for (VstInt32 opcode = -1; opcode <= 100; ++opcode) {
        if (opcode == effClose)
            continue;
        // Pointers travel in the value of these two: a host has good ones or none.
        const bool hasPointer =
            opcode == effSetSpeakerArrangement || opcode == effGetSpeakerArrangement;
        for (const VstInt32 index : {0, 1, 2, 3, kWritable, 1000, -1, INT_MIN, INT_MAX})
            for (const VstIntPtr value :
                 {VstIntPtr{0}, VstIntPtr{-1}, VstIntPtr{INT_MIN}, VstIntPtr{1} << 40})
                for (const float opt : {0.0f, -1.0f, NAN, INFINITY}) {
                    std::string room = untouched;
                    host.call(opcode, index, hasPointer ? 0 : value, nullptr, opt);
                    host.call(opcode, index, hasPointer ? 0 : value, &room[0], opt);
                    const std::size_t size = roomFor(opcode);
                    ASSERT_EQ(room.find_first_not_of('x', size), std::string::npos)
                        << "opcode " << opcode << ", index " << index;
                }
    }
    for (const VstInt32 index : {-1, kWritable, INT_MIN, INT_MAX}) {
        host.set(index, 0.7f);
        EXPECT_EQ(host.get(index), 0.0f);
    }
    host.effect->process(host.effect, nullptr, nullptr, 16);
    host.effect->processReplacing(host.effect, nullptr, nullptr, -5);
    EXPECT_EQ(host.effect->dispatcher(nullptr, effGetVstVersion, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(host.block(), (Values{})) << "one of the calls changed a parameter";
}

TEST_F(WrappedEffect, AnAbsurdBlockLengthNeitherEndsTheEffectNorTakesItsMemory)
{
    host.mains(true);
    host.call(effSetBlockSize, 0, 1 << 26);
    host.block(100);
    EXPECT_EQ(host.component->blocks.back().frames, 100);
    const Calls& calls = host.component->calls;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "frames 67108864"), 0);
}

TEST_F(WrappedEffect, NamesLabelsAndDisplaysAreThoseOfTheWritableParametersInOrder)
{
    const char* const names[] = {"Level", "Switch", "A title longer than the room of", "Beyond"};
    const char* const labels[] = {"dB", "", "furlongs", ""};
    const char* const displays[] = {"0.5000", "On", "0.250000", "0.0000"};
    for (VstInt32 i = 0; i < kWritable; ++i) {
        EXPECT_EQ(host.text(effGetParamName, i), names[i]);
        EXPECT_EQ(host.text(effGetParamLabel, i), labels[i]);
        EXPECT_EQ(host.text(effGetParamDisplay, i), displays[i]);
        EXPECT_EQ(host.call(effCanBeAutomated, i), i == 2 ? 0 : 1);
    }
    EXPECT_EQ(host.text(effGetEffectName), "An effect with more letters than");
    EXPECT_EQ(host.text(effGetProgramName), host.text(effGetProgramNameIndexed, 0));
    EXPECT_EQ(host.text(effGetProgramNameIndexed, 1), "");

    VstParameterProperties properties{};
    properties.flags = 1024;
    EXPECT_EQ(host.call(effGetParameterProperties, 2, 0, &properties), 1);
    EXPECT_EQ(properties.flags, 1024 + 2);
    EXPECT_EQ(properties.maxInteger, 25);
    EXPECT_STREQ(properties.label, "A title longer than the room of any host");
    EXPECT_STREQ(properties.shortLabel, "A title");
}

TEST_F(WrappedEffect, TheControllerGetsWaitingValuesWhenItAsksAndTheHostNewsOfItsState)
{
    host.set(0, 0.9f);
    EXPECT_EQ(host.controller->getParamNormalized(kLevelId), 0.5);
    IComponentHandler* const wrapper = host.controller->getComponentHandler();
    FUnknownPtr<IPendingValues>(wrapper)->deliverPendingValues();
    EXPECT_FLOAT_EQ(static_cast<float>(host.controller->getParamNormalized(kLevelId)), 0.9f);

    host.controller->setDirty(true);
    EXPECT_EQ(host.timesAsked(audioMasterUpdateDisplay), 1);
    host.set(0, 0.75f);
    wrapper->restartComponent(kParamValuesChanged);
    EXPECT_EQ(host.timesAsked(audioMasterUpdateDisplay), 2);
    EXPECT_EQ(host.get(0), 0.75f) << "a value on its way to the controller was lost";
    wrapper->performEdit(kLevelId, std::nan(""));
    EXPECT_EQ(host.get(0), 0.75f);
    wrapper->performEdit(kLevelId, 3.0);
    EXPECT_EQ(host.get(0), 1.0f);
}

TEST_F(WrappedEffect, TypedTextSetsAParameterOnlyIfItIsANumber)
{
    host.block();
    char number[] = "0.25", wild[] = "17", low[] = "-3";
    EXPECT_EQ(host.call(effString2Parameter, 0, 0, number), 1);
    EXPECT_EQ(host.get(0), 0.25f);
    EXPECT_EQ(host.text(effGetParamDisplay, 0), "0.2500");
    EXPECT_EQ(host.block(), (Values{{kLevelId, 0.25}}));
    EXPECT_EQ(host.call(effString2Parameter, 0, 0, wild), 1);
    EXPECT_EQ(host.block(), (Values{{kLevelId, 1.0}}));
    EXPECT_EQ(host.call(effString2Parameter, 0, 0, low), 1);
    EXPECT_EQ(host.block(), (Values{{kLevelId, 0.0}}));

    std::string endless(5000, 'a');
    for (std::string text : {std::string("abc"), std::string(), std::string("nan"), endless}) {
        EXPECT_EQ(host.call(effString2Parameter, 1, 0, &text[0]), 0) << text.substr(0, 10);
        EXPECT_EQ(host.get(1), 1.0f) << text.substr(0, 10);
    }
    EXPECT_EQ(host.block(), Values());
}

TEST(WrapperStart, ValuesFoundByTheControllerWhenItStartsReachTheProcessorWithTheFirstBlock)
{
    Plugin plugin;
    plugin.whileControllerStarts = [&plugin] {
        plugin.controller->edit(kBeyondId, 0.875);
        plugin.controller->edit(kMeterId, 0.5);
    };
    Host host(plugin);
    EXPECT_EQ(host.get(3), 0.875f);
    host.mains(true);
    EXPECT_EQ(host.block(),
              (Values{{kLevelId, 0.5}, {kSwitchId, 1.0}, {kLongId, 0.25}, {kBeyondId, 0.875}}));
    EXPECT_EQ(host.block(), Values());
    EXPECT_EQ(host.timesAsked(audioMasterAutomate), 0);
}

TEST_F(WrappedEffect, AThousandHostValuesBetweenTwoBlocksArriveAsTheLastOne)
{
    host.block();
    for (int i = 1; i <= 1000; ++i)
        host.set(3, static_cast<float>(i) / 1024.0f);
    host.set(1, 7.0f);
    host.set(1, NAN);
    EXPECT_EQ(host.block(), (Values{{kBeyondId, 1000.0 / 1024.0}, {kSwitchId, 1.0}}));
    EXPECT_EQ(host.controller->getParamNormalized(kBeyondId), 0.0);
    host.call(effEditIdle);
    EXPECT_EQ(host.controller->getParamNormalized(kBeyondId), 1000.0 / 1024.0);
    EXPECT_EQ(host.timesAsked(audioMasterAutomate), 0) << "the host's own values came back to it";
}

TEST_F(WrappedEffect, AnEditOfThePluginsGoesToHostAndProcessorByTheHostsIndex)
{
    host.block();
    host.controller->edit(kBeyondId, 0.75);
    host.controller->edit(12345, 0.75);
    host.controller->edit(kMeterId, 0.25);
    ASSERT_EQ(host.log.size(), 3u);
    const VstInt32 opcodes[] = {audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(host.log[i].opcode, opcodes[i]);
        EXPECT_EQ(host.log[i].index, 3);
    }
    EXPECT_EQ(host.log[1].opt, 0.75f);
    EXPECT_EQ(host.get(3), 0.75f);
    EXPECT_EQ(host.block(), (Values{{kBeyondId, 0.75}, {kMeterId, 0.25}}));
}

TEST_F(WrappedEffect, AnEditThatIsNewerThanAHostValueIsNotUndoneWhenThatOneArrives)
{
    host.set(0, 0.75f);
    ParameterInfo info;
    ASSERT_EQ(host.controller->getParameterInfo(0, info), kResultTrue);
    host.controller->setParamNormalized(info.id, 0.25);
    host.controller->edit(info.id, 0.25);
    host.call(effEditIdle);
    EXPECT_EQ(host.controller->getParamNormalized(info.id), 0.25);
    EXPECT_EQ(host.get(0), 0.25f);
}

TEST_F(WrappedEffect, AReportOfTheProcessorReachesTheControllerWithTheTickAndBeforeTheStateIsRead)
{
    host.component->meter = 0.5;
    host.block();
    EXPECT_EQ(host.controller->getParamNormalized(kMeterId), 0.0);
    host.call(effEditIdle);
    EXPECT_EQ(host.controller->getParamNormalized(kMeterId), 0.5);
    host.component->meter = 0.75;
    host.block();
    host.chunk();
    EXPECT_EQ(host.controller->getParamNormalized(kMeterId), 0.75);
}

TEST_F(WrappedEffect, ARateOrBlockLengthSetWhileRunningComesBetweenTwoActivations)
{
    host.mains(true);
    host.block();
    host.component->calls.clear();
    host.setRate(192000.0f);
    EXPECT_EQ(host.component->calls,
              (Calls{"processing 0", "active 0", "rate 192000", "frames 256", "active 1"}));
    EXPECT_EQ(host.effect->initialDelay, 0);
    EXPECT_EQ(host.timesAsked(audioMasterIOChanged), 1);

    host.component->calls.clear();
    host.call(effSetBlockSize, 0, 512);
    host.call(effSetBlockSize, 0, 512);
    host.setRate(192000.0f);
    EXPECT_EQ(host.component->calls, (Calls{"active 0", "rate 192000", "frames 512", "active 1"}));
    host.mains(false);
    host.component->calls.clear();
    host.setRate(48000.0f);
    // For a moment, since the latency of a rate is told only then.
    EXPECT_EQ(host.component->calls, (Calls{"rate 48000", "frames 512", "active 1", "active 0"}));
    EXPECT_EQ(host.effect->initialDelay, 96);
}

TEST_F(WrappedEffect, AHostThatNeverTurnsTheMainsOnLearnsTheLatencyAndIsHeard)
{
    host.setRate(192000.0f);
    EXPECT_EQ(host.effect->initialDelay, 0);
    EXPECT_EQ(host.timesAsked(audioMasterIOChanged), 1);
    host.component->calls.clear();
    host.block();
    host.mains(false);
    host.block();
    host.block();
    EXPECT_EQ(host.component->calls,
              (Calls{"active 1", "processing 1", "processing 0", "active 0"}))
        << "a block after mains-off activates nothing";
    EXPECT_EQ(host.component->blocks.size(), 3u);
}

TEST_F(WrappedEffect, ABlockThatMeetsASetupIsSilentAndTheSetupWaitsForABlock)
{
    host.mains(true);
    std::vector<float> ones(16, 1.0f), out(32, 7.0f);
    float* inputs[] = {ones.data(), ones.data()};
    float* outputs[] = {out.data(), nullptr};
    plugin.whileSetUp = [&] {
        std::thread audio([&] { host.effect->processReplacing(host.effect, inputs, outputs, 16); });
        audio.join();
    };
    host.setRate(96000.0f);
    EXPECT_EQ(std::count(out.begin(), out.end(), 0.0f), 16);
    EXPECT_EQ(std::count(out.begin(), out.end(), 7.0f), 16);
    plugin.whileSetUp = nullptr;
    host.effect->processReplacing(host.effect, inputs, outputs, 16);
    EXPECT_EQ(out[15], 1.0f);

    std::atomic<bool> stop{false};
    std::thread audio([&] {
        while (!stop) {
            host.effect->processReplacing(host.effect, inputs, outputs, 16);
            host.component->blocks.clear();
        }
    });
    VstSpeakerArrangement mono{}, stereo{};
    mono.type = kSpeakerArrMono;
    stereo.type = kSpeakerArrStereo;
    for (int i = 0; i < times(); i += 4) {
        host.setRate(i % 8 ? 48000.0f : 192000.0f);
        host.call(effSetBlockSize, 0, i % 8 ? 64 : 128);
        host.call(effMainsChanged, 0, i % 8 == 0);
        VstSpeakerArrangement* const wanted = i % 8 ? &stereo : &mono;
        // The component has no channels more than the host's pointers.
        host.call(effSetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(wanted), wanted);
    }
    stop = true;
    audio.join();
    EXPECT_EQ(host.component->collisions, 0);
}

TEST_F(WrappedEffect, AValueThatIsSetWhileTheStateIsTakenOverIsNotLost)
{
    const std::string state = host.chunk();
    const auto expectSettled = [&](float value) {
        host.call(effEditIdle);
        host.block();
        EXPECT_EQ(host.get(0), value);
        EXPECT_EQ(static_cast<float>(host.controller->getParamNormalized(kLevelId)), value);
        EXPECT_EQ(static_cast<float>(host.component->heard[kLevelId]), value);
    };
    // As the wrapper reads what the controller has now, on the audio thread.
    plugin.whileValueIsRead = [&, count = 0](ParamID id) mutable {
        if (id == kLevelId && count++ == 0)
            std::thread([&] { host.set(0, 0.125f); }).join();
    };
    host.restore(state);
    plugin.whileValueIsRead = nullptr;
    expectSettled(0.125f);

    std::atomic<int> round{0};
    std::thread setter([&] {
        for (int seen = 0; seen < times();)
            if (round != seen)
                host.set(0, static_cast<float>(++seen % 1024) / 1024.0f);
    });
    for (int i = 1; i <= times(); ++i) {
        round = i;
        host.restore(state);
        if (i % 64 == 0)
            host.component->blocks.clear();
    }
    setter.join();
    // Which of the two came last is not known; but all agree on it.
    host.call(effEditIdle);
    host.block();
    expectSettled(host.get(0));
}

TEST_F(WrappedEffect, ABlockBeforeTheMainsAreOnFindsTheComponentActive)
{
    host.component->calls.clear();
    host.block();
    host.block();
    EXPECT_EQ(host.component->calls, (Calls{"active 1", "processing 1"}));
    host.mains(true);
    host.mains(false);
    host.mains(false);
    EXPECT_EQ(host.component->calls,
              (Calls{"active 1", "processing 1", "processing 0", "active 0"}));
}

TEST_F(WrappedEffect, ARefusedArrangementLeavesAsManyChannelsAsTheComponentHas)
{
    VstSpeakerArrangement mono{}, stereo{}, odd{};
    mono.type = kSpeakerArrMono;
    stereo.type = kSpeakerArrStereo;
    odd.type = kSpeakerArrUserDefined;
    const auto arrange = [this](VstSpeakerArrangement* in, VstSpeakerArrangement* out) {
        return host.call(effSetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(in), out);
    };
    EXPECT_EQ(arrange(&stereo, &stereo), 1);
    EXPECT_EQ(arrange(nullptr, nullptr), 1);
    EXPECT_EQ(arrange(&odd, &stereo), 0);
    EXPECT_EQ(host.timesAsked(audioMasterIOChanged), 0);

    EXPECT_EQ(arrange(&mono, &mono), 1);
    EXPECT_EQ(host.effect->numInputs, 1);
    EXPECT_EQ(host.effect->numOutputs, 1);
    EXPECT_EQ(host.timesAsked(audioMasterIOChanged), 1);
    VstSpeakerArrangement *in = nullptr, *out = nullptr;
    ASSERT_EQ(host.call(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&in), &out), 1);
    EXPECT_EQ(in->type, kSpeakerArrMono);
    EXPECT_EQ(out->numChannels, 1);
    VstPinProperties pin{};
    EXPECT_EQ(host.call(effGetInputProperties, 1, 0, &pin), 0);

    EXPECT_EQ(arrange(&stereo, &mono), 0);
    EXPECT_EQ(host.effect->numInputs, 2);
    EXPECT_EQ(host.effect->numOutputs, 2);
    EXPECT_EQ(host.timesAsked(audioMasterIOChanged), 2);
    host.mains(true);
    host.block();
    EXPECT_EQ(host.component->blocks.back().inputs.size(), 2u);
    EXPECT_EQ(host.component->blocks.back().outputs.size(), 2u);
    ASSERT_EQ(host.call(effGetOutputProperties, 1, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Stereo Out");
    EXPECT_EQ(pin.flags, 1 + 2 + 4);
}

TEST_F(WrappedEffect, WholeBlocksPassTheHostsOwnBuffersOn)
{
    std::vector<float> samples(4000);
    float* in[] = {&samples[0], &samples[1000]};
    float* out[] = {&samples[2000], &samples[3000]};
    host.effect->processReplacing(host.effect, in, out, 1000);
    const FakeComponent::Block& block = host.component->blocks.back();
    EXPECT_EQ(block.frames, 1000);
    EXPECT_EQ(block.inputs, (std::vector<float*>{in[0], in[1]}));
    EXPECT_EQ(block.outputs, (std::vector<float*>{out[0], out[1]}));
    host.effect->processReplacing(host.effect, in, out, 0);
    EXPECT_EQ(host.component->blocks.back().frames, 0);
}

TEST_F(WrappedEffect, MissingAndSharedChannelsAreReplacedOverTheWholeOfALongBlock)
{
    constexpr std::size_t kFrames = 1000;  // the host announced 256
    std::vector<float> ramp(kFrames), silence(kFrames);
    std::iota(ramp.begin(), ramp.end(), 1.0f);
    const std::vector<float> kept = ramp;
    std::vector<float> left(kFrames), right(kFrames);
    const auto run = [&](float** in, float** out) {
        ramp = kept;
        std::fill(left.begin(), left.end(), -7.0f);
        std::fill(right.begin(), right.end(), -7.0f);
        const std::size_t before = host.component->blocks.size();
        host.set(0, 0.125f);
        host.effect->processReplacing(host.effect, in, out, kFrames);
        EXPECT_EQ(host.component->blocks[before].changes.back(),
                  Values::value_type(kLevelId, 0.125));
        for (std::size_t i = before + 1; i < host.component->blocks.size(); ++i)
            EXPECT_EQ(host.component->blocks[i].changes, Values()) << "slice " << i - before;
    };
    float* both[] = {left.data(), right.data()};
    float* oneOut[] = {nullptr, right.data()};
    float* same[] = {ramp.data(), ramp.data()};
    float* oneIn[] = {nullptr, ramp.data()};
    float* noneIn[] = {nullptr, nullptr};

    run(same, both);
    EXPECT_EQ(left, kept);
    EXPECT_EQ(right, kept) << "the right channel heard what the left one had changed";
    run(oneIn, both);
    EXPECT_EQ(left, silence);
    EXPECT_EQ(right, kept);
    run(same, oneOut);
    EXPECT_EQ(right, kept);
    run(noneIn, both);
    EXPECT_EQ(left, silence) << "silence was changed in place by the block before";
    run(nullptr, both);
    EXPECT_EQ(right, silence);
    run(same, nullptr);
}

TEST_F(WrappedEffect, ValuesSetOnOneThreadWhileAnotherProcessesAllArriveInTheEnd)
{
    host.mains(true);
    std::atomic<bool> stop{false};
    std::thread writer([&] {
        for (int i = 0; i <= 4096; ++i)
            for (VstInt32 parameter = 0; parameter < kWritable; ++parameter)
                host.set(parameter, static_cast<float>(i) / 8192.0f);
        stop = true;
    });
    double heard[kWritable] = {};
    std::thread audio([&] {
        for (bool last = false; !last;) {
            last = stop;
            host.component->meter = 0.5;
            for (const auto& [id, value] : host.block())
                heard[std::find(kWritableIds, kWritableIds + kWritable, id) - kWritableIds] = value;
            host.component->blocks.clear();
        }
    });
    while (!stop) {
        host.call(effEditIdle);
        host.get(0);
        std::this_thread::yield();
    }
    writer.join();
    audio.join();
    host.call(effEditIdle);
    for (const double value : heard)
        EXPECT_EQ(value, 0.5);
    for (const ParamID id : {kLevelId, kSwitchId, kLongId, kBeyondId, kMeterId})
        EXPECT_EQ(host.controller->getParamNormalized(id), 0.5) << id;
}

}  // namespace
