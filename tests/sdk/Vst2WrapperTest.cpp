// Vst2Wrapper from a host's side: creation, the C interface, parameters, rates, buses and blocks.
#include "tests/sdk/FakePlugin.h"
#include "tests/support/Times.h"
#include "tests/support/Vst2Rooms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>
#include <thread>

using namespace fake;

namespace {

struct WrappedEffect : testing::Test {
    VstIntPtr arrange(VstInt32 from, VstInt32 to)
    {
        VstSpeakerArrangement in{}, out{};
        in.type = from;
        out.type = to;
        return host.call(effSetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&in), &out);
    }

    Plugin plugin;
    Host host{plugin};
};

TEST(WrapperCreation, AnyFailureGivesNullAndLeavesNoObjectAlive)
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
    plugin.componentStarts = plugin.controllerStarts = true;
    {
        Host closing(plugin);
        EXPECT_EQ(closing.call(effIdentify), 0x4E764566);
        EXPECT_TRUE(closing.log.empty()) << "the host was called before it holds the effect";
    }
    EXPECT_EQ(plugin.alive, 0);
    plugin.factory->addRef();
    EXPECT_EQ(plugin.factory->release(), 1u) << "references to the factory leaked";
}

TEST_F(WrappedEffect, NoCallWithOddArgumentsWritesBeyondTheHostsBuffer)
{
    const std::string untouched(1000, 'x');
    for (VstInt32 opcode = -1; opcode <= 100; ++opcode) {
        if (opcode == effClose)
            continue;
        // The value of these two is a pointer: a host passes a valid one or null.
        const bool hasPointer =
            opcode == effSetSpeakerArrangement || opcode == effGetSpeakerArrangement;
        for (const VstInt32 index : {0, 1, 2, 3, kWritable, 1000, -1, INT_MIN, INT_MAX})
            for (const VstIntPtr value :
                 {VstIntPtr{0}, VstIntPtr{-1}, VstIntPtr{INT_MIN}, VstIntPtr{1} << 40})
                for (const float opt : {0.0f, -1.0f, NAN, INFINITY}) {
                    std::string room = untouched;
                    host.call(opcode, index, hasPointer ? 0 : value, nullptr, opt);
                    host.call(opcode, index, hasPointer ? 0 : value, &room[0], opt);
                    ASSERT_EQ(room.find_first_not_of('x', roomOf(opcode)), std::string::npos)
                        << "opcode " << opcode << ", index " << index;
                }
    }
    for (const VstInt32 index : {-1, kWritable, INT_MIN, INT_MAX}) {
        host.set(index, 0.7f);
        EXPECT_EQ(host.get(index), 0.0f);
        for (const VstInt32 opcode : {effGetParamLabel, effGetParamDisplay, effGetParamName}) {
            std::string room = untouched;
            host.call(opcode, index, 0, &room[0]);
            EXPECT_EQ(room[0], '\0') << "opcode " << opcode << ", index " << index;
        }
    }
    host.effect->process(host.effect, nullptr, nullptr, 16);
    host.effect->processReplacing(host.effect, nullptr, nullptr, -5);
    EXPECT_EQ(host.effect->dispatcher(nullptr, effGetVstVersion, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(host.block(), (Values{})) << "one of the calls changed a parameter";
}

TEST_F(WrappedEffect, TellsTheHostWhatItsParametersAndCallsAre)
{
    VstParameterProperties properties{};
    EXPECT_EQ(host.call(effGetParameterProperties, 2, 0, &properties), 1);
    EXPECT_EQ(properties.minInteger, 0);
    EXPECT_EQ(properties.maxInteger, 25);
    EXPECT_EQ(properties.largeStepInteger, 2);
    EXPECT_STREQ(properties.shortLabel, "A title");
    char text[64];
    const struct {
        VstInt32 opcode, index;
        VstIntPtr value, answer;
    } rows[] = {{effCanBeAutomated, 0, 0, 1},        {effCanBeAutomated, 2, 0, 0},
                {effGetProgramNameIndexed, 0, 0, 1}, {effGetProgramNameIndexed, 1, 0, 0},
                {effSetProcessPrecision, 0, 0, 1},   {effSetProcessPrecision, 0, 1, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(host.call(row.opcode, row.index, row.value, text), row.answer) << row.opcode;
}

TEST_F(WrappedEffect, TheControllerGetsPendingValuesOnRequestAndTheHostIsToldOfChanges)
{
    host.set(0, 0.9f);
    char display[64];
    host.call(effGetParamDisplay, 0, 0, display);
    EXPECT_STREQ(display, "0.9000");
    EXPECT_EQ(host.controller->getParamNormalized(kLevelId), 0.5);
    IComponentHandler* const wrapper = host.controller->getComponentHandler();
    FUnknownPtr<IPendingValues>(wrapper)->deliverPendingValues();
    EXPECT_FLOAT_EQ(static_cast<float>(host.controller->getParamNormalized(kLevelId)), 0.9f);

    host.controller->setDirty(true);
    EXPECT_EQ(host.timesAsked(audioMasterUpdateDisplay), 1);
    host.set(0, 0.75f);
    wrapper->restartComponent(kParamValuesChanged);
    EXPECT_EQ(host.timesAsked(audioMasterUpdateDisplay), 2);
    EXPECT_EQ(host.get(0), 0.75f) << "a value pending for the controller was lost";
    wrapper->performEdit(kLevelId, std::nan(""));
    EXPECT_EQ(host.get(0), 0.75f);
    wrapper->performEdit(kLevelId, 3.0);
    EXPECT_EQ(host.get(0), 1.0f);
}

TEST_F(WrappedEffect, TypedTextSetsAParameterOnlyIfItIsANumber)
{
    const std::pair<std::string, std::optional<double>> rows[] = {{"0.25", 0.25},
                                                                  {"17", 1.0},
                                                                  {"-3", 0.0},
                                                                  {"abc", {}},
                                                                  {"", {}},
                                                                  {"nan", {}},
                                                                  {std::string(5000, 'a'), {}}};
    host.block();
    for (auto [text, taken] : rows) {
        SCOPED_TRACE(text.substr(0, 10));
        const float before = host.get(0);
        EXPECT_EQ(host.call(effString2Parameter, 0, 0, &text[0]), taken.has_value());
        EXPECT_EQ(host.get(0), taken ? static_cast<float>(*taken) : before);
        EXPECT_EQ(host.block(), taken ? Values({{kLevelId, *taken}}) : Values());
    }
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
    EXPECT_EQ(host.timesAsked(audioMasterAutomate), 0) << "the host's own values came back";
}

TEST_F(WrappedEffect, AnEditInThePluginReachesTheProcessorAndTheHostUnderItsIndex)
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

    host.set(0, 0.75f);
    host.controller->edit(kLevelId, 0.25);
    host.call(effEditIdle);
    EXPECT_EQ(host.controller->getParamNormalized(kLevelId), 0.25)
        << "an older value from the host replaced the edit";
    EXPECT_EQ(host.get(0), 0.25f);
}

TEST_F(WrappedEffect, AReportedValueReachesTheControllerOnIdleAndBeforeTheStateIsRead)
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
    // Briefly active, since the latency at the new rate is known only then.
    EXPECT_EQ(host.component->calls, (Calls{"rate 48000", "frames 512", "active 1", "active 0"}));
    EXPECT_EQ(host.effect->initialDelay, 96);
    EXPECT_EQ(host.timesAsked(audioMasterIOChanged), 2);

    host.mains(true);
    host.component->calls.clear();
    for (const float bad : {0.0f, -44100.0f, NAN, INFINITY, 1e7f})
        host.setRate(bad);
    EXPECT_EQ(host.component->calls, Calls());
    host.call(effSetBlockSize, 0, 1 << 26);
    host.block(100);
    EXPECT_EQ(host.component->blocks.back().frames, 100);
    const Calls& calls = host.component->calls;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "frames 67108864"), 0) << "an absurd length";
}

