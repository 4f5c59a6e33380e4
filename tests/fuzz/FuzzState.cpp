// A host's project: the bytes go to the whole plug-in as a chunk, and the bank that its next chunk
// tells of is what their records say or what it was.
#include "Effect.h"
#include "ExpectedBank.h"

#include <cstring>

namespace {

using expected::Bytes;

constexpr std::size_t kChunkHead = 16;

VstIntPtr answer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float)
{
    return opcode == audioMasterVersion ? 2400 : 0;
}

// The controller's part of a chunk whose two sizes fit, else nothing; an empty part is not given
// to the controller.
bool stateIn(const Bytes& chunk, Bytes& state)
{
    if (chunk.size() < kChunkHead)
        return false;
    std::uint64_t sizes[2];
    std::memcpy(sizes, chunk.data(), sizeof sizes);
    const std::uint64_t room = chunk.size() - kChunkHead;
    if (sizes[0] > room || sizes[1] > room - sizes[0])
        return false;
    const auto* first = chunk.data() + kChunkHead + sizes[0];
    state.assign(first, first + sizes[1]);
    return !state.empty();
}

// What is in the bank of an effect that gives out this chunk.
expected::Controller modelOf(const Bytes& chunk, const expected::Preset& reset)
{
    expected::Controller model;
    Bytes state(chunk.begin() + kChunkHead, chunk.end()), buffer(state.size());
    require(model.loadState(state, buffer) == 1, "a saved state that cannot be read");
    model.reset = reset;
    return model;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Effect project(answer);
    static const Bytes start = project.save();
    static const expected::Preset reset = modelOf(start, {}).bank[0];

    const Bytes given(data, data + size);
    expected::Controller wanted = modelOf(start, reset);
    project.load(given);
    Bytes state, buffer(start.begin() + kChunkHead, start.end());
    if (stateIn(given, state))
        wanted.loadState(state, buffer);

    const Bytes after = project.save();
    const expected::Controller now = modelOf(after, reset);
    require(now.bank == wanted.bank && now.selected == wanted.selected,
            "the bank is not what the records say");
    for (VstInt32 id = 0; id < project.raw->numParams; ++id) {
        float stored = 0.0f;
        std::memcpy(&stored, now.bank[now.selected].data() + 24 + 4 * id, sizeof stored);
        require(project.get(id) == stored, "the host is told of another value than the bank holds");
    }
    if (after == start)
        return 0;
    project.load(after);
    require(project.save() == after, "a saved state is another one when it is loaded");
    project.load(start);
    require(project.save() == start, "the way back is not open");
    return 0;
}
