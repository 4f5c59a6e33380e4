// An effect of the entry that hosts use, with no settings of whoever runs the fuzzer.
#pragma once

#include "EntryPoints.h"
#include "Finding.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

class Effect {
public:
    static constexpr VstIntPtr kChunkSize = 16 + 48625;

    explicit Effect(audioMasterCallback host) : raw(make(host)) { }
    ~Effect() { require(dispatch(effClose) == 1, "the effect did not close"); }

    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) const
    {
        return raw->dispatcher(raw, opcode, index, value, ptr, opt);
    }
    float get(VstInt32 index) const { return raw->getParameter(raw, index); }
    void set(VstInt32 index, float value) const { raw->setParameter(raw, index, value); }

    std::vector<std::uint8_t> save() const
    {
        void* data = nullptr;
        const VstIntPtr size = dispatch(effGetChunk, 0, 0, &data);
        require(size == kChunkSize && data, "a chunk of another size");
        const auto* first = static_cast<const std::uint8_t*>(data);
        return std::vector<std::uint8_t>(first, first + size);
    }
    // Of memory as long as the state.
    void load(std::vector<std::uint8_t> state) const
    {
        dispatch(effSetChunk, 0, static_cast<VstIntPtr>(state.size()), state.data());
    }

    AEffect* const raw;

private:
    static AEffect* make(audioMasterCallback host)
    {
        // Those of the user stay as they are, too.
        setenv("XDG_DATA_HOME", "/dev/null", 1);
        AEffect* const made = VSTPluginMain(host);
        require(made != nullptr, "no effect");
        return made;
    }
};
