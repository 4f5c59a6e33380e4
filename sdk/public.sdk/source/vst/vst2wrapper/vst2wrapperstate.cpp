// Vst2Wrapper: the plug-in's state as a VST 2 chunk.
//
//   0       int64   C, size of the component's state
//   8       int64   K, size of the controller's state      (both little-endian)
//   16      C bytes
//   16 + C  K bytes
#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"

#include "public.sdk/source/common/memorystream.h"

namespace Steinberg {
namespace Vst {

namespace {

constexpr std::size_t kHeadSize = 16;

void writeLittleEndian(char* target, int64 value)
{
    for (int byte = 0; byte < 8; ++byte)
        target[byte] = static_cast<char>(static_cast<uint64>(value) >> (8 * byte));
}

int64 readLittleEndian(const char* source)
{
    uint64 value = 0;
    for (int byte = 0; byte < 8; ++byte)
        value |= static_cast<uint64>(static_cast<unsigned char>(source[byte])) << (8 * byte);
    return static_cast<int64>(value);
}

}  // namespace

VstInt32 Vst2Wrapper::getChunk(void** data, bool /*isProgram*/)
{
    updateController();
    const std::lock_guard<std::mutex> lock(stateMutex);
    MemoryStream componentState, controllerState;
    const bool hasComponentState = component->getState(&componentState) == kResultTrue;
    const bool hasControllerState =
        controller && controller->getState(&controllerState) == kResultTrue;
    const int64 componentSize = hasComponentState ? componentState.getSize() : 0;
    const int64 controllerSize = hasControllerState ? controllerState.getSize() : 0;
    if (componentSize == 0 && controllerSize == 0)
        return 0;

    chunk.resize(kHeadSize);
    writeLittleEndian(chunk.data(), componentSize);
    writeLittleEndian(chunk.data() + 8, controllerSize);
    chunk.insert(chunk.end(), componentState.getData(), componentState.getData() + componentSize);
    chunk.insert(chunk.end(), controllerState.getData(),
                 controllerState.getData() + controllerSize);
    *data = chunk.data();
    return static_cast<VstInt32>(chunk.size());
}

// Passes the two parts to the component and the controller. The changes are not reported to the
// host, which would only record them as automation.
void Vst2Wrapper::restoreState(char* bytes, int64 componentSize, int64 controllerSize)
{
    restoring = std::this_thread::get_id();
    const struct Restoring {
        ~Restoring() { thread = std::thread::id(); }
        std::atomic<std::thread::id>& thread;
    } guard{restoring};
    if (componentSize > 0) {
        MemoryStream stream(bytes, componentSize);
        component->setState(&stream);
        stream.seek(0, IBStream::kIBSeekSet, nullptr);
        if (controller)
            controller->setComponentState(&stream);
    }
    if (controller && controllerSize > 0) {
        MemoryStream stream(bytes + componentSize, controllerSize);
        controller->setState(&stream);
    }
}

// A chunk with inconsistent sizes is ignored.
VstInt32 Vst2Wrapper::setChunk(const void* data, VstInt32 size, bool /*isProgram*/)
{
    if (size < static_cast<VstInt32>(kHeadSize))
        return 0;
    std::vector<char> bytes(static_cast<const char*>(data), static_cast<const char*>(data) + size);
    const int64 room = size - static_cast<int64>(kHeadSize);
    const int64 componentSize = readLittleEndian(bytes.data());
    const int64 controllerSize = readLittleEndian(bytes.data() + 8);
    if (componentSize < 0 || componentSize > room || controllerSize < 0
        || controllerSize > room - componentSize)
        return 0;

    // Values set before must not be applied to the new state.
    updateController();

    {
        const HeldEditors held(editorUpdates);
        const std::lock_guard<std::mutex> lock(stateMutex);
        restoreState(bytes.data() + kHeadSize, componentSize, controllerSize);
        if (controller)
            readValuesFromController();
    }
    askHost(audioMasterUpdateDisplay);
    return 0;
}

}  // namespace Vst
}  // namespace Steinberg
