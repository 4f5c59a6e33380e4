// The built VST 3 bundle in hosts that are stricter, or laxer, than most.
#include "BankFormat.h"
#include "FactoryBank.h"
#include "Host.h"
#include "OpenPlugin.h"
#include "ParameterIds.h"
#include "SettingsStore.h"

#include "public.sdk/source/vst/vstpresetfile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

using namespace vst3;

namespace {

using Setting = std::pair<ParamID, ParamValue>;

// Both channels differ, and every stage is at work.
const std::vector<Setting> kSettings = {
    {kQB11, 1.0},   {k2x, 1.0},       {kMS, 1.0},      {kDriveL, 0.7},  {kDriveR, 0.4},
    {kHpfL, 0.5},   {kOutputR, 0.45}, {kPhaseL, 1.0},  {kLShelfL, 1.0}, {kLFreqL, 0.4},
    {kLGainL, 0.8}, {kMFreqR, 0.6},   {kMGainR, 0.25}, {kHShlfR2, 1.0}, {kHGainR2, 0.7},
};

const std::vector<int32> kBlocks = {512};
constexpr std::size_t kLength = 2000;

std::vector<Signal> music()
{
    return {noise(kLength, 1), noise(kLength, 2)};
}

// A project's state with these settings in it.
Bytes projectState(const Module& module, const std::vector<Setting>& settings)
{
    Instance instance(module);
    for (const auto& [id, value] : settings)
        instance.controller->setParamNormalized(id, value);
    return instance.controllerState();
}

// What the settings sound like through the library's VST 2 form.
std::vector<Signal> throughVst2(const std::vector<Setting>& settings, double rate)
{
    const auto plugin = host::openPlugin(ZKR_VST2_LIBRARY);
    plugin->setSampleRate(rate);
    plugin->setBlockSize(512);
    for (const auto& [id, value] : settings)
        plugin->setParameter(static_cast<VstInt32>(id), static_cast<float>(value));
    plugin->mainsOn();
    std::vector<Signal> in = music(), out = in;
    for (std::size_t done = 0; done < kLength; done += 512) {
        float* inputs[] = {in[0].data() + done, in[1].data() + done};
        float* outputs[] = {out[0].data() + done, out[1].data() + done};
        plugin->process(inputs, outputs,
                        static_cast<int>(std::min<std::size_t>(512, kLength - done)));
    }
    return out;
}

class Bundle : public testing::Test {
protected:
    Module module;
};

}  // namespace

TEST(Module, IsClosedAsOftenAsItWasOpened)
{
    const Module outer;
    {
        const Module inner;
        EXPECT_EQ(inner.factory, outer.factory);
    }
    EXPECT_TRUE(outer.close());
    EXPECT_FALSE(outer.close());
    EXPECT_TRUE(outer.open(nullptr));
}

TEST_F(Bundle, SoundsAsTheVst2LibraryDoesToTheBit)
{
    for (const double rate : {44100.0, 96000.0, 192000.0})
        for (const double midSide : {0.0, 1.0}) {
            std::vector<Setting> settings = kSettings;
            settings.emplace_back(kMS, midSide);
            Instance instance(module);
            instance.start(rate);
            for (const auto& [id, value] : settings)
                instance.automate(id, static_cast<float>(value));
            EXPECT_EQ(instance.render(music(), kBlocks), throughVst2(settings, rate)) << rate;
        }
}

