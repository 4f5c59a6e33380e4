// States from hosts' projects and preset files: VST 2 chunks, both parts of a VST 3 state in
// streams that end early, fail or report wrong sizes, and the files that the tool reads. Whatever
// the bytes, the plug-in afterwards holds what a reference reader makes of them, and a refused
// state changes nothing.
#include "platform/MemoryStore.h"
#include "shell/EntryPoints.h"
#include "shell/vst3/Vst3Controller.h"
#include "shell/vst3/Vst3Processor.h"
#include "tests/fuzz/Finding.h"
#include "tests/presets/ExpectedBank.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/support/HostObject.h"
#include "tools/banks/BankCheck.h"
#include "tools/banks/HostFile.h"

#include "public.sdk/source/common/memorystream.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using expected::Bytes;

constexpr std::size_t kParameters = 58, kStateBytes = 48625, kRecordsAt = 8 + 41,
                      kPresetBytes = 168 + kParameters * 32;

// The first byte of an input, modulo 5.
enum Form : std::uint8_t { kChunk, kController, kComponent, kComponentToController, kFile };
// Bits of the second one; the third and fourth are a number for it.
enum How : std::uint8_t {
    kConnected = 1,  // processor and controller exchange messages
    kInOnePart = 1,  // of a chunk: its head is made to fit the bytes
    kPieces = 6,     // 0: as the plug-in asks
    kPlace = 0x38    // what happens at the byte of that number; see Place
};
enum Place : std::uint8_t { kNothing, kError, kEnd, kNegative, kTooMany, kFarTooMany };

void put(Bytes& bytes, std::uint64_t number, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

// The values of a preset, as bytes in their order.
const std::uint8_t* valuesOf(const expected::Preset& preset)
{
    return preset.data() + 24;
}

float valueOf(const expected::Preset& preset, std::size_t id)
{
    float value = 0.0f;
    std::memcpy(&value, valuesOf(preset) + 4 * id, sizeof value);
    return value;
}

// The state with that content, as the plug-in saves it.
Bytes stateOf(const expected::Controller& content)
{
    static const Bytes empty = [] {
        handmade::Image image;
        for (unsigned preset = 0; preset < 24; ++preset) {
            image.name(preset, "");
            for (unsigned id = 0; id < kParameters; ++id)
                image.value(preset, id, 0.0f);
        }
        return handmade::stateOf(image.finish(handmade::kBank));
    }();
    Bytes state = empty;
    state[8 + 17] = static_cast<std::uint8_t>(content.selected);
    std::uint8_t* records = &state[kRecordsAt];
    for (const expected::Preset& preset : content.bank) {
        std::copy_n(preset.data(), 24, records + 12);
        for (std::size_t id = 0; id < kParameters; ++id)
            std::copy_n(valuesOf(preset) + 4 * id, 4, records + 168 + 32 * id + 24);
        records += kPresetBytes;
    }
    return state;
}

// The component's state with the values of a preset.
Bytes componentStateOf(const expected::Preset& preset)
{
    Bytes state;
    for (const std::size_t word : {std::size_t{0x5A743436}, std::size_t{1}, kParameters})
        put(state, word, 4);
    state.insert(state.end(), valuesOf(preset), preset.data() + preset.size());
    return state;
}

// Takes over a component's state; false if the state is not one.
bool takeComponentState(const Bytes& given, expected::Preset& preset)
{
    if (given.size() < 12 || expected::word(given, 0, false) != 0x5A743436
        || expected::word(given, 4, false) != 1)
        return false;
    const std::size_t count = expected::word(given, 8, false);
    if (count > 4096 || given.size() < 12 + 4 * count)
        return false;
    for (std::size_t id = 0; id < std::min(count, kParameters); ++id)
        if (expected::liesInZeroToOne(expected::word(given, 12 + 4 * id, false)))
            std::copy_n(&given[12 + 4 * id], 4, &preset[24 + 4 * id]);
    return true;
}

// Whether a state has as many bytes of records as its header announces.
bool isComplete(const Bytes& state)
{
    if (state.size() >= kStateBytes)
        return true;
    if (state.size() < kRecordsAt || expected::word(state, 8, false) != 0x5A743436)
        return false;
    const std::int64_t payload = expected::number(state, 8 + 21, false);
    return payload >= 0 && payload <= static_cast<std::int64_t>(state.size() - kRecordsAt);
}

// Gives an input's bytes as the input's second byte says.
class Source : public HostObject<IBStream> {
public:
    Source(const Bytes& bytes, std::uint8_t how, std::size_t number)
        : bytes(bytes), number(number), place(static_cast<std::uint8_t>((how & kPlace) >> 3))
    {
        const std::size_t pieces[] = {bytes.size(), 7, 100, number + 1};
        piece = pieces[(how & kPieces) >> 1];
    }

    // What has been read.
    Bytes given() const
    {
        return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(position)};
    }

    tresult PLUGIN_API read(void* to, int32 wanted, int32* count) override
    {
        require(wanted >= 0 && count, "a stream is read without a size");
        std::size_t size =
            std::min({static_cast<std::size_t>(wanted), piece, bytes.size() - position});
        const bool here = place != kNothing && place <= kFarTooMany && position + size >= number;
        if (here && place <= kNegative) {
            size = number > position ? number - position : 0;
            if (size == 0) {
                *count = place == kNegative ? -wanted - 1 : 0;
                return place == kError ? kInternalError : kResultOk;
            }
        }
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(position), size,
                    static_cast<std::uint8_t*>(to));
        position += size;
        *count = static_cast<int32>(size);
        // Only with a full buffer is it clear what a count beyond it means.
        if (here && size == static_cast<std::size_t>(wanted) && size > 0)
            *count = place == kTooMany ? *count + 1
                : place == kFarTooMany ? std::numeric_limits<int32>::max()
                                       : *count;
        return kResultOk;
    }
    tresult PLUGIN_API write(void*, int32, int32*) override { return kNotImplemented; }
    tresult PLUGIN_API seek(int64, int32, int64*) override { return kNotImplemented; }
    tresult PLUGIN_API tell(int64*) override { return kNotImplemented; }

