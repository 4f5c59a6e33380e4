// A controller with its bank laid open, the host that listens to it, and images to feed it.
#pragma once

#include "ExpectedBank.h"
#include "MemoryStore.h"
#include "PitchNamesController.h"

#include <cstring>

struct ListeningHost : Steinberg::Vst::IComponentHandler {
    Steinberg::tresult PLUGIN_API beginEdit(Steinberg::Vst::ParamID) override { return 0; }
    Steinberg::tresult PLUGIN_API performEdit(Steinberg::Vst::ParamID id, double value) override
    {
        inOrder = inOrder && id == edits % 58;
        last[id % 58] = static_cast<float>(value);
        ++edits;
        return 0;
    }
    Steinberg::tresult PLUGIN_API endEdit(Steinberg::Vst::ParamID) override { return 0; }
    Steinberg::tresult PLUGIN_API restartComponent(Steinberg::int32) override { return 0; }
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID, void** object) override
    {
        *object = nullptr;
        return Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

    void forget()
    {
        edits = 0;
        inOrder = true;
    }

    unsigned edits = 0;
    bool inOrder = true;  // ids ran from 0 to 57, again and again
    std::array<float, 58> last{};
};

class OpenedController : public Steinberg::Vst::PitchNamesController {
public:
    explicit OpenedController(platform::SettingsStore& settings)
        : Steinberg::Vst::PitchNamesController(settings)
    {
        initialize(nullptr);
        setComponentHandler(&host);
    }
    ~OpenedController() override
    {
        setComponentHandler(nullptr);
        terminate();
    }

    // What the expectations start from.
    expected::Controller now() const
    {
        expected::Controller copy;
        std::memcpy(copy.bank.data(), presetBank.get(), sizeof copy.bank);
        std::memcpy(copy.reset.data(), &resetImage, sizeof copy.reset);
        copy.selected = static_cast<std::size_t>(currentPreset);
        copy.state.assign(stateBuffer.get(), stateBuffer.get() + kStateBufferSize);
        return copy;
    }
    // Back to that, with no word to anybody.
    void become(const expected::Controller& wanted)
    {
        std::memcpy(presetBank.get(), wanted.bank.data(), sizeof wanted.bank);
        std::memcpy(&resetImage, wanted.reset.data(), sizeof wanted.reset);
        currentPreset = static_cast<Steinberg::int32>(wanted.selected);
        std::memcpy(stateBuffer.get(), wanted.state.data(), wanted.state.size());
        host.forget();
    }

    // That bank and selection are as wanted, and that the host has heard of `selections` of them,
    // the last of which is the present one.
    bool is(const expected::Controller& wanted, int selections) const
    {
        const PresetSlot& selected = *(presetBank.get() + currentPreset);
        return static_cast<std::size_t>(currentPreset) == wanted.selected
            && std::memcmp(presetBank.get(), wanted.bank.data(), sizeof wanted.bank) == 0
            && host.edits == 58u * static_cast<unsigned>(selections) && host.inOrder
            && (selections == 0
                || std::memcmp(host.last.data(), selected.values, sizeof selected.values) == 0);
    }

    ListeningHost host;
};
