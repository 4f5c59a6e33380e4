// A host out of its mind: one input is a sequence of calls of the VST 2 interface, in any order and
// with any numbers, that a host can make without breaking the interface's own promises (a pointer
// leads to as much room as its operation is owed, or is null; channels are as long as the block).
// The rooms are as small as they may be, so that the sanitizer sees the first byte beyond.
#include "Bytes.h"
#include "Effect.h"

#include <cmath>
#include <memory>

namespace {

constexpr VstInt32 kParameters = 58;
constexpr std::size_t kFirstValue = 16 + 8 + 41 + 168 + 24, kPresetSize = 168 + 58 * 32;

// A text of an operation that writes one: what it may fill, terminator included.
std::size_t roomOf(VstInt32 opcode)
{
    switch (opcode) {
    case effGetParamLabel:
    case effGetParamDisplay:
        return 9;
    case effGetProgramName:
    case effGetProgramNameIndexed:
        return 24;
    case effGetParamName:
    case effGetEffectName:
        return 32;
    case effGetVendorString:
    case effGetProductString:
        return 64;
    case effGetParameterProperties:
        return sizeof(VstParameterProperties);
    case effGetInputProperties:
    case effGetOutputProperties:
        return sizeof(VstPinProperties);
    case effVendorSpecific:
        return 16;
    default:
        return 256;
    }
}

class Host {
public:
    explicit Host(Bytes& input) : bytes(input)
    {
        const std::uint8_t whims = bytes.byte();
        asksBack = (whims & 1) != 0;
        setsBack = (whims & 2) != 0;
        current = this;
    }
    ~Host() { current = nullptr; }

    void callSomething()
    {
        switch (bytes.byte() % 8) {
        case 0:
        case 1:
        case 2:
            callOperation();
            break;
        case 3: {
            const VstInt32 index = someIndex();
            effect.set(index, bytes.take<float>());
            break;
        }
        case 4:
            requireValue(effect.get(someIndex()));
            break;
        case 5:
            if (blocks++ < kMostBlocks)
                process();
            break;
        case 6:
            restoreChanged();
            break;
        default:
            effect.dispatch(effEditIdle);
            break;
        }
    }

    // Wherever the calls have led, the effect is sound and its state is one that it takes back.
    void requireSound()
    {
        for (VstInt32 i = 0; i < effect.raw->numParams; ++i)
            requireValue(effect.get(i));
        require(effect.raw->numParams == kParameters && effect.raw->numPrograms == 1,
                "other counts");
        for (const VstInt32 channels : {effect.raw->numInputs, effect.raw->numOutputs})
            require(channels == 1 || channels == 2, "neither mono nor stereo");
        require(effect.raw->initialDelay == 0 || effect.raw->initialDelay == 96, "an odd latency");

        std::vector<std::uint8_t> state = effect.save();
        for (std::size_t preset = 0; preset < 24; ++preset)
            for (std::size_t id = 0; id < kParameters; ++id) {
                float value = 0.0f;
                std::memcpy(&value, &state[kFirstValue + preset * kPresetSize + id * 32],
                            sizeof value);
                requireValue(value);
            }
        effect.load(state);
        require(effect.save() == state, "a saved state is another one when it is loaded");
    }

private:
    static constexpr int kMostBlocks = 6;
    static constexpr VstInt32 kMostFrames = 200, kMostAnnounced = 8192;

    static void requireValue(float value)
    {
        require(value >= 0.0f && value <= 1.0f, "a value outside 0 to 1");
    }

    VstInt32 someIndex()
    {
        const std::uint8_t small = bytes.byte();
        return small < 224 ? small % 64 - 2 : bytes.take<VstInt32>();
    }

    void restoreChanged()
    {
        std::vector<std::uint8_t> state = effect.save();
        for (int changes = bytes.byte() % 4; changes > 0; --changes)
            state[bytes.take<std::uint16_t>() % state.size()] = bytes.byte();
        const std::uint8_t cut = bytes.byte();
        if (cut & 1)
            state.resize(bytes.take<std::uint16_t>() % state.size());
        effect.load(state);
    }