private:
    const Bytes& bytes;
    const std::size_t number;
    const std::uint8_t place;
    std::size_t piece, position = 0;
};

// What the plug-in must hold, in any of its forms.
struct Expected : expected::Controller {
    // Takes over all that a fresh plug-in saves: preset 0 is what presets are reset to.
    void take(const Bytes& saved)
    {
        Bytes buffer(kStateBytes);
        loadState(saved, buffer);
        reset = bank[0];
    }
    const expected::Preset& live() const { return bank[selected]; }
};

// The state that every run starts from.
const Bytes& startState()
{
    static const Bytes state = handmade::stateOf(handmade::goodBank(1, 7));
    return state;
}

class Vst2 {
public:
    Vst2()
    {
        expected.take(save());
        reset();
    }

    // A chunk from memory exactly as long as it is.
    void run(const Bytes& chunk)
    {
        const Bytes exact = chunk;
        load(exact);
        const bool changed = takeChunk(chunk);
        requireExpected();
        if (changed)
            reset();
    }

    static Bytes chunkOf(const Bytes& state)
    {
        Bytes chunk;
        chunk.reserve(16 + state.size());
        put(chunk, 0, 8);
        put(chunk, state.size(), 8);
        chunk.insert(chunk.end(), state.begin(), state.end());
        return chunk;
    }

private:
    // False if the controller is not given a state.
    bool takeChunk(const Bytes& chunk)
    {
        if (chunk.size() < 16)
            return false;
        const auto size = [&](std::size_t at) {
            return static_cast<std::int64_t>(std::uint64_t{expected::word(chunk, at + 4, false)}
                                                 << 32
                                             | expected::word(chunk, at, false));
        };
        const std::int64_t room = static_cast<std::int64_t>(chunk.size()) - 16;
        const std::int64_t ofComponent = size(0), ofController = size(8);
        if (ofComponent < 0 || ofComponent > room || ofController <= 0
            || ofController > room - ofComponent)
            return false;
        const auto state = chunk.begin() + 16 + ofComponent;
        expected.loadState(Bytes(state, state + ofController), held);
        return true;
    }

    void requireExpected()
    {
        require(save() == held, "the bank differs from what the chunk says");
        for (std::size_t id = 0; id < kParameters; ++id)
            require(effect->getParameter(effect, static_cast<VstInt32>(id))
                        == valueOf(expected.live(), id),
                    "a parameter differs from the selected preset");
    }
    // What it leaves is checked after the next run.
    void reset()
    {
        load(chunkOf(startState()));
        takeChunk(chunkOf(startState()));
    }
    void load(Bytes chunk) const
    {
        effect->dispatcher(effect, effSetChunk, 0, static_cast<VstIntPtr>(chunk.size()),
                           chunk.data(), 0.0f);
    }
    // The controller's part. A shorter state is completed with what was saved last.
    Bytes save()
    {
        void* data = nullptr;
        require(effect->dispatcher(effect, effGetChunk, 0, 0, &data, 0.0f) == 16 + kStateBytes,
                "a chunk of the wrong size");
        const auto* first = static_cast<const std::uint8_t*>(data);
        require(std::all_of(first, first + 8, [](std::uint8_t byte) { return byte == 0; }),
                "a chunk with a component's part");
        held = stateOf(expected);
        return {first + 16, first + 16 + kStateBytes};
    }

    static VstIntPtr answer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float value)
    {
        require(opcode != audioMasterAutomate || (value >= 0.0f && value <= 1.0f),
                "an automated value outside 0 to 1");
        return opcode == audioMasterVersion ? 2400 : 0;
    }

    AEffect* const effect = VSTPluginMain(answer);
    Bytes held = Bytes(kStateBytes);
    Expected expected;
};

class Vst3 {
public:
    explicit Vst3(bool connected) : connected(connected)
    {
        component.initialize(&application);
        controller.initialize(&application);
        if (connected) {
            component.connect(&controller);
            controller.connect(&component);
        }
        expected.take(save());
        reset();
    }
    ~Vst3()
    {
        if (connected) {
            component.disconnect(&controller);
            controller.disconnect(&component);
        }
        controller.terminate();
        component.terminate();
    }
    Vst3(const Vst3&) = delete;
    Vst3& operator=(const Vst3&) = delete;