TEST_F(Bundle, TakesAProjectInAnyOrderOfSteps)
{
    const Bytes project = projectState(module, kSettings);
    Instance original(module);
    EXPECT_TRUE(original.componentState().empty()) << "values that nobody has told";
    original.start();
    ASSERT_EQ(original.loadControllerState(project), kResultOk);
    const Bytes component = original.componentState();
    EXPECT_EQ(component.size(), 244u);
    const std::vector<Signal> expected = throughVst2(kSettings, 48000.0);

    enum Step { Handle, Connect, LoadComponent, TellComponent, LoadController, Activate };
    std::vector<Step> steps = {Handle,        Connect,        LoadComponent,
                               TellComponent, LoadController, Activate};
    int orders = 0;
    do {
        Instance instance(module);
        // Some hosts are deaf to edits while they load; some projects are of builds that left the
        // component's part empty.
        instance.handler.deaf = orders / 2 % 2 == 0;
        const Bytes part = orders / 4 % 2 == 0 ? component : Bytes();
        std::string order;
        for (const Step step : steps) {
            order += "HCctSA"[step];
            switch (step) {
            case Handle:
                instance.setHandler();
                break;
            case Connect:
                instance.connect();
                break;
            case LoadComponent:
                EXPECT_EQ(instance.loadComponentState(part), kResultOk);
                break;
            case TellComponent:
                EXPECT_EQ(instance.tellComponentState(part), kResultOk);
                break;
            case LoadController:
                EXPECT_EQ(instance.loadControllerState(project), kResultOk);
                break;
            case Activate:
                instance.activate();
                break;
            }
        }
        ASSERT_EQ(instance.render(music(), kBlocks), expected) << order;
        ASSERT_EQ(instance.controllerState(), project) << order;
        ++orders;
    } while (std::next_permutation(steps.begin(), steps.end()));
    EXPECT_EQ(orders, 720);
}

// A host that reads the parameters wherever it may goes on with what it finds, and would write a
// wrong value back.
TEST_F(Bundle, ShowsARestoredStateAtEveryPointWhereAHostMayRead)
{
    Instance instance(module);
    instance.start();
    const auto read = [&] {
        std::vector<ParamValue> values;
        for (ParamID id = 0; id < kPresetParamCount; ++id)
            values.push_back(instance.controller->getParamNormalized(id));
        return values;
    };
    const auto setAll = [&](std::mt19937& random) {
        std::uniform_real_distribution<float> value(0.0f, 1.0f);
        for (ParamID id = 0; id < kPresetParamCount; ++id)
            instance.automate(id, static_cast<ParamValue>(value(random)));
    };
    for (unsigned seed = 0; seed < 50; ++seed) {
        std::mt19937 random(seed);
        setAll(random);
        // Some hosts run before they save, some do not.
        if (seed % 2)
            instance.render(music(), kBlocks);
        const Bytes component = instance.componentState(), project = instance.controllerState();
        const std::vector<ParamValue> saved = read();
        setAll(random);
        if (seed % 3)
            instance.render(music(), kBlocks);
        ASSERT_NE(read(), saved);
        EXPECT_EQ(instance.loadComponentState(component), kResultOk);
        EXPECT_EQ(instance.tellComponentState(component), kResultOk);
        ASSERT_EQ(read(), saved) << "after the component's part, seed " << seed;
        EXPECT_EQ(instance.loadControllerState(project), kResultOk);
        ASSERT_EQ(read(), saved) << "after the controller's part, seed " << seed;
        instance.render(music(), kBlocks);
        ASSERT_EQ(read(), saved) << "after a block, seed " << seed;
        ASSERT_EQ(instance.componentState(), component) << seed;
        ASSERT_EQ(instance.controllerState(), project) << seed;
    }
}