TEST_F(WrappedEffect, WithoutMainsOnBlocksAreProcessed)
{
    host.component->calls.clear();
    host.block();
    host.block();
    EXPECT_EQ(host.component->calls, (Calls{"active 1", "processing 1"}));
    host.mains(true);
    host.mains(false);
    host.mains(false);
    host.block();
    EXPECT_EQ(host.component->calls,
              (Calls{"active 1", "processing 1", "processing 0", "active 0"}))
        << "a block after mains-off must not activate";
    EXPECT_EQ(host.component->blocks.size(), 3u);
}

TEST_F(WrappedEffect, ABlockDuringASetupIsSilentAndASetupWaitsForABlock)
{
    const struct {
        const char* name;
        std::function<void(bool)> setUp;  // toggles between two setups
    } rows[] = {
        {"rate", [&](bool other) { host.setRate(other ? 48000.0f : 96000.0f); }},
        {"block", [&](bool other) { host.call(effSetBlockSize, 0, other ? 256 : 512); }},
        {"mains", [&](bool other) { host.mains(other); }},
        {"arrangement",
         [&](bool other) {
             const VstInt32 type = other ? kSpeakerArrStereo : kSpeakerArrMono;
             arrange(type, type);
         }},
    };
    std::vector<float> in(32, 1.0f), out(32);
    float* inputs[] = {in.data(), in.data() + 16};
    float* outputs[] = {out.data(), nullptr};
    host.mains(true);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        host.component->calls.clear();
        in.assign(32, 1.0f);
        out.assign(32, 7.0f);
        plugin.whileInside = [&] {
            std::thread([&] {
                host.effect->processReplacing(host.effect, inputs, outputs, 16);
            }).join();
        };
        row.setUp(false);
        EXPECT_NE(host.component->calls, Calls());
        EXPECT_EQ(std::count(out.begin(), out.end(), 0.0f), 16);
        EXPECT_EQ(std::count(out.begin(), out.end(), 7.0f), 16);

        std::thread other;
        plugin.whileInside = [&] {
            host.component->calls.clear();
            other = std::thread([&row] { row.setUp(true); });
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            EXPECT_EQ(host.component->calls, Calls());
        };
        host.effect->processReplacing(host.effect, inputs, outputs, 16);
        EXPECT_EQ(out[15], 1.0f);
        other.join();
        EXPECT_NE(host.component->calls, Calls());
    }

    // However blocks and setups coincide, a block is either complete or silent.
    plugin.whileInside = nullptr;
    host.component->keepsRecord = false;
    std::atomic<bool> stop{false};
    std::thread audio([&] {
        while (!stop) {
            in.assign(32, 1.0f);
            out.assign(32, 7.0f);
            host.effect->processReplacing(host.effect, inputs, outputs, 16);
            EXPECT_EQ(std::count(out.begin(), out.begin() + 16, out[0]), 16);
            EXPECT_TRUE(out[0] == 1.0f || out[0] == 0.0f) << out[0];
        }
    });
    for (int i = 0; i < times(); ++i)
        rows[i % 4].setUp(i / 4 % 2 != 0);
    stop = true;
    audio.join();
}

