// The built VST 3 bundle, also in hosts that are stricter or laxer than most.
#include "params/ids/ParameterIds.h"
#include "platform/SettingsStore.h"
#include "presets/FactoryBank.h"
#include "tests/support/Images.h"
#include "tests/vst3/Host.h"
#include "tools/host/NativePlugin.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <thread>

using namespace vst3;

namespace {

using Setting = std::pair<ParamID, ParamValue>;

// The channels differ, and every stage is on.
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

void automateAll(Instance& instance, const std::vector<Setting>& settings)
{
    for (const auto& [id, value] : settings)
        instance.automate(id, static_cast<float>(value));
}

// The controller state that a project with these settings holds.
Bytes projectState(const Module& module)
{
    Instance instance(module);
    for (const auto& [id, value] : kSettings)
        instance.controller->setParamNormalized(id, value);
    return instance.controllerState();
}

// The output of the VST 2 library with these settings.
std::vector<Signal> throughVst2(const std::vector<Setting>& settings = kSettings,
                                double rate = 48000.0)
{
    host::NativePlugin plugin(ZKR_VST2_LIBRARY);
    plugin.setSampleRate(rate);
    for (const auto& [id, value] : settings)
        plugin.setParameter(static_cast<VstInt32>(id), static_cast<float>(value));
    plugin.mainsOn();
    return stream(plugin, music());
}

std::vector<ParamValue> valuesOf(const Instance& instance)
{
    std::vector<ParamValue> values;
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        values.push_back(instance.controller->getParamNormalized(id));
    return values;
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
    constexpr struct {
        double rate, midSide;
        int32 maxBlock, mode;
        bool flushed;  // parameters arrive in a call without audio
    } rows[] = {
        {44100.0, 0.0, 512, kRealtime, false},
        {192000.0, 1.0, 0, kPrefetch, true},
        {96000.0, 1.0, 2000, kOffline, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rate);
        std::vector<Setting> settings = kSettings;
        settings.emplace_back(kMS, row.midSide);
        Instance instance(module);
        instance.start(row.rate, row.maxBlock, row.mode);
        for (const Setting& setting : settings) {
            automateAll(instance, {setting});
            EXPECT_EQ(row.flushed ? instance.flush() : kResultOk, kResultOk);
        }
        EXPECT_EQ(instance.render(music(), kBlocks), throughVst2(settings, row.rate));
    }
}

TEST_F(Bundle, LoadsAProjectInAnyOrderOfSteps)
{
    const Bytes project = projectState(module);
    Instance original(module);
    EXPECT_TRUE(original.componentState().empty()) << "no values were set yet";
    original.start();
    ASSERT_EQ(original.loadControllerState(project), kResultOk);
    const Bytes component = original.componentState();
    EXPECT_EQ(component.size(), 244u);
    const std::vector<Signal> expected = throughVst2();

    Bytes part;
    const std::function<void(Instance&)> steps[] = {
        [](Instance& i) { i.setHandler(); },
        [](Instance& i) { i.connect(); },
        [&](Instance& i) { EXPECT_EQ(i.loadComponentState(part), kResultOk); },
        [&](Instance& i) { EXPECT_EQ(i.tellComponentState(part), kResultOk); },
        [&](Instance& i) { EXPECT_EQ(i.loadControllerState(project), kResultOk); },
        [](Instance& i) { i.activate(); },
    };
    std::string order = "012345";
    int orders = 0;
    do {
        Instance instance(module);
        // Some hosts ignore edits while they load; in projects of early builds the component's
        // part is empty.
        instance.handler.deaf = orders / 2 % 2 == 0;
        part = orders / 4 % 2 == 0 ? component : Bytes();
        for (const char step : order)
            steps[step - '0'](instance);
        ASSERT_EQ(instance.render(music(), kBlocks), expected) << order;
        ASSERT_EQ(instance.controllerState(), project) << order;
        ++orders;
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_EQ(orders, 720);
}

// Hosts may read the parameters at any of these points and write what they read back later.
TEST_F(Bundle, ShowsARestoredStateAtEveryPointWhereAHostMayRead)
{
    Instance instance(module);
    instance.start();
    std::mt19937 random(1);
    // Some hosts process a block before they save, some do not.
    const auto setAll = [&](bool run) {
        std::uniform_real_distribution<float> value(0.0f, 1.0f);
        for (ParamID id = 0; id < kPresetParamCount; ++id)
            instance.automate(id, static_cast<ParamValue>(value(random)));
        if (run)
            instance.render(music(), kBlocks);
    };
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        setAll(round % 2 == 0);
        const Bytes component = instance.componentState(), project = instance.controllerState();
        const std::vector<ParamValue> saved = valuesOf(instance);
        setAll(round % 3 == 0);
        instance.loadComponentState(component);
        instance.tellComponentState(component);
        ASSERT_EQ(valuesOf(instance), saved) << "after the component's part";
        instance.loadControllerState(project);
        ASSERT_EQ(valuesOf(instance), saved) << "after the controller's part";
        instance.render(music(), kBlocks);
        ASSERT_EQ(valuesOf(instance), saved) << "after a block";
        ASSERT_EQ(instance.componentState(), component);
        ASSERT_EQ(instance.controllerState(), project);
    }
}

TEST_F(Bundle, ReadsAComponentStateOnlyAsFarAsItIsValid)
{
    Instance original(module), instance(module);
    original.start();
    original.automate(kLGainL, 0.75);
    const Bytes whole = original.componentState();
    const auto cut = [&](long length) { return Bytes(whole.begin(), whole.begin() + length); };
    const auto with = [&](std::size_t at, const std::vector<unsigned char>& bytes) {
        Bytes changed = whole;
        std::copy(bytes.begin(), bytes.end(), changed.begin() + static_cast<long>(at));
        return changed;
    };
    Bytes later = with(8, {60});
    later.resize(whole.size() + 8);
    constexpr std::size_t kGain = 12 + 4 * kLGainL;
    const struct {
        const char* what;
        Bytes state;
        double gain, power;  // expected afterwards; before: 0.25 and 0
    } rows[] = {
        {"cut off", cut(243), 0.25, 0},
        {"half a header", cut(11), 0.25, 0},
        {"empty", {}, 0.25, 0},
        {"another magic", with(0, {0x37}), 0.25, 0},
        {"another version", with(4, {2}), 0.25, 0},
        {"more values than follow", with(8, {59}), 0.25, 0},
        {"a negative count", with(8, {0, 0, 0, 0x80}), 0.25, 0},
        {"1.5", with(kGain, {0, 0, 0xC0, 0x3F}), 0.25, 1},
        {"not a number", with(kGain, {0, 0, 0xC0, 0x7F}), 0.25, 1},
        {"two more values, by a later build", later, 0.75, 1},
        {"whole", whole, 0.75, 1},
    };
    instance.start();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        automateAll(instance, {{kLGainL, 0.25}, {kPower, 0.0}});
        const Bytes before = instance.controllerState();
        EXPECT_EQ(instance.loadComponentState(row.state), kResultOk);
        EXPECT_EQ(instance.tellComponentState(row.state), kResultOk);
        EXPECT_EQ(instance.controllerState() == before, row.power == 0);
        EXPECT_EQ(instance.controller->getParamNormalized(kLGainL), row.gain);
        EXPECT_EQ(instance.controller->getParamNormalized(kPower), row.power);
    }
    Instance partly(module);
    EXPECT_EQ(partly.loadComponentState(with(kGain, {0, 0, 0xC0, 0x7F})), kResultOk);
    EXPECT_EQ(partly.componentState(), Bytes()) << "not all values are known";
    // A processor without a controller gives the same output.
    Instance alone(module), told(module);
    EXPECT_EQ(alone.loadComponentState(whole), kResultOk);
    EXPECT_EQ(alone.componentState(), whole);
    alone.activate();
    told.start();
    told.automate(kLGainL, 0.75);
    EXPECT_EQ(alone.render(music(), kBlocks), told.render(music(), kBlocks));
    // The second parameter of a switch is saved although it changes nothing.
    automateAll(alone, {{kTrfoDsL, 1.0}, {kTrfoDsR, 1.0}});
    alone.flush();
    const Bytes saved = alone.componentState();
    EXPECT_EQ(saved.at(12 + 4 * kTrfoDsR + 2), char(0x80)) << "not 1";
    EXPECT_EQ(saved.at(12 + 4 * kTrfoDsL + 2), char(0x80));
}

