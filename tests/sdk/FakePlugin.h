// A mock plug-in and a mock host around the wrapper: both record every call that they receive.
#pragma once

#include "pluginterfaces/base/ibstream.h"
#include "pluginterfaces/base/ustring.h"
#include "public.sdk/source/main/pluginfactory.h"
#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"
#include "public.sdk/source/vst/vstaudioeffect.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fake {

using namespace Steinberg;
using namespace Steinberg::Vst;

// The parameters in the controller's order. Hosts see the writable ones, as 0 to 3.
constexpr ParamID kLevelId = 70;    // plain value, "dB"
constexpr ParamID kSwitchId = 3;    // one step
constexpr ParamID kMeterId = 20;    // read-only
constexpr ParamID kLongId = 40;     // long texts, 25 steps, not automatable
constexpr ParamID kBeyondId = 900;  // plain value
constexpr ParamID kWritableIds[] = {kLevelId, kSwitchId, kLongId, kBeyondId};
constexpr VstInt32 kWritable = 4;

using Calls = std::vector<std::string>;
using Values = std::vector<std::pair<ParamID, double>>;

class FakeComponent;
class FakeController;

// How the mock classes behave, and pointers to the instances.
struct Plan {
    TUID componentId, controllerId;
    FakeComponent* component = nullptr;  // the latest instances
    FakeController* controller = nullptr;
    int alive = 0;
    bool componentStarts = true, controllerStarts = true;
    std::string componentState;         // empty: refused
    std::function<void()> whileInside;  // called once in the component's next setup or process call
    std::function<void(ParamID)> whileValueIsRead;  // called in the controller
    std::function<IPlugView*()> makeView;           // null: no editor
};

inline std::string readAll(IBStream* stream)
{
    char bytes[64];
    int32 count = 0;
    stream->read(bytes, sizeof bytes, &count);
    return std::string(bytes, static_cast<std::size_t>(count));
}

inline tresult writeAll(IBStream* stream, std::string bytes)
{
    return stream->write(bytes.data(), static_cast<int32>(bytes.size()), nullptr);
}

// Copies its input to its output, then inverts the input in place.
class FakeComponent : public Steinberg::Vst::AudioEffect {
public:
    struct Block {
        Values changes;
        int frames, inputs, outputs;
    };

    explicit FakeComponent(Plan& owner) : plan(owner)
    {
        ++plan.alive;
        plan.component = this;
        setControllerClass(FUID::fromTUID(plan.controllerId));
    }
    ~FakeComponent() override { --plan.alive; }

    tresult PLUGIN_API initialize(FUnknown* context) override
    {
        addAudioInput(STR16("Stereo In"), SpeakerArr::kStereo);
        addAudioOutput(STR16("Stereo Out"), SpeakerArr::kStereo);
        const tresult result = AudioEffect::initialize(context);
        return plan.componentStarts ? result : kResultFalse;
    }

    tresult PLUGIN_API setActive(TBool state) override
    {
        enter("active " + std::to_string(state));
        if (state)
            latency = processSetup.sampleRate < 176000.0 ? 96 : 0;
        return kResultOk;
    }

    tresult PLUGIN_API setProcessing(TBool state) override
    {
        note("processing " + std::to_string(state));
        return kNotImplemented;
    }

    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override
    {
        enter("rate " + std::to_string(static_cast<int>(setup.sampleRate)));
        note("frames " + std::to_string(setup.maxSamplesPerBlock));
        return AudioEffect::setupProcessing(setup);
    }