TEST_F(Bundle, TakesAComponentStateForWhatItTells)
{
    Instance original(module), instance(module);
    original.start();
    original.automate(kLGainL, 0.75);
    const Bytes whole = original.componentState();
    instance.start();
    instance.automate(kLGainL, 0.25);
    instance.automate(kPower, 1.0);
    const Bytes before = instance.controllerState();
    const auto load = [&](const Bytes& state) {
        EXPECT_EQ(instance.loadComponentState(state), kResultOk);
        EXPECT_EQ(instance.tellComponentState(state), kResultOk);
    };
    const auto with = [&](std::size_t at, std::vector<unsigned char> bytes) {
        Bytes changed = whole;
        std::copy(bytes.begin(), bytes.end(), changed.begin() + static_cast<long>(at));
        return changed;
    };
    const std::size_t gain = 12 + 4 * kLGainL;
    for (const Bytes& damaged :
         {Bytes(whole.begin(), whole.end() - 1), Bytes(whole.begin(), whole.begin() + 11), Bytes(),
          Bytes(244, 'x'), with(0, {0x37}), with(4, {2}), with(8, {59}),
          with(8, {0, 0, 0, 0x80})}) {
        load(damaged);
        EXPECT_EQ(instance.controllerState(), before);
    }
    // 1.5, -0.5 and not a number: the others are taken.
    for (const std::vector<unsigned char>& bytes :
         {std::vector<unsigned char>{0, 0, 0xC0, 0x3F}, {0, 0, 0, 0xBF}, {0, 0, 0xC0, 0x7F}}) {
        instance.automate(kPower, 0.0);
        load(with(gain, bytes));
        EXPECT_EQ(instance.controller->getParamNormalized(kLGainL), 0.25);
        EXPECT_EQ(instance.controller->getParamNormalized(kPower), 1.0);
    }
    load(whole);
    EXPECT_EQ(instance.controller->getParamNormalized(kLGainL), 0.75);
    // Without a controller the processor sounds like it all the same.
    Instance alone(module), told(module);
    EXPECT_EQ(alone.loadComponentState(whole), kResultOk);
    EXPECT_EQ(alone.componentState(), whole);
    EXPECT_EQ(alone.component->getState(nullptr), kInvalidArgument);
    EXPECT_EQ(alone.component->setState(nullptr), kInvalidArgument);
    alone.activate();
    told.start();
    told.automate(kLGainL, 0.75);
    EXPECT_EQ(alone.render(music(), kBlocks), told.render(music(), kBlocks));
}

TEST_F(Bundle, TakesAStateOfFewerRecordsThatIsWhole)
{
    // Two presets of a build that knew no others, behind the prefix.
    constexpr int32 kRecords = 2 * (1 + kPresetParamCount);
    ImageWriter writer(kBankKind, 1, kRecords, 2 * (kPresetImageSize - kFileHeaderSize));
    for (int32 index = 0; index < 2; ++index) {
        writer.appendName(index, factoryBank()[7]);
        for (unsigned id = 0; id < kPresetParamCount; ++id)
            writer.appendValue(index, id, factoryBank()[7].values[id]);
    }
    const auto image = writer.take();
    Bytes state(8 + image.size());
    std::copy(image.begin(), image.end(), state.begin() + 8);
    Instance instance(module);
    instance.start();
    for (std::size_t length : {std::size_t(8), std::size_t(49), state.size() - 1}) {
        EXPECT_EQ(instance.loadControllerState(
                      Bytes(state.begin(), state.begin() + static_cast<long>(length))),
                  kResultFalse)
            << length;
        EXPECT_EQ(instance.controller->getParamNormalized(kLGainL), 0.5);
    }
    EXPECT_EQ(instance.loadControllerState(state), kResultOk);
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        EXPECT_EQ(instance.controller->getParamNormalized(id),
                  static_cast<ParamValue>(factoryBank()[7].values[id]))
            << id;
}

TEST_F(Bundle, TakesAProjectWhileItRuns)
{
    const Bytes project = projectState(module, kSettings);
    Instance instance(module);
    instance.start();
    instance.render(music(), kBlocks);
    instance.handler.calls = 0;
    ASSERT_EQ(instance.loadControllerState(project), kResultOk);
    EXPECT_EQ(instance.handler.calls, 0) << "the host, which loads, is told of changes";
    Instance other(module);
    other.start();
    other.render(music(), kBlocks);
    for (const auto& [id, value] : kSettings)
        other.automate(id, static_cast<float>(value));
    EXPECT_EQ(instance.render(music(), kBlocks), other.render(music(), kBlocks));
}

TEST_F(Bundle, StartsWithThePresetThatTheUserHasStored)
{
    PresetSlot stored = factoryBank()[0];
    for (const auto& [id, value] : kSettings)
        stored.values[id] = static_cast<float>(value);
    ImageWriter writer(kPresetKind, 0, 1 + kPresetParamCount, kPresetImageSize - kFileHeaderSize);
    writer.appendName(0, stored);
    for (unsigned id = 0; id < kPresetParamCount; ++id)
        writer.appendValue(0, id, stored.values[id]);
    platform::userSettings().write("DefaultPreset", writer.take());
    Instance near(module), apart(module);
    platform::userSettings().remove("DefaultPreset");
    near.start();
    apart.connectByProxies();
    apart.activate();
    const std::vector<Signal> expected = throughVst2(kSettings, 48000.0);
    EXPECT_EQ(near.render(music(), kBlocks), expected);
    EXPECT_EQ(apart.render(music(), kBlocks), expected);
}