TEST_F(WrappedEffect, AValueThatIsSetWhileAStateIsRestoredIsNotLost)
{
    const std::string state = host.chunk();
    const auto expectSettled = [&](float value) {
        host.call(effEditIdle);
        host.block();
        EXPECT_EQ(host.get(0), value);
        EXPECT_EQ(static_cast<float>(host.controller->getParamNormalized(kLevelId)), value);
        EXPECT_EQ(static_cast<float>(host.component->heard[kLevelId]), value);
    };
    // Sets a value from another thread while the wrapper reads the restored ones.
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
    // Either value may have come last, but all must hold the same one.
    host.call(effEditIdle);
    host.block();
    expectSettled(host.get(0));
}

TEST_F(WrappedEffect, ARefusedArrangementLeavesAsManyChannelsAsTheComponentHas)
{
    constexpr VstInt32 kOdd = kSpeakerArrUserDefined;
    const struct {
        VstInt32 in, out;
        int taken, channels, timesChanged;
    } rows[] = {
        {kSpeakerArrStereo, kSpeakerArrStereo, 1, 2, 0},
        {kOdd, kSpeakerArrStereo, 0, 2, 0},
        {kSpeakerArrMono, kSpeakerArrMono, 1, 1, 1},
        {kSpeakerArrStereo, kSpeakerArrMono, 0, 2, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "from " << row.in << " to " << row.out);
        const VstInt32 type = row.channels == 1 ? kSpeakerArrMono : kSpeakerArrStereo;
        EXPECT_EQ(arrange(row.in, row.out), row.taken);
        EXPECT_EQ(host.effect->numInputs, row.channels);
        EXPECT_EQ(host.effect->numOutputs, row.channels);
        EXPECT_EQ(host.timesAsked(audioMasterIOChanged), row.timesChanged);
        VstSpeakerArrangement *in = nullptr, *out = nullptr;
        ASSERT_EQ(host.call(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&in), &out),
                  1);
        EXPECT_EQ(in->type, type);
        EXPECT_EQ(out->numChannels, row.channels);
        EXPECT_STREQ(in->speakers[0].name, row.channels == 1 ? "M" : "L");
        EXPECT_EQ(out->speakers[row.channels - 1].type,
                  row.channels == 1 ? ::kSpeakerM : ::kSpeakerR);
        // A side that the host leaves out stays as it is.
        EXPECT_EQ(host.call(effSetSpeakerArrangement, 0, 0, out), 1);
        EXPECT_EQ(host.effect->numInputs, row.channels);
        VstPinProperties pin{};
        EXPECT_EQ(host.call(effGetOutputProperties, row.channels, 0, &pin), 0);
        ASSERT_EQ(host.call(effGetOutputProperties, row.channels - 1, 0, &pin), 1);
        EXPECT_STREQ(pin.label, "Stereo Out");
        EXPECT_EQ(pin.flags, row.channels == 1 ? 1 + 4 : 1 + 2 + 4);
        EXPECT_EQ(pin.arrangementType, type);
        host.block();
        EXPECT_EQ(host.component->blocks.back().inputs, row.channels);
        EXPECT_EQ(host.component->blocks.back().outputs, row.channels);
    }
}