    // Accepts equal numbers of inputs and outputs; a refusal sets both to stereo.
    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                          SpeakerArrangement* outputs, int32 numOuts) override
    {
        enter("buses");
        const bool fits = inputs[0] == outputs[0];
        SpeakerArrangement taken = fits ? inputs[0] : SpeakerArr::kStereo;
        AudioEffect::setBusArrangements(&taken, numIns, &taken, numOuts);
        return fits ? kResultTrue : kResultFalse;
    }

    uint32 PLUGIN_API getLatencySamples() override { return latency; }

    tresult PLUGIN_API process(ProcessData& data) override
    {
        inside();
        const AudioBusBuffers &in = data.inputs[0], &out = data.outputs[0];
        Block block{{}, data.numSamples, in.numChannels, out.numChannels};
        for (int32 i = 0; i < data.inputParameterChanges->getParameterCount(); ++i) {
            IParamValueQueue* queue = data.inputParameterChanges->getParameterData(i);
            int32 offset = 0;
            ParamValue value = 0.0;
            queue->getPoint(queue->getPointCount() - 1, offset, value);
            block.changes.emplace_back(queue->getParameterId(), value);
            heard[queue->getParameterId()] = value;
        }
        for (int32 c = 0; c < in.numChannels; ++c)
            for (int32 i = 0; i < data.numSamples; ++i)
                in.channelBuffers32[c][i] =
                    -(out.channelBuffers32[c][i] = in.channelBuffers32[c][i]);
        if (meter) {
            int32 index = 0;
            data.outputParameterChanges->addParameterData(kMeterId, index)
                ->addPoint(0, *meter, index);
            meter.reset();
        }
        if (keepsRecord)
            blocks.push_back(block);
        return kResultOk;
    }

    tresult PLUGIN_API setState(IBStream* state) override
    {
        restored = readAll(state);
        return kResultOk;
    }

    tresult PLUGIN_API getState(IBStream* state) override
    {
        return plan.componentState.empty() ? kNotImplemented : writeAll(state, plan.componentState);
    }

    Calls calls;
    std::vector<Block> blocks;
    std::map<ParamID, double> heard;  // the last change of each parameter
    std::optional<double> meter;      // reported in the next block
    std::string restored;
    bool keepsRecord = true;  // in `calls` and `blocks`

private:
    void enter(const std::string& call)
    {
        inside();
        note(call);
    }
    void note(const std::string& call)
    {
        if (keepsRecord)
            calls.push_back(call);
    }
    void inside()
    {
        if (plan.whileInside)
            std::exchange(plan.whileInside, nullptr)();
    }

    Plan& plan;
    uint32 latency = 96;  // as of the last activation; 0 from 176.4 kHz
};

// A state is one byte for each writable parameter, 255 being 1.0; it is applied through edits.
class FakeController : public EditController {
public:
    explicit FakeController(Plan& owner) : plan(owner)
    {
        ++plan.alive;
        plan.controller = this;
    }
    ~FakeController() override { --plan.alive; }

    tresult PLUGIN_API initialize(FUnknown* context) override
    {
        const tresult result = EditController::initialize(context);
        constexpr int32 kAutomated = ParameterInfo::kCanAutomate;
        parameters.addParameter(STR16("Level"), STR16("dB"), 0, 0.5, kAutomated, kLevelId);
        parameters.addParameter(STR16("Switch"), nullptr, 1, 1.0, kAutomated, kSwitchId);
        parameters.addParameter(STR16("Meter"), nullptr, 0, 0.0, ParameterInfo::kIsReadOnly,
                                kMeterId);
        parameters.addParameter(STR16("A title longer than the room of any host"),
                                STR16("furlongs!"), 25, 0.25, 0, kLongId);
        parameters.addParameter(STR16("Beyond"), nullptr, 0, 0.0, kAutomated, kBeyondId);
        parameters.getParameter(kLongId)->setPrecision(10);
        return plan.controllerStarts ? result : kResultFalse;
    }

    tresult PLUGIN_API setState(IBStream* state) override
    {
        ++statesGiven;
        restored = readAll(state);
        for (std::size_t i = 0; i < restored.size() && i < kWritable; ++i)
            edit(kWritableIds[i], static_cast<unsigned char>(restored[i]) / 255.0);
        return kResultOk;
    }

    tresult PLUGIN_API getState(IBStream* state) override
    {
        std::string bytes;
        for (const ParamID id : kWritableIds)
            bytes += static_cast<char>(static_cast<int>(getParamNormalized(id) * 255.0 + 0.5));
        return writeAll(state, bytes);
    }

    ParamValue PLUGIN_API getParamNormalized(ParamID id) override
    {
        const ParamValue value = EditController::getParamNormalized(id);
        if (plan.whileValueIsRead)
            plan.whileValueIsRead(id);
        return value;
    }