TEST_F(Bundle, KeepsItsStateWhenAnotherOneIsEmptyOrDamaged)
{
    Instance instance(module);
    instance.start();
    instance.automate(kLGainL, 0.75);
    const Bytes before = instance.controllerState();
    const Bytes other = projectState(module, kSettings);
    EXPECT_EQ(instance.loadControllerState({}), kResultFalse);
    EXPECT_EQ(instance.controllerState(), before);
    for (const long length : {1, 8, 40, 5000, 48624}) {
        instance.loadControllerState(Bytes(other.begin(), other.begin() + length));
        EXPECT_EQ(instance.controllerState(), before) << length;
    }
    instance.loadControllerState(Bytes(48625, 'x'));
    EXPECT_EQ(instance.controllerState(), before);
    EXPECT_EQ(instance.controller->setState(nullptr), kInvalidArgument);
    EXPECT_EQ(instance.controller->getState(nullptr), kInvalidArgument);
}

TEST_F(Bundle, GoesThroughAPresetFile)
{
    PClassInfo info;
    ASSERT_EQ(module.factory->getClassInfo(0, &info), kResultOk);
    const FUID id = FUID::fromTUID(info.cid);
    Instance from(module), to(module);
    from.start();
    to.start();
    for (const auto& [param, value] : kSettings)
        from.automate(param, value);
    MemoryStream file;
    ASSERT_TRUE(PresetFile::savePreset(&file, id, from.component, from.controller));
    file.seek(0, IBStream::kIBSeekSet, nullptr);
    ASSERT_TRUE(PresetFile::loadPreset(&file, id, to.component, to.controller));
    EXPECT_EQ(to.controllerState(), from.controllerState());
    EXPECT_EQ(to.render(music(), kBlocks), throughVst2(kSettings, 48000.0));
}

TEST_F(Bundle, TakesParametersWithoutAudio)
{
    Instance instance(module);
    instance.start();
    for (const auto& [id, value] : kSettings) {
        instance.automate(id, static_cast<float>(value));
        EXPECT_EQ(instance.flush(), kResultOk);
    }
    EXPECT_EQ(instance.render(music(), kBlocks), throughVst2(kSettings, 48000.0));
}

// Some hosts repeat an automated value with every block.
TEST_F(Bundle, GlidesOnceToAValueThatIsRepeated)
{
    const std::vector<Setting> automation = {
        {kLFreqL, 0.4}, {kLGainL, 0.9}, {kDriveR, 0.3}, {kPower, 1.0}, {kTrfoDsL, 0.0}};
    Instance once(module), again(module);
    once.start();
    again.start();
    for (const auto& [id, value] : automation)
        once.automate(id, value);
    for (int block = 0; block < 30; ++block) {
        for (const auto& [id, value] : automation)
            again.automate(id, value);
        ASSERT_EQ(again.render(music(), {512}), once.render(music(), {512})) << block;
    }
    // Of two that work one switch the last to arrive wins, also with the value it had.
    for (Instance* instance : {&once, &again})
        for (const Setting& setting : {Setting{kQB11, 1.0}, {kTrfoDsL, 0.0}}) {
            instance->automate(setting.first, setting.second);
            instance->flush();
        }
    again.automate(kTrfoDsR, 1.0);
    again.flush();
    again.automate(kTrfoDsL, 0.0);
    EXPECT_EQ(again.render(music(), kBlocks), once.render(music(), kBlocks));
}