TEST_F(Bundle, RefusesIncompleteStatesAndReportsOneThatItCouldNotWrite)
{
    const PresetSlot& preset = factoryBank()[7];
    // The prefix and a bank of only two presets.
    const auto image = imageOf(kBankKind, {preset, preset});
    Bytes fewer(8 + image.size());
    std::copy(image.begin(), image.end(), fewer.begin() + 8);
    const Bytes all = projectState(module);
    Instance instance(module);
    instance.start();
    const Bytes before = instance.controllerState();
    for (const Bytes& whole : {fewer, all})
        for (std::size_t length : {std::size_t(0), std::size_t(8), std::size_t(49),
                                   std::size_t(5000), whole.size() - 1}) {
            length = std::min(length, whole.size() - 1);
            const Bytes part(whole.begin(), whole.begin() + static_cast<long>(length));
            EXPECT_EQ(instance.loadControllerState(part), kResultFalse) << length;
            EXPECT_EQ(instance.controllerState(), before) << length;
        }
    struct FullStream : MemoryStream {
        tresult PLUGIN_API write(void* from, int32 size, int32* count) override
        {
            return MemoryStream::write(from, size / 2, count);
        }
    } full;
    // Reports more from the second piece on than it was asked for.
    struct BoastfulStream : MemoryStream {
        using MemoryStream::MemoryStream;
        tresult PLUGIN_API read(void* to, int32 size, int32* count) override
        {
            const tresult result = MemoryStream::read(to, std::min(size, ++pieces * 10), count);
            if (pieces > 1)
                *count = std::numeric_limits<int32>::max();
            return result;
        }
        int32 pieces = 0;
    } boastful(const_cast<char*>(all.data()), 49);
    instance.controller->setState(&boastful);
    EXPECT_EQ(instance.controllerState(), before);
    EXPECT_EQ(instance.controller->getState(&full), kResultFalse);
    EXPECT_EQ(instance.component->getState(&full), kResultFalse);
    instance.loadControllerState(Bytes(48625, 'x'));
    EXPECT_EQ(instance.controllerState(), before);
    EXPECT_EQ(instance.loadControllerState(fewer), kResultOk);
    EXPECT_EQ(valuesOf(instance),
              std::vector<ParamValue>(std::begin(preset.values), std::end(preset.values)));
}