TEST_F(WrappedEffect, MissingAndSharedChannelsAreReplacedOverTheWholeOfALongBlock)
{
    constexpr std::size_t kFrames = 1000;  // the host announced 256
    std::vector<float> ramp(kFrames), left(kFrames), right(kFrames);
    const std::vector<float> silence(kFrames), untouched(kFrames, -7.0f);
    std::iota(ramp.begin(), ramp.end(), 1.0f);
    const std::vector<float> kept = ramp;
    float* both[] = {left.data(), right.data()};
    float* oneOut[] = {nullptr, right.data()};
    float* same[] = {ramp.data(), ramp.data()};
    float* oneIn[] = {nullptr, ramp.data()};
    float* noneIn[] = {nullptr, nullptr};
    // The component changes its inputs in place; neither the other channel nor later silence may be
    // affected.
    const struct {
        const char* name;
        float **in, **out;
        const std::vector<float>&left, &right;
    } rows[] = {
        {"shared inputs", same, both, kept, kept},
        {"no left input", oneIn, both, silence, kept},
        {"no left output", same, oneOut, untouched, kept},
        {"no inputs", noneIn, both, silence, silence},
        {"no list of inputs", nullptr, both, silence, silence},
        {"no list of outputs", same, nullptr, untouched, untouched},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ramp = kept;
        left = right = untouched;
        const std::size_t before = host.component->blocks.size();
        host.set(0, 0.125f);
        host.effect->processReplacing(host.effect, row.in, row.out, kFrames);
        EXPECT_EQ(left, row.left);
        EXPECT_EQ(right, row.right);
        const auto& blocks = host.component->blocks;
        EXPECT_EQ(blocks[before].changes.back(), Values::value_type(kLevelId, 0.125));
        for (std::size_t i = before + 1; i < blocks.size(); ++i)
            EXPECT_EQ(blocks[i].changes, Values()) << "slice " << i - before;
    }
}