// Beyond their range, no numbers at all, of parameters that are not there or have no points.
TEST_F(Bundle, HoldsValuesOfHostsToTheirRange)
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    Instance odd(module), plain(module);
    for (Instance* instance : {&odd, &plain}) {
        instance->start();
        instance->automate(kLFreqL, 0.4);
        instance->automate(kLGainL, 1.0);
        instance->automate(kMFreqR, 0.4);
        instance->automate(kMGainR, 0.0);
        instance->flush();
    }
    for (const auto& [id, value] : std::vector<Setting>{{kLGainL, 8.0},
                                                        {kMGainR, -3.0},
                                                        {kLGainL, kNaN},
                                                        {58, 0.7},
                                                        {kLatency, kNaN},
                                                        {kLatency, -1.0},
                                                        {1000, 0.7},
                                                        {0xFFFFFFFFu, 0.7}}) {
        odd.automate(id, value);
        EXPECT_EQ(odd.flush(), kResultOk);
    }
    odd.announceWithoutPoints(kLGainL);
    EXPECT_EQ(odd.render(music(), kBlocks), plain.render(music(), kBlocks));
    EXPECT_EQ(odd.controllerState(), plain.controllerState());
    EXPECT_TRUE(odd.handler.restarts.empty());
}

TEST_F(Bundle, GivesTheSameBitsInBlocksOfAnyLengthAndInEveryMode)
{
    std::vector<std::vector<Signal>> renders;
    for (const int32 mode : {kRealtime, kPrefetch, kOffline}) {
        for (const std::vector<int32>& blocks :
             {std::vector<int32>{512}, {1}, {7, 512, 1, 64, 333}}) {
            Instance instance(module);
            instance.start(48000.0, 512, mode);
            for (const auto& [id, value] : kSettings)
                instance.automate(id, value);
            EXPECT_EQ(instance.flush(), kResultOk);
            renders.push_back(instance.render(music(), blocks));
        }
    }
    for (const std::vector<Signal>& render : renders)
        EXPECT_EQ(render, renders[0]);
}

// A longer block than announced too.
TEST_F(Bundle, TakesBusesAndChannelsThatAreNotThere)
{
    constexpr int32 kBlock = 300;
    Signal left = noise(kBlock, 3);
    // The expected left output where only the left input is there.
    Instance reference(module);
    reference.start(48000.0, 64);
    const std::vector<Signal> expected = reference.render({left, Signal(kBlock, 0.0f)}, {64});

    struct Case {
        const char* what;
        int32 busesIn, channelsIn, busesOut, channelsOut;
        bool leftIn, leftOut;
    };
    for (const Case& c :
         {Case{"all", 1, 2, 1, 2, true, true}, Case{"one input channel", 1, 1, 1, 2, true, true},
          Case{"no right output", 1, 2, 1, 1, true, true},
          Case{"four outputs", 1, 2, 1, 4, true, true},
          Case{"null outputs", 1, 2, 1, 2, true, false},
          Case{"no output bus", 1, 2, 0, 0, true, false},
          Case{"two output buses", 1, 2, 2, 2, true, true},
          Case{"a bus without channels", 1, 0, 1, 2, false, true},
          Case{"no input bus", 0, 0, 1, 2, false, true}}) {
        SCOPED_TRACE(c.what);
        Instance instance(module);
        instance.start(48000.0, 64);
        if (!c.leftIn) {
            EXPECT_EQ(instance.component->activateBus(kAudio, kInput, 0, false), kResultTrue);
        }
        std::vector<Signal> out(8, Signal(kBlock, 99.0f));
        Sample32* inputs[2] = {left.data(), nullptr};
        Sample32* outputs[2][4] = {};
        AudioBusBuffers in, outBuses[2];
        in.numChannels = c.channelsIn;
        in.channelBuffers32 = c.channelsIn ? inputs : nullptr;
        for (std::size_t bus = 0; bus < 2; ++bus) {
            for (std::size_t i = 0; i < 4; ++i)
                outputs[bus][i] = c.leftOut ? out[bus * 4 + i].data() : nullptr;
            outBuses[bus].numChannels = c.channelsOut;
            outBuses[bus].channelBuffers32 = outputs[bus];
            outBuses[bus].silenceFlags = 3;
        }
        ProcessData data;
        data.numSamples = kBlock;
        data.numInputs = c.busesIn;
        data.inputs = c.busesIn ? &in : nullptr;
        data.numOutputs = c.busesOut;
        data.outputs = c.busesOut ? outBuses : nullptr;
        EXPECT_EQ(instance.process(data), kResultOk);

        if (!c.leftOut)
            continue;
        EXPECT_EQ(outBuses[0].silenceFlags, 0u);
        if (c.leftIn) {
            EXPECT_EQ(out[0], expected[0]);
            EXPECT_EQ(out[1], c.channelsOut > 1 ? expected[1] : Signal(kBlock, 99.0f));
        } else {
            for (const float x : out[0])
                EXPECT_LT(std::abs(x), 1e-6f);
        }
        const Signal silence(kBlock, 0.0f);
        if (c.channelsOut == 4) {
            EXPECT_EQ(out[2], silence);
            EXPECT_EQ(out[3], silence);
        }
        if (c.busesOut == 2) {
            EXPECT_EQ(out[4], silence);
        }
    }
}