TEST_F(Bundle, StartsWithThePresetThatTheUserHasStored)
{
    PresetSlot stored = factoryBank()[0];
    for (const auto& [id, value] : kSettings)
        stored.values[id] = static_cast<float>(value);
    platform::userSettings().write("DefaultPreset", imageOf(kPresetKind, {stored}));
    Instance near(module), apart(module);
    platform::userSettings().remove("DefaultPreset");
    near.start();
    apart.connectByProxies();
    apart.activate();
    const std::vector<Signal> expected = throughVst2();
    EXPECT_EQ(near.render(music(), kBlocks), expected);
    EXPECT_EQ(apart.render(music(), kBlocks), expected);
}

// Some hosts repeat an automated value with every block.
TEST_F(Bundle, GlidesOnceToAValueThatIsRepeated)
{
    const std::vector<Setting> automation = {{kLFreqL, 0.4}, {kLGainL, 0.9},  {kDriveR, 0.3},
                                             {kPower, 1.0},  {kTrfoDsL, 0.0}, {kAmpDsbL, 0.0}};
    Instance once(module), again(module);
    once.start();
    again.start();
    automateAll(once, automation);
    for (int block = 0; block < 30; ++block) {
        automateAll(again, automation);
        ASSERT_EQ(again.render(music(), {512}), once.render(music(), {512})) << block;
    }
    // Of two parameters that control one switch the last change wins, even to the same value.
    for (const Setting& change : {Setting{kQB11, 1.0},
                                  {kTrfoDsR, 1.0},
                                  {kTrfoDsL, 0.0},
                                  {kAmpDsbR, 1.0},
                                  {kAmpDsbL, 0.0}}) {
        automateAll(again, {change});
        again.flush();
    }
    automateAll(once, {{kQB11, 1.0}});
    EXPECT_EQ(again.render(music(), kBlocks), once.render(music(), kBlocks));
}

// Values out of range, NaN, and ids that do not exist.
TEST_F(Bundle, ClampsValuesFromHostsToTheirRange)
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    Instance odd(module), plain(module);
    for (Instance* instance : {&odd, &plain}) {
        instance->start();
        automateAll(*instance, {{kLFreqL, 0.4}, {kLGainL, 1.0}, {kMFreqR, 0.4}, {kMGainR, 0.0}});
        instance->flush();
    }
    const std::vector<Setting> values = {{kLGainL, 8.0}, {kMGainR, -3.0},   {kLGainL, kNaN},
                                         {58, 0.7},      {kLatency, kNaN},  {kLatency, -1.0},
                                         {1000, 0.7},    {0xFFFFFFFFu, 0.7}};
    for (const Setting& value : values) {
        automateAll(odd, {value});
        EXPECT_EQ(odd.flush(), kResultOk);
    }
    EXPECT_EQ(odd.render(music(), kBlocks), plain.render(music(), kBlocks));
    EXPECT_EQ(odd.controllerState(), plain.controllerState());
    EXPECT_TRUE(odd.handler.restarts.empty());
}