    // An operation with what it is owed and whatever numbers.
    void callOperation()
    {
        const VstInt32 opcode = bytes.byte() % 103 - 2;
        const std::uint8_t how = bytes.byte();
        const VstInt32 index = someIndex();
        switch (opcode) {
        case effClose:     // comes last
        case effEditOpen:  // there is no window
            return;
        case effSetSampleRate:
            effect.dispatch(opcode, index, 0, nullptr, someRate(how));
            return;
        case effSetBlockSize: {
            // Sizes that are refused, and sizes that do not take long to clear.
            auto frames = how & 1 ? bytes.take<VstIntPtr>() : bytes.take<std::uint16_t>();
            if (frames > kMostAnnounced && frames <= 1 << 20)
                frames %= kMostAnnounced;
            effect.dispatch(opcode, index, frames);
            return;
        }
        case effSetChunk: {
            std::vector<std::uint8_t> state = bytes.block(bytes.byte());
            state.shrink_to_fit();
            const auto size =
                how & 1 ? -bytes.take<std::uint16_t>() : static_cast<VstIntPtr>(state.size());
            effect.dispatch(opcode, index, size, how & 2 ? nullptr : state.data());
            return;
        }
        case effGetChunk: {
            void* data = nullptr;
            effect.dispatch(opcode, index, bytes.take<VstIntPtr>(), how & 2 ? nullptr : &data);
            return;
        }
        case effEditGetRect: {
            ERect* rect = nullptr;
            if (effect.dispatch(opcode, index, 0, &rect))
                require(rect && rect->right > rect->left && rect->bottom > rect->top, "no rect");
            return;
        }
        case effSetProgramName:
        case effString2Parameter:
        case effCanDo: {
            const auto read = bytes.block(bytes.byte() % 64);
            const std::unique_ptr<char[]> text(new char[read.size() + 1]());
            std::copy(read.begin(), read.end(), text.get());
            effect.dispatch(opcode, index, bytes.take<VstIntPtr>(), how & 2 ? nullptr : text.get());
            return;
        }
        case effSetSpeakerArrangement: {
            auto input = std::make_unique<VstSpeakerArrangement>();
            auto output = std::make_unique<VstSpeakerArrangement>();
            for (VstSpeakerArrangement* each : {input.get(), output.get()}) {
                const std::uint8_t type = bytes.byte();
                each->type = type < 240 ? type % 4 - 1 : bytes.take<VstInt32>();
                each->numChannels = bytes.take<std::int8_t>();
            }
            effect.dispatch(opcode, index, how & 1 ? 0 : reinterpret_cast<VstIntPtr>(input.get()),
                            how & 2 ? nullptr : output.get());
            return;
        }
        case effGetSpeakerArrangement: {
            VstSpeakerArrangement *input = nullptr, *output = nullptr;
            if (effect.dispatch(opcode, index, how & 1 ? 0 : reinterpret_cast<VstIntPtr>(&input),
                                how & 2 ? nullptr : &output))
                require(input->numChannels == effect.raw->numInputs
                            && output->numChannels == effect.raw->numOutputs,
                        "arrangements that differ from the counts");
            return;
        }
        default: {
            const std::unique_ptr<char[]> room(new char[roomOf(opcode)]());
            VstIntPtr value = bytes.take<VstIntPtr>();
            VstInt32 vendorIndex = index;
            if (opcode == effVendorSpecific && how & 1) {
                vendorIndex = how & 4 ? 0x73744341 : 0x73744361;
                value = 0x46554944;
            }
            const float opt = bytes.take<float>();
            effect.dispatch(opcode, opcode == effVendorSpecific ? vendorIndex : index, value,
                            how & 2 ? nullptr : room.get(), opt);
            return;
        }
        }
    }