TEST_F(Bundle, RefusesArrangementsItHasNotAndTellsWhatItHas)
{
    Instance instance(module);
    const auto has = [&](BusDirection direction) {
        SpeakerArrangement arrangement = 0;
        EXPECT_EQ(instance.processor->getBusArrangement(direction, 0, arrangement), kResultTrue);
        return arrangement;
    };
    EXPECT_FALSE(instance.arrange(SpeakerArr::k51, SpeakerArr::k51));
    EXPECT_TRUE(instance.arrange(has(kInput), has(kOutput)));
    EXPECT_TRUE(instance.arrange(SpeakerArr::kMono, SpeakerArr::kMono));
    EXPECT_EQ(has(kInput), SpeakerArr::kMono);
    EXPECT_FALSE(instance.arrange(SpeakerArr::kStereo, SpeakerArr::kMono));
    EXPECT_EQ(has(kInput), SpeakerArr::kStereo);
    EXPECT_EQ(has(kOutput), SpeakerArr::kStereo);
    {
        Instance refused(module), plain(module);
        EXPECT_FALSE(refused.arrange(SpeakerArr::kStereo, SpeakerArr::kMono));
        refused.start();
        plain.start();
        EXPECT_EQ(refused.render(music(), kBlocks), plain.render(music(), kBlocks));
    }
    SpeakerArrangement stereo[] = {SpeakerArr::kStereo, SpeakerArr::kStereo};
    EXPECT_EQ(instance.processor->setBusArrangements(stereo, 2, stereo, 1), kResultFalse);
    EXPECT_EQ(instance.processor->setBusArrangements(nullptr, 1, nullptr, 1), kInvalidArgument);
    EXPECT_TRUE(instance.arrange(SpeakerArr::kMono, SpeakerArr::kStereo));
    instance.start();
    const std::vector<Signal> out = instance.render({noise(2000, 5)}, kBlocks);
    EXPECT_EQ(out[0], out[1]);
    EXPECT_NE(out[0], Signal(2000, 0.0f));
}

TEST_F(Bundle, TellsTheHostOnceWhenTheLatencyComesOrGoes)
{
    Instance instance(module);
    instance.start(48000.0);
    EXPECT_EQ(instance.processor->getLatencySamples(), 96u);
    instance.render(music(), kBlocks);
    EXPECT_TRUE(instance.handler.restarts.empty());
    for (const auto& [rate, latency] : {std::pair{192000.0, 0u}, {44100.0, 96u}}) {
        instance.deactivate();
        instance.activate(rate);
        EXPECT_EQ(instance.processor->getLatencySamples(), latency);
        // The host has just asked; it is told where it has no other way to know.
        instance.render(music(), kBlocks);
        EXPECT_TRUE(instance.handler.restarts.empty()) << rate;
        EXPECT_NEAR(instance.controller->getParamNormalized(kLatency), latency / rate, 1e-9);
    }
}

// Some hosts, while they load a preset, set every parameter to what they have just read, and would
// wait for themselves if that led to a call back.
TEST_F(Bundle, TakesTheLatencyThatTheHostHasFromIt)
{
    for (const bool afterAudio : {false, true}) {
        Instance instance(module);
        instance.start(192000.0);
        if (afterAudio)
            instance.render(music(), kBlocks);
        instance.handler.restarts.clear();
        instance.controller->setParamNormalized(kLatency,
                                                instance.controller->getParamNormalized(kLatency));
        EXPECT_TRUE(instance.handler.restarts.empty()) << afterAudio;
    }
}

