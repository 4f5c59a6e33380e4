// The controller with a host and an editor that record their calls, and a given store.
#pragma once

#include "params/PitchNamesController.h"
#include "platform/MemoryStore.h"
#include "presets/FactoryBank.h"
#include "tests/support/HostObject.h"

#include "public.sdk/source/vst/vst2wrapper/ivst2bridge.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

using namespace Steinberg;
using namespace Steinberg::Vst;

using Values = std::vector<std::pair<ParamID, double>>;
using Bytes = std::vector<uint8>;

class HostProbe : public HostObject<IComponentHandler, IComponentHandler2, IPendingValues> {
public:
    tresult PLUGIN_API beginEdit(ParamID id) override { return note("begin", id); }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override
    {
        if (onEdit)
            onEdit(id);
        {
            const std::lock_guard<std::mutex> lock(mutex);
            edits.emplace_back(id, value);
        }
        return note("perform", id);
    }
    tresult PLUGIN_API endEdit(ParamID id) override { return note("end", id); }
    tresult PLUGIN_API restartComponent(int32) override { return kResultOk; }
    tresult PLUGIN_API setDirty(TBool state) override { return note("dirty", state ? 1u : 0u); }
    tresult PLUGIN_API requestOpenEditor(FIDString) override { return kNotImplemented; }
    tresult PLUGIN_API startGroupEdit() override { return kNotImplemented; }
    tresult PLUGIN_API finishGroupEdit() override { return kNotImplemented; }
    void PLUGIN_API deliverPendingValues() override
    {
        if (pending)
            std::exchange(pending, nullptr)();
    }

    Values edits;
    std::vector<std::string> calls;
    std::function<void(ParamID)> onEdit;  // before the edit is recorded
    std::function<void()> onCall;         // after any call
    std::function<void()> pending;

private:
    tresult note(const char* call, ParamID id)
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            calls.push_back(call + (" " + std::to_string(id)));
        }
        if (onCall)
            onCall();
        return kResultOk;
    }

    std::mutex mutex;
};

class EditorProbe : public EditorView, public AttachedEditor {
public:
    explicit EditorProbe(EditController* owner) : EditorView(owner) { }
    void setParameter(ParamID id, ParamValue value) override
    {
        told.emplace_back(id, value);
        if (onTold)
            onTold();
    }
    bool isOnOwnThread() const override { return std::this_thread::get_id() == thread; }
    ParamValue currentValue(ParamID id) const override
    {
        return controller->getParamNormalized(id);
    }

    Values told;
    std::function<void()> onTold;
    std::thread::id thread = std::this_thread::get_id();
};

class ControllerProbe : public PitchNamesController {
public:
    explicit ControllerProbe(platform::SettingsStore& settings, ViewFactory views = nullptr)
        : PitchNamesController(settings, views)
    {
        EXPECT_EQ(initialize(nullptr), kResultOk);
        setComponentHandler(&host);
    }
    ~ControllerProbe() override { terminate(); }

    // The bank's 6144 bytes.
    std::string bank() const
    {
        return std::string(reinterpret_cast<const char*>(presetBank.get()), sizeof(Bank));
    }
    PresetSlot& preset(int32 index) { return presetBank[index]; }
    std::string name(int32 index)
    {
        char text[kPresetNameSize + 1] = {};
        getPresetName(text, index);
        return text;
    }
    Bytes bankImage()
    {
        Bytes image;
        EXPECT_EQ(serializeBank(image), 48617);
        return image;
    }
    Bytes presetImage()
    {
        Bytes image;
        EXPECT_EQ(serializePreset(image), 2065);
        return image;
    }

    ParamValue PLUGIN_API getParamNormalized(ParamID id) override
    {
        const ParamValue value = PitchNamesController::getParamNormalized(id);
        if (afterRead)
            afterRead(id);
        return value;
    }

    HostProbe host;
    std::function<void(ParamID)> afterRead;  // on the reading thread
};

// Sets distinct values, none of which occurs in a factory preset.
inline void fillWithOddValues(ControllerProbe& controller)
{
    for (int32 index = 0; index < kPresetCount; ++index) {
        PresetSlot& preset = controller.preset(index);
        setName(preset, ("Odd " + std::to_string(index)).c_str());
        for (unsigned id = 0; id < kPresetParamCount; ++id)
            preset.values[id] =
                static_cast<float>((static_cast<unsigned>(index) * 7919 + id * 104729) % 10007)
                / 10007.0f;
    }
    controller.preset(4).values[0] = 0.0f;
    controller.preset(4).values[57] = 1.0f;
}