// Level 0x33, Switch 0xFF, Long 0x00, Beyond 0xCC; no component state.
const std::string kState{"\0\0\0\0\0\0\0\0\4\0\0\0\0\0\0\0\x33\xFF\0\xCC", 20};

TEST_F(WrappedEffect, AStateIsTwoLittleEndianSizesAndTheStatesOfComponentAndController)
{
    host.set(0, 0.2f);
    host.set(2, 0.0f);
    host.set(3, 0.8f);
    EXPECT_EQ(host.chunk(), kState) << "values pending for the controller are part of the state";
    plugin.componentState = "abc";
    EXPECT_EQ(host.chunk(), '\3' + kState.substr(1, 15) + "abc" + kState.substr(16));
    host.restore(host.chunk() + "rest");
    EXPECT_EQ(host.component->restored, "abc");
    EXPECT_EQ(host.controller->restored, kState.substr(16));
    host.restore(std::string("\2\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0de", 18));
    EXPECT_EQ(host.component->restored, "de");
    EXPECT_EQ(host.controller->statesGiven, 1) << "setState was called for an absent part";
}

TEST_F(WrappedEffect, ARestoredStateAppliesBeforeTheNextBlockAndIsNotReportedAsAutomation)
{
    host.block();
    host.set(0, 0.9f);
    host.restore(kState);
    EXPECT_EQ(host.block(),
              (Values{{kLevelId, 0.2}, {kSwitchId, 1.0}, {kLongId, 0.0}, {kBeyondId, 0.8}}));
    EXPECT_EQ(host.get(3), 0.8f);
    host.call(effEditIdle);
    EXPECT_EQ(host.controller->getParamNormalized(kLevelId), 0.2)
        << "an older value from the host replaced the restored one";
    ASSERT_EQ(host.log.size(), 1u);
    EXPECT_EQ(host.log[0].opcode, audioMasterUpdateDisplay);
    host.controller->edit(kLevelId, 0.5);
    EXPECT_EQ(host.timesAsked(audioMasterAutomate), 1) << "edits go unreported after a restore";
}

TEST_F(WrappedEffect, StatesCutOffAnywhereOrWithSizesThatDoNotFitChangeNothing)
{
    host.block();
    plugin.componentState = "abc";
    const std::string full = host.chunk();
    // Copies of exactly that size, so that the sanitizer sees a read past their end.
    for (std::size_t size = 0; size < full.size(); ++size)
        host.restore(std::vector<char>(full.begin(), full.begin() + static_cast<long>(size)));
    for (std::size_t byte = 0; byte < 16; ++byte)
        for (const char wrong : {'\x7F', '\x80', '\xFF'}) {
            std::string bytes = full;
            bytes[byte] = wrong;
            host.restore(bytes);
        }
    std::string bytes = full;
    for (const VstIntPtr size : {VstIntPtr{-1}, VstIntPtr{1} << 33})
        host.call(effSetChunk, 0, size, &bytes[0]);
    EXPECT_EQ(host.controller->statesGiven, 0);
    EXPECT_EQ(host.component->restored, "");
    EXPECT_TRUE(host.log.empty());
    EXPECT_EQ(host.block(), Values());
    host.restore(full);
    EXPECT_EQ(host.controller->statesGiven, 1);
}

}  // namespace
