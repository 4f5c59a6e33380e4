// A controller whose bank tests can read and set, beside the reference reader.
#pragma once

#include "params/PitchNamesController.h"
#include "platform/MemoryStore.h"
#include "tests/presets/ExpectedBank.h"
#include "tests/support/TemporaryFolder.h"

#include "public.sdk/source/common/memorystream.h"

#include <cstring>

class OpenedController : public Steinberg::Vst::PitchNamesController {
public:
    explicit OpenedController(platform::SettingsStore& settings)
        : Steinberg::Vst::PitchNamesController(settings)
    {
        initialize(nullptr);
    }
    ~OpenedController() override { terminate(); }

    Steinberg::tresult performEdit(Steinberg::Vst::ParamID id, double value) override
    {
        inOrder = inOrder && id == edits % 58;
        last[id % 58] = static_cast<float>(value);
        ++edits;
        return Steinberg::kResultOk;
    }

    // The present bank and selection.
    expected::Controller now() const
    {
        expected::Controller copy;
        std::memcpy(copy.bank.data(), presetBank.get(), sizeof copy.bank);
        std::memcpy(copy.reset.data(), &resetImage, sizeof copy.reset);
        copy.selected = static_cast<std::size_t>(currentPreset);
        return copy;
    }
    // Sets bank and selection without notifying anyone.
    void become(const expected::Controller& wanted)
    {
        std::memcpy(presetBank.get(), wanted.bank.data(), sizeof wanted.bank);
        std::memcpy(&resetImage, wanted.reset.data(), sizeof wanted.reset);
        currentPreset = static_cast<Steinberg::int32>(wanted.selected);
        edits = 0;
        inOrder = true;
    }
    // Loads a state over `buffer`, whose bytes complete a state that is too short.
    void loadState(expected::Bytes state, const expected::Bytes& buffer)
    {
        std::memcpy(stateBuffer.get(), buffer.data(), kStateBufferSize);
        Steinberg::MemoryStream stream(state.data(), static_cast<Steinberg::TSize>(state.size()));
        setState(&stream);
    }

    // Whether bank and selection are as wanted and the host was told of that many selections, the
    // last with the present values.
    bool is(const expected::Controller& wanted, int selections) const
    {
        const PresetSlot& selected = *(presetBank.get() + currentPreset);
        return static_cast<std::size_t>(currentPreset) == wanted.selected
            && std::memcmp(presetBank.get(), wanted.bank.data(), sizeof wanted.bank) == 0
            && edits == 58u * static_cast<unsigned>(selections) && inOrder
            && (selections == 0
                || std::memcmp(last.data(), selected.values, sizeof selected.values) == 0);
    }

private:
    unsigned edits = 0;
    bool inOrder = true;  // each selection's ids ran from 0 to 57
    std::array<float, 58> last{};
};

enum class Road { BankFile, PresetFile, StoredBank, StoredPreset, State };

// Loads the same images into the controller and the reference reader, each time from `start`.
struct CheckedController {
    // Whether the controller ends with what the reference reader expects, which is then in
    // `wanted`.
    bool loads(Road road, const expected::Bytes& image, bool reversed = false)
    {
        controller.become(wanted = start);
        if (road == Road::State) {
            expected::Bytes held = heldState;
            controller.loadState(image, held);
            return controller.is(wanted, wanted.loadState(image, held));
        }
        const bool isFile = road == Road::BankFile || road == Road::PresetFile;
        const bool isBank = road == Road::BankFile || road == Road::StoredBank;
        if (isFile) {
            // Some systems wait for the disk when an existing file is truncated.
            std::filesystem::remove(path);
            writeContent(path, {reinterpret_cast<const char*>(image.data()), image.size()});
            isBank ? controller.loadBank(path.c_str(), reversed)
                   : controller.loadPreset(path.c_str(), reversed);
        } else {
            store.values[isBank ? "DefaultBank" : "MemoB"] = image;
            isBank ? controller.loadDefaultBank() : controller.loadMemoB();
        }
        return controller.is(wanted,
                             wanted.loadImage(image, isBank ? 0x38 : 0x22, isFile, reversed));
    }

    platform::MemoryStore store;
    OpenedController controller{store};
    expected::Controller start = controller.now(), wanted;
    expected::Bytes heldState;  // the state buffer before each load

private:
    TemporaryFolder folder;
    const std::string path = folder / "image";
};
