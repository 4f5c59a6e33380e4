// A VST 3 host for the tests: loads the built bundle and uses its classes only through their
// interfaces. Each step is a function of its own, so that a test can take them in any order.
#pragma once

#include "tests/support/HostObject.h"
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tools/host/SharedLibrary.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstunits.h"
#include "public.sdk/source/common/memorystream.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vst3 {

using namespace Steinberg;
using namespace Steinberg::Vst;

using Bytes = std::vector<char>;

// The library inside the bundle.
class Module {
public:
    Module();
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    template <typename Interface>
    IPtr<Interface> create(const TUID classId) const
    {
        void* made = nullptr;
        EXPECT_EQ(factory->createInstance(classId, Interface::iid, &made), kResultOk);
        return owned(static_cast<Interface*>(made));
    }

private:
    host::SharedLibrary library;

public:
    bool (*open)(void*);
    bool (*close)();
    IPtr<IPluginFactory3> factory;
};

// Records what the controller reports. Edits reach the processor with the next block, unless
// `deaf`; edits outside a gesture are dropped.
class Handler : public HostObject<IComponentHandler, IComponentHandler2> {
public:
    tresult PLUGIN_API beginEdit(ParamID id) override
    {
        EXPECT_TRUE(gestures.insert(id).second);
        begun.push_back(id);
        return kResultOk;
    }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override
    {
        EXPECT_TRUE(gestures.count(id)) << "an edit of " << id << " outside a gesture";
        if (gestures.count(id))
            edits.emplace_back(id, value);
        if (inGroup)
            ++groups.back();
        return kResultOk;
    }
    tresult PLUGIN_API endEdit(ParamID id) override
    {
        EXPECT_EQ(gestures.erase(id), 1u);
        return kResultOk;
    }
    tresult PLUGIN_API restartComponent(int32 flags) override
    {
        restarts.push_back(flags);
        return kResultOk;
    }
    tresult PLUGIN_API setDirty(TBool) override
    {
        ++timesDirty;
        return kResultOk;
    }
    tresult PLUGIN_API requestOpenEditor(FIDString) override { return kNotImplemented; }
    tresult PLUGIN_API startGroupEdit() override
    {
        EXPECT_FALSE(std::exchange(inGroup, true));
        groups.push_back(0);
        return kResultOk;
    }
    tresult PLUGIN_API finishGroupEdit() override
    {
        EXPECT_TRUE(std::exchange(inGroup, false));
        return kResultOk;
    }

    bool deaf = false;
    std::vector<std::pair<ParamID, ParamValue>> edits;  // those inside a gesture
    std::set<ParamID> gestures;                         // begun and not ended
    std::vector<ParamID> begun;
    std::vector<std::size_t> groups;                    // edits in each group
    bool inGroup = false;
    std::vector<int32> restarts;
    int timesDirty = 0;
};

// One plug-in instance. The destructor undoes the steps that were taken.
class Instance {
public:
    explicit Instance(const Module& module);
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    void setHandler() { EXPECT_EQ(controller->setComponentHandler(&handler), kResultOk); }
    void connect();
    // Through two proxies that pass messages only when both are in place, as in hosts that keep
    // processor and controller apart.
    void connectByProxies();
    void activate(double rate = 48000.0, int32 maxBlock = 512, int32 mode = kRealtime);
    void deactivate();
    // All that a host does before the first block of a fresh plug-in.
    void start(double rate = 48000.0, int32 maxBlock = 512, int32 mode = kRealtime);

    Bytes componentState() { return stateOf(component); }
    Bytes controllerState() { return stateOf(controller); }
    tresult loadComponentState(const Bytes& state) { return component->setState(State(state)); }
    tresult tellComponentState(const Bytes& state)
    {
        return controller->setComponentState(State(state));
    }
    tresult loadControllerState(const Bytes& state) { return controller->setState(State(state)); }

    // Queues a change for the next block and tells the controller.
    void automate(ParamID id, ParamValue value);
    // Processes parameter changes without audio.
    tresult flush()
    {
        ProcessData data;
        return process(data);
    }
    // Processes one block with the queued changes. Values that it reports go to the controller.
    tresult process(ProcessData& data);
    // Processes the channels in blocks whose lengths cycle through the given ones.
    std::vector<Signal> render(const std::vector<Signal>& in, const std::vector<int32>& blocks);

    Handler handler;
    HostApplication application;
    IPtr<IComponent> component;
    IPtr<IAudioProcessor> processor;
    IPtr<IEditController> controller;

private:
    // A stream over the bytes, for the duration of one call. It gives them in pieces.
    struct State : MemoryStream {
        explicit State(const Bytes& bytes)
            : MemoryStream(const_cast<char*>(bytes.data()), static_cast<TSize>(bytes.size()))
        {
        }
        operator IBStream*() { return this; }
        tresult PLUGIN_API read(void* to, int32 size, int32* count) override
        {
            return MemoryStream::read(to, std::min<int32>(size, 100), count);
        }
    };
    // The state does not start at the stream's beginning, as in hosts' files.
    template <class Part>
    static Bytes stateOf(const Part& part)
    {
        char before[5] = {};
        MemoryStream stream;
        stream.write(before, sizeof before, nullptr);
        EXPECT_EQ(part->getState(&stream), kResultOk);
        return Bytes(stream.getData() + sizeof before, stream.getData() + stream.getSize());
    }
    void wait(ParamID id, ParamValue value);

    struct Proxy : HostObject<IConnectionPoint> {
        tresult PLUGIN_API connect(IConnectionPoint*) override { return kResultOk; }
        tresult PLUGIN_API disconnect(IConnectionPoint*) override { return kResultOk; }
        tresult PLUGIN_API notify(IMessage* message) override
        {
            return target && *open ? target->notify(message) : kResultFalse;
        }
        FUnknownPtr<IConnectionPoint> target;
        const bool* open = nullptr;
    };
    Proxy toComponent, toController;
    bool proxiesOpen = false;
    ParameterChanges waiting, reported;
    int32 mode = kRealtime;
    bool active = false;
};

}  // namespace vst3