TEST_F(Bundle, AnswersQuestionsOutsideItsTables)
{
    Instance instance(module);
    ParameterInfo parameter;
    UnitInfo unit;
    FUnknownPtr<IUnitInfo> units(instance.controller);
    ASSERT_TRUE(units);
    for (const int32 index : {-1, 59, 1000}) {
        EXPECT_EQ(instance.controller->getParameterInfo(index, parameter), kInvalidArgument);
        EXPECT_EQ(units->getUnitInfo(index, unit), kInvalidArgument);
    }
    String128 text;
    EXPECT_EQ(instance.controller->getParamStringByValue(4711, 0.5, text), kResultFalse);
    EXPECT_EQ(instance.controller->createView("other"), nullptr);
    Sample32 left[16] = {1.0f}, right[16] = {};
    Sample32* channels[] = {left, right};
    AudioBusBuffers bus;
    bus.numChannels = 2;
    bus.channelBuffers32 = channels;
    ProcessData early;
    early.numSamples = 16;
    early.numInputs = early.numOutputs = 1;
    early.inputs = early.outputs = &bus;
    EXPECT_EQ(instance.process(early), kResultOk) << "before it is active";
    for (const Sample32 x : left)
        EXPECT_TRUE(std::isfinite(x));
    ProcessSetup wide{kRealtime, kSample64, 512, 48000.0};
    EXPECT_EQ(instance.processor->canProcessSampleSize(kSample64), kResultFalse);
    EXPECT_EQ(instance.processor->setupProcessing(wide), kResultFalse);
    for (const double rate : {-1.0, 0.0, 1e12, std::numeric_limits<double>::infinity()}) {
        ProcessSetup odd{kRealtime, kSample32, 512, rate};
        EXPECT_EQ(instance.processor->setupProcessing(odd), kInvalidArgument) << rate;
    }
    EXPECT_EQ(instance.component->activateBus(kAudio, kInput, 7, true), kInvalidArgument);
}

TEST_F(Bundle, IsSilentAfterItsTailAndNotBefore)
{
    Instance instance(module);
    instance.start();
    // What rings longest: the lowest bands, boosted and high-passed.
    for (const auto& [id, value] : std::vector<Setting>{
             {kQB11, 1.0}, {k2x, 1.0}, {kLFreqL, 1.0}, {kLGainL, 1.0}, {kHpfL, 0.1}})
        instance.automate(id, value);
    const auto loudest = [&](std::size_t length) {
        const Signal silence(length, 0.0f);
        const std::vector<Signal> out = instance.render({silence, silence}, kBlocks);
        float peak = 0.0f;
        for (const float x : out[0])
            peak = std::max(peak, std::abs(x));
        return peak;
    };
    const uint32 tail = instance.processor->getTailSamples();
    instance.render(music(), kBlocks);
    EXPECT_GT(loudest(512), 1e-3f);
    loudest(tail);
    EXPECT_LT(loudest(512), 1e-6f);
}

TEST_F(Bundle, InstancesDoNotHearEachOther)
{
    const auto begin = [&](int number) {
        auto instance = std::make_unique<Instance>(module);
        instance->start();
        instance->automate(kLFreqL, 0.4);
        instance->automate(kLGainL, 0.3 * number);
        return instance;
    };
    const std::unique_ptr<Instance> together[] = {begin(0), begin(1), begin(2)};
    std::vector<Signal> heard[3];
    for (int turn = 0; turn < 2; ++turn)
        for (int i = 0; i < 3; ++i)
            heard[i] = together[i]->render(music(), kBlocks);
    for (int i = 0; i < 3; ++i) {
        const std::unique_ptr<Instance> alone = begin(i);
        alone->render(music(), kBlocks);
        EXPECT_EQ(heard[i], alone->render(music(), kBlocks)) << i;
        EXPECT_NE(heard[i], heard[(i + 1) % 3]) << i;
    }
}