// Also a block longer than announced.
TEST_F(Bundle, HandlesMissingBusesAndChannels)
{
    constexpr int32 kBlock = 300;
    constexpr struct {
        const char* what;
        int32 busesIn, channelsIn, busesOut, channelsOut;
        bool leftOut;
    } kRows[] = {
        {"all", 1, 2, 1, 2, true},
        {"one input channel", 1, 1, 1, 2, true},
        {"no right output", 1, 2, 1, 1, true},
        {"four outputs", 1, 2, 1, 4, true},
        {"null outputs", 1, 2, 1, 2, false},
        {"no output bus", 1, 2, 0, 0, true},
        {"two output buses", 1, 2, 2, 2, true},
        {"a bus without channels", 1, 0, 1, 2, true},
        {"no input bus", 0, 0, 1, 2, true},
    };
    Signal left = noise(kBlock, 3);
    const Signal silence(kBlock), untouched(kBlock, 99.0f);
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.what);
        Instance reference(module), instance(module);
        reference.start(48000.0, 64);
        instance.start(48000.0, 64);
        const bool leftIn = row.channelsIn > 0;
        EXPECT_EQ(instance.render({left, left}, {64}), reference.render({left, left}, {64}));
        const auto wanted = reference.render({leftIn ? left : silence, silence}, {64});
        std::vector<Signal> out(8, untouched);
        Sample32 *inputs[2] = {left.data(), nullptr}, *outputs[8] = {};
        for (std::size_t i = 0; row.leftOut && i < 8; ++i)
            outputs[i] = out[i].data();
        AudioBusBuffers in, outBuses[2];
        in.numChannels = row.channelsIn;
        in.channelBuffers32 = leftIn ? inputs : nullptr;
        for (int bus = 0; bus < 2; ++bus) {
            outBuses[bus].numChannels = row.channelsOut;
            outBuses[bus].channelBuffers32 = outputs + 4 * bus;
            outBuses[bus].silenceFlags = 3;
        }
        ProcessData data;
        data.numSamples = kBlock;
        data.numInputs = row.busesIn;
        data.inputs = row.busesIn ? &in : nullptr;
        data.numOutputs = row.busesOut;
        data.outputs = row.busesOut ? outBuses : nullptr;
        EXPECT_EQ(instance.process(data), kResultOk);

        // Additional channels and buses are silenced.
        for (int i = 0; i < 8; ++i) {
            SCOPED_TRACE(i);
            const auto channel = static_cast<std::size_t>(i);
            const bool there = row.leftOut && i % 4 < row.channelsOut && i / 4 < row.busesOut;
            EXPECT_EQ(out[channel], !there ? untouched : i < 2 ? wanted[channel] : silence);
        }
        EXPECT_EQ(outBuses[0].silenceFlags, row.busesOut ? 0u : 3u);
    }
}

TEST_F(Bundle, WidensAMonoInput)
{
    SpeakerArrangement mono = SpeakerArr::kMono, stereo = SpeakerArr::kStereo;
    Instance instance(module);
    EXPECT_EQ(instance.processor->setBusArrangements(&mono, 1, &stereo, 1), kResultTrue);
    instance.start();
    const std::vector<Signal> out = instance.render({noise(2000, 5)}, kBlocks);
    EXPECT_EQ(out[0], out[1]);
    EXPECT_NE(out[0], Signal(2000, 0.0f));

    Instance narrow(module);
    EXPECT_EQ(narrow.processor->setBusArrangements(&mono, 1, &mono, 1), kResultTrue);
    narrow.start();
    EXPECT_EQ(narrow.render({noise(2000, 5)}, kBlocks)[1], Signal(2000, 0.0f)) << "not in use";
}

// Here the host has just asked for the latency, so no restart may be requested. Some hosts, while
// they load a preset, set every parameter to what they have just read, and would deadlock if that
// led to a callback.
TEST_F(Bundle, ReportsNoLatencyThatTheHostKnowsAlready)
{
    Instance instance(module);
    instance.start(48000.0);
    for (const auto& [rate, latency] : {std::pair{48000.0, 96u}, {192000.0, 0u}, {44100.0, 96u}}) {
        SCOPED_TRACE(rate);
        instance.deactivate();
        instance.activate(rate);
        EXPECT_EQ(instance.processor->getLatencySamples(), latency);
        for (int turn = 0; turn < 2; ++turn) {
            const ParamValue told = instance.controller->getParamNormalized(kLatency);
            EXPECT_NEAR(told, latency / rate, 1e-9);
            instance.controller->setParamNormalized(kLatency, told);
            instance.render(music(), kBlocks);
            EXPECT_TRUE(instance.handler.restarts.empty());
        }
    }
}