    IPlugView* PLUGIN_API createView(FIDString name) override
    {
        return plan.makeView && std::string(name) == "editor" ? plan.makeView() : nullptr;
    }

    void edit(ParamID id, double value)
    {
        beginEdit(id);
        setParamNormalized(id, value);
        performEdit(id, value);
        endEdit(id);
    }

    int statesGiven = 0;
    std::string restored;

private:
    Plan& plan;
};

struct Plugin : Plan {
    Plugin()
    {
        FUID(0xA1A2A3A4, 2, 3, 4).toTUID(componentId);
        FUID(0xB1B2B3B4, 2, 3, 4).toTUID(controllerId);
        const char* const name = "An effect with more letters than a host offers for them";
        const PClassInfo2 componentClass(componentId, 1, kVstAudioEffectClass, name, 1,
                                         "Fx|EQ|Mastering", nullptr, "1.0.1.0", "");
        const PClassInfo2 controllerClass(controllerId, 1, kVstComponentControllerClass, name, 0,
                                          "", nullptr, "", "");
        Plan* const plan = this;
        factory->registerClass(&componentClass, make<FakeComponent, IAudioProcessor>, plan);
        factory->registerClass(&controllerClass, make<FakeController, IEditController>, plan);
    }
    ~Plugin() { factory->release(); }

    template <typename Class, typename Interface>
    static FUnknown* make(void* plan)
    {
        return static_cast<Interface*>(new Class(*static_cast<Plan*>(plan)));
    }

    CPluginFactory* factory = new CPluginFactory(PFactoryInfo(
        "A maker whose name fills all the room that there is for it, and more", "", "", 0));
};

// A host with one open effect.
class Host {
public:
    struct Asked {
        VstInt32 opcode, index;
        float opt;
    };

    explicit Host(Plugin& plugin)
    {
        plugin.factory->addRef();
        effect = Vst2Wrapper::create(plugin.factory, plugin.componentId, 0x5A743436, answer)
                     ->getAeffect();
        effect->user = this;
        component = plugin.component;
        controller = plugin.controller;
        call(effOpen);
    }
    ~Host() { call(effClose); }

    VstIntPtr call(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                   float opt = 0.0f)
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }
    void mains(bool on) { call(effMainsChanged, 0, on); }
    void setRate(float hz) { call(effSetSampleRate, 0, 0, nullptr, hz); }
    void set(VstInt32 index, float value) { effect->setParameter(effect, index, value); }
    float get(VstInt32 index) { return effect->getParameter(effect, index); }

    // Processes a silent stereo block and returns the changes that it carried.
    Values block(int frames = 16)
    {
        std::vector<float> in(2 * static_cast<std::size_t>(frames)), out(in);
        float* inputs[] = {in.data(), in.data() + frames};
        float* outputs[] = {out.data(), out.data() + frames};
        effect->processReplacing(effect, inputs, outputs, frames);
        return component->blocks.back().changes;
    }

    std::string chunk()
    {
        void* data = nullptr;
        const VstIntPtr size = call(effGetChunk, 0, 0, &data);
        return std::string(static_cast<const char*>(data), static_cast<std::size_t>(size));
    }

    template <typename Container>
    void restore(Container bytes)
    {
        EXPECT_EQ(call(effSetChunk, 0, static_cast<VstIntPtr>(bytes.size()), bytes.data()), 0);
    }

    auto timesAsked(VstInt32 opcode) const
    {
        return std::count_if(log.begin(), log.end(),
                             [opcode](const Asked& asked) { return asked.opcode == opcode; });
    }

    AEffect* effect;
    FakeComponent* component;
    FakeController* controller;
    std::vector<Asked> log;
    std::function<void(VstInt32 opcode)> onAsked;

private:
    static VstIntPtr answer(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr /*value*/,
                            void* /*ptr*/, float opt)
    {
        if (auto* host = static_cast<Host*>(effect->user)) {
            host->log.push_back({opcode, index, opt});
            if (host->onAsked)
                host->onAsked(opcode);
        }
        return 0;
    }
};

}  // namespace fake