    float someRate(std::uint8_t how)
    {
        constexpr float kRates[] = {44100.0f, 48000.0f, 88200.0f, 96000.0f, 176400.0f, 192000.0f};
        if (how & 1)
            return kRates[how / 2 % 6];
        const auto rate = bytes.take<float>();
        if (rate > 0.0f && rate < 1e7f)
            usualRate = false;
        return rate;
    }

    // One block with channels that may be missing, shared or used for both directions, and samples
    // of any kind.
    void process()
    {
        const std::uint8_t how = bytes.byte();
        const VstInt32 frames = how & 1 ? bytes.byte() % kMostFrames : bytes.byte() % 40 - 2;
        const auto length = static_cast<std::size_t>(std::max(frames, 0));
        const auto inputs = static_cast<std::size_t>(effect.raw->numInputs);
        const auto outputs = static_cast<std::size_t>(effect.raw->numOutputs);

        // Separate blocks of memory, each exactly as long as the block of samples.
        std::vector<std::unique_ptr<float[]>> memory;
        std::vector<float*> in, out;
        for (std::size_t i = 0; i < inputs + outputs; ++i) {
            memory.emplace_back(new float[length]);
            (i < inputs ? in : out).push_back(memory.back().get());
        }
        bool moderate = true;
        const auto few = bytes.take<std::uint32_t>();
        for (std::size_t i = 0; i < inputs; ++i)
            for (std::size_t k = 0; k < length; ++k)
                in[i][k] = static_cast<float>((few >> (k % 13)) % 200) / 100.0f - 1.0f;
        if (how & 2 && length > 0)
            for (int i = bytes.byte() % 4; i > 0; --i) {
                float& sample = in[bytes.byte() % inputs][bytes.byte() % length];
                sample = bytes.take<float>();
                // What is no number at all is taken for silence.
                moderate = moderate && (!std::isfinite(sample) || std::abs(sample) <= 16.0f);
            }
        if (how & 4)
            out[0] = in[0];
        if (how & 8)
            in.back() = in.front();
        if (how & 16)
            in[bytes.byte() % inputs] = nullptr;
        if (how & 32)
            out[bytes.byte() % outputs] = nullptr;
        wasModerate = wasModerate && moderate;
        effect.raw->processReplacing(effect.raw, how & 64 ? nullptr : in.data(),
                                     how & 128 ? nullptr : out.data(), frames);
        if (!wasModerate || !usualRate || how & 128)
            return;
        for (const float* channel : out)
            for (std::size_t k = 0; channel && k < length; ++k)
                require(std::isfinite(channel[k]), "an output that is no number");
    }

    static VstIntPtr answer(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr, void*, float opt)
    {
        if (opcode == audioMasterVersion)
            return 2400;
        if (!current || current->answering)
            return 0;
        current->answering = true;
        current->comeBack(opcode, index, opt);
        current->answering = false;
        return 0;
    }

    // Hosts ask and set from inside what they are told.
    void comeBack(VstInt32 opcode, VstInt32 index, float opt)
    {
        if (opcode == audioMasterAutomate) {
            if (asksBack)
                requireValue(effect.get(index));
            if (setsBack)
                effect.set(index, opt);
        } else if (asksBack && opcode == audioMasterUpdateDisplay) {
            effect.save();
        } else if (asksBack && opcode == audioMasterIOChanged) {
            VstSpeakerArrangement *input = nullptr, *output = nullptr;
            effect.dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&input),
                            &output);
        }
    }

    static Host* current;

    Bytes& bytes;
    Effect effect{answer};
    bool asksBack = false, setsBack = false, answering = false;
    int blocks = 0;
    bool usualRate = true, wasModerate = true;
};

Host* Host::current = nullptr;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int kMostCalls = 100;
    Bytes bytes(data, size);
    Host host(bytes);
    for (int calls = 0; calls < kMostCalls && !bytes.empty(); ++calls)
        host.callSomething();
    host.requireSound();
    return 0;
}