// Hosts that connect the two halves to nothing.
TEST_F(Bundle, ReportsAStateAndALatencyToAHostThatPassesNoMessages)
{
    Instance instance(module);
    instance.setHandler();
    EXPECT_EQ(instance.loadControllerState(projectState(module)), kResultOk);
    EXPECT_EQ(instance.handler.edits.size(), kPresetParamCount);
    EXPECT_EQ(instance.handler.groups, std::vector<std::size_t>{kPresetParamCount});
    EXPECT_EQ(instance.handler.timesDirty, 0) << "loading a project changes it";
    instance.activate(192000.0);
    EXPECT_EQ(instance.render(music(), kBlocks), throughVst2(kSettings, 192000.0));
    EXPECT_EQ(instance.handler.restarts, std::vector<int32>{kLatencyChanged});
}

// A block during a setup is silent, and its changes count for the next one.
TEST_F(Bundle, KeepsTheChangesOfABlockThatComesDuringASetup)
{
    Instance original(module), instance(module);
    original.start();
    EXPECT_EQ(instance.loadComponentState(original.componentState()), kResultOk);
    instance.activate();
    instance.render(music(), kBlocks);
    std::atomic<bool> stop{false};
    std::thread other([&] {
        ProcessSetup setup{kRealtime, kSample32, 1 << 20, 48000.0};
        while (!stop)
            instance.processor->setupProcessing(setup);
    });
    bool silent = false;
    double value = 0.0;
    for (int block = 0; block < 100000 && !silent; ++block) {
        value = value < 0.9 ? value + 1.0 / 1024.0 : 0.0;
        instance.automate(kLGainL, value);
        silent = instance.render({Signal(64, 1.0f)}, {64}) == std::vector<Signal>(2, Signal(64));
    }
    stop = true;
    other.join();
    instance.flush();
    EXPECT_TRUE(silent);
    original.tellComponentState(instance.componentState());
    EXPECT_EQ(original.controller->getParamNormalized(kLGainL), value);
}

TEST_F(Bundle, AnswersCallsWithIndicesOutOfRange)
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
    EXPECT_EQ(instance.processor->setBusArrangements(nullptr, 1, nullptr, 1), kInvalidArgument);
    EXPECT_EQ(instance.component->setState(nullptr), kInvalidArgument);
    EXPECT_EQ(instance.component->getState(nullptr), kInvalidArgument);
    EXPECT_EQ(instance.controller->setState(nullptr), kInvalidArgument);
    EXPECT_EQ(instance.controller->setComponentState(nullptr), kInvalidArgument);
    EXPECT_EQ(instance.processor->canProcessSampleSize(kSample64), kResultFalse);
    ProcessData wide;
    wide.symbolicSampleSize = kSample64;
    EXPECT_EQ(instance.process(wide), kResultFalse);
    EXPECT_EQ(instance.controller->getState(nullptr), kInvalidArgument);
    for (const FIDString name : {FIDString(), "generic"})
        EXPECT_EQ(instance.controller->createView(name), nullptr);
    for (const Signal& channel : instance.render(music(), kBlocks))
        for (const Sample32 x : channel)
            ASSERT_TRUE(std::isfinite(x)) << "before it is active";
    for (const double rate : {-1.0, 0.0, 1e12, std::numeric_limits<double>::infinity()}) {
        ProcessSetup odd{kRealtime, kSample32, 512, rate};
        EXPECT_EQ(instance.processor->setupProcessing(odd), kInvalidArgument) << rate;
    }
}

TEST_F(Bundle, IsSilentAfterItsTailAndNotBefore)
{
    Instance instance(module);
    instance.start();
    // The longest decay: the lowest bands, boosted and high-passed.
    automateAll(instance, {{kQB11, 1.0}, {k2x, 1.0}, {kLFreqL, 1.0}, {kLGainL, 1.0}, {kHpfL, 0.1}});
    const auto loudest = [&](std::size_t length) {
        const Signal silence(length, 0.0f);
        const Signal out = instance.render({silence, silence}, kBlocks)[0];
        const auto [low, high] = std::minmax_element(out.begin(), out.end());
        return std::max(-*low, *high);
    };
    const uint32 tail = instance.processor->getTailSamples();
    instance.render(music(), kBlocks);
    EXPECT_GT(loudest(512), 1e-3f);
    loudest(tail);
    EXPECT_LT(loudest(512), 1e-6f);
}
