#include "tests/vst3/Host.h"

#include <algorithm>
#include <cstdlib>

namespace vst3 {

namespace {

template <typename Function>
Function find(const host::SharedLibrary& library, const char* name)
{
    return reinterpret_cast<Function>(library.find(name));
}

// The built library, or the one that an environment variable names, such as an installed one.
std::string libraryPath()
{
    const char* const named = std::getenv("ZKR_TEST_VST3_LIBRARY");
    return named ? named : ZKR_VST3_LIBRARY;
}

}  // namespace

Module::Module() : library(libraryPath())
{
    // The names differ between systems; Windows gives no handle.
    open = find<bool (*)(void*)>(library, "ModuleEntry");
    close = find<bool (*)()>(library, "ModuleExit");
    if (!open) {
        open = find<bool (*)(void*)>(library, "InitDll");
        close = find<bool (*)()>(library, "ExitDll");
    }
    auto* const getFactory = find<IPluginFactory*(PLUGIN_API*)()>(library, "GetPluginFactory");
    if (!open || !close || !getFactory || !open(nullptr))
        throw std::runtime_error("the library lacks the entry points of a VST 3 module");
    const IPtr<IPluginFactory> plain = owned(getFactory());
    factory = FUnknownPtr<IPluginFactory3>(plain).getInterface();
}

Module::~Module()
{
    factory = nullptr;
    EXPECT_TRUE(close());
}

Instance::Instance(const Module& module)
{
    PClassInfo info;
    EXPECT_EQ(module.factory->getClassInfo(0, &info), kResultOk);
    component = module.create<IComponent>(info.cid);
    processor = FUnknownPtr<IAudioProcessor>(component).getInterface();
    EXPECT_EQ(component->initialize(&application), kResultOk);
    TUID controllerId;
    EXPECT_EQ(component->getControllerClassId(controllerId), kResultOk);
    controller = module.create<IEditController>(controllerId);
    EXPECT_EQ(controller->initialize(&application), kResultOk);
}

Instance::~Instance()
{
    deactivate();
    FUnknownPtr<IConnectionPoint> one(component), other(controller);
    one->disconnect(other);
    one->disconnect(&toController);
    other->disconnect(one);
    other->disconnect(&toComponent);
    controller->setComponentHandler(nullptr);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_EQ(component->terminate(), kResultOk);
}

void Instance::connect()
{
    FUnknownPtr<IConnectionPoint> one(component), other(controller);
    EXPECT_EQ(one->connect(other), kResultOk);
    EXPECT_EQ(other->connect(one), kResultOk);
}

void Instance::connectByProxies()
{
    toComponent.target = FUnknownPtr<IConnectionPoint>(component);
    toController.target = FUnknownPtr<IConnectionPoint>(controller);
    toComponent.open = toController.open = &proxiesOpen;
    EXPECT_EQ(toController.target->connect(&toComponent), kResultOk);
    EXPECT_EQ(toComponent.target->connect(&toController), kResultOk);
    proxiesOpen = true;
}

void Instance::activate(double rate, int32 maxBlock, int32 processMode)
{
    mode = processMode;
    ProcessSetup setup{mode, kSample32, maxBlock, rate};
    EXPECT_EQ(processor->setupProcessing(setup), kResultOk);
    for (const BusDirection direction : {kInput, kOutput})
        EXPECT_EQ(component->activateBus(kAudio, direction, 0, true), kResultOk);
    const uint32 latency = processor->getLatencySamples();
    EXPECT_EQ(component->setActive(true), kResultOk);
    EXPECT_EQ(processor->getLatencySamples(), latency) << "some hosts read it before";
    EXPECT_EQ(processor->setProcessing(true), kResultOk);
    active = true;
}

void Instance::deactivate()
{
    if (!std::exchange(active, false))
        return;
    processor->setProcessing(false);
    EXPECT_EQ(component->setActive(false), kResultOk);
}

void Instance::start(double rate, int32 maxBlock, int32 processMode)
{
    setHandler();
    connect();
    activate(rate, maxBlock, processMode);
}

void Instance::automate(ParamID id, ParamValue value)
{
    wait(id, value);
    controller->setParamNormalized(id, value);
}

void Instance::wait(ParamID id, ParamValue value)
{
    int32 index = 0;
    waiting.addParameterData(id, index)->addPoint(0, value, index);
}

tresult Instance::process(ProcessData& data)
{
    if (!handler.deaf)
        for (const auto& [id, value] : std::exchange(handler.edits, {}))
            wait(id, value);
    data.processMode = mode;
    data.inputParameterChanges = &waiting;
    data.outputParameterChanges = &reported;
    reported.clearQueue();
    const tresult result = processor->process(data);
    waiting.clearQueue();
    for (int32 i = 0; i < reported.getParameterCount(); ++i) {
        IParamValueQueue* const queue = reported.getParameterData(i);
        int32 offset = 0;
        ParamValue value = 0.0;
        queue->getPoint(queue->getPointCount() - 1, offset, value);
        controller->setParamNormalized(queue->getParameterId(), value);
    }
    return result;
}

std::vector<Signal> Instance::render(const std::vector<Signal>& in,
                                     const std::vector<int32>& blocks)
{
    std::vector<Signal> source = in;
    const auto out = inBlocks(source, 2, blocks, [&](auto inputs, auto outputs, int32 length) {
        AudioBusBuffers inputBus, outputBus;
        inputBus.numChannels = static_cast<int32>(inputs.size());
        inputBus.channelBuffers32 = inputs.data();
        outputBus.numChannels = 2;
        outputBus.channelBuffers32 = outputs.data();
        ProcessData data;
        data.numSamples = length;
        data.numInputs = data.numOutputs = 1;
        data.inputs = &inputBus;
        data.outputs = &outputBus;
        EXPECT_EQ(process(data), kResultOk);
    });
    EXPECT_EQ(source, in) << "the host's input buffers were written to";
    return out;
}

}  // namespace vst3