    void run(Form form, const Bytes& bytes, std::uint8_t how, std::size_t number)
    {
        Source source(bytes, how, number);
        bool changed = false;
        if (form == kController) {
            const tresult result = controller.setState(&source);
            changed = takeState(source.given());
            require((result == kResultOk) == changed, "a state is complete, but refused, or not");
        } else if (form == kComponent) {
            require(component.setState(&source) == kResultOk, "a component's state is refused");
            changed = takeComponentState(source.given(), ofComponent);
        } else {
            require(controller.setComponentState(&source) == kResultOk,
                    "a component's state is refused by the controller");
            changed = takeComponentState(source.given(), expected.bank[expected.selected]);
        }
        requireExpected();
        if (changed)
            reset();
    }

private:
    // False if the state is not complete.
    bool takeState(const Bytes& given)
    {
        if (!isComplete(given))
            return false;
        Bytes rest(kStateBytes);
        expected.loadState(given, rest);
        return true;
    }

    void requireExpected()
    {
        require(save() == stateOf(expected), "the bank differs from what the state says");
        // It asks a controller that it is connected to.
        if (connected)
            ofComponent = expected.live();
        requireComponent(saveComponent());
        for (std::size_t id = 0; id < kParameters; ++id)
            require(static_cast<float>(controller.getParamNormalized(static_cast<ParamID>(id)))
                        == valueOf(expected.live(), id),
                    "a parameter differs from the selected preset");
    }
    // 0 and -0 are the same value.
    void requireComponent(const Bytes& saved) const
    {
        expected::Preset values{};
        require(saved.size() == 12 + 4 * kParameters && takeComponentState(saved, values),
                "a component's state of the wrong form");
        for (std::size_t id = 0; id < kParameters; ++id)
            require(valueOf(values, id) == valueOf(ofComponent, id),
                    "the component's values differ from what the state says");
    }
    // What it leaves is checked after the next run.
    void reset()
    {
        takeState(startState());
        ofComponent = expected.live();
        Bytes state = startState(), componentState = componentStateOf(ofComponent);
        MemoryStream first(componentState.data(), static_cast<TSize>(componentState.size()));
        MemoryStream second(state.data(), static_cast<TSize>(state.size()));
        require(component.setState(&first) == kResultOk
                    && controller.setState(&second) == kResultOk,
                "a good state is refused");
    }

    template <class Part>
    static Bytes savedBy(Part& part)
    {
        MemoryStream stream;
        require(part.getState(&stream) == kResultOk, "a state cannot be saved");
        return Bytes(stream.getData(), stream.getData() + stream.getSize());
    }
    Bytes save() { return savedBy(controller); }
    Bytes saveComponent() { return savedBy(component); }

    const bool connected;
    HostApplication application;
    platform::MemoryStore store;
    Vst3Processor component;
    Vst3Controller controller{store};
    Expected expected;
    expected::Preset ofComponent{};  // the values that the component holds
};

// The tool's reader of files: its state is a part of the file, and the report says what becomes of
// it. Returns the state; empty if the file is refused.
Bytes stateIn(const Bytes& file)
{
    const ByteView view{file.data(), file.size()};
    if (!tool::isHostFile(view))
        return {};
    tool::BankReport report;
    const auto found = tool::readHostFile(view, report);
    const tool::BankReport check = tool::checkBank(view);
    require(found || !check.isTaken(), "a file without a state counts as taken");
    if (!found)
        return {};
    require(found->stateAt <= file.size(), "a state beyond the file");
    Expected content;
    content.take(startState());
    const expected::Bank before = content.bank;
    Bytes buffer(kStateBytes);
    const int selections = content.loadState(found->state, buffer);
    require(!check.isTaken() || selections == 1, "the tool takes a state that the plug-in refuses");
    // VST 2 hosts can load incomplete states, which the tool warns of.
    require(check.isTaken() || !isComplete(found->state) || content.bank == before,
            "the tool refuses a state that changes the bank");
    return found->state;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t kHead = 4;
    if (size < kHead)
        return 0;
    // Without the user's own settings.
    static const int withoutSettings = setenv("XDG_DATA_HOME", "/dev/null", 1);
    static Vst2 vst2;
    static Vst3 connected(true), apart(false);
    (void)withoutSettings;

    const std::uint8_t how = data[1];
    const std::size_t number = data[2] + data[3] * std::size_t{256};
    const Bytes bytes(data + kHead, data + size);
    switch (const auto form = static_cast<Form>(data[0] % 5)) {
    case kChunk:
        vst2.run(how & kInOnePart ? Vst2::chunkOf(bytes) : bytes);
        break;
    case kFile:
        if (const Bytes state = stateIn(bytes); !state.empty())
            vst2.run(Vst2::chunkOf(state));
        break;
    default:
        (how & kConnected ? connected : apart).run(form, bytes, how, number);
        break;
    }
    return 0;
}
