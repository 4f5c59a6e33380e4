#include "tools/host/Plugin.h"

#include <algorithm>
#include <cstring>

namespace host {

namespace {

// Bytes. Some plug-ins write more than the eight characters that the interface allows for a
// display.
constexpr std::size_t kTextBufferSize = 1024;

template <typename Properties>
bool readProperties(Plugin& plugin, VstInt32 opcode, VstInt32 index, Properties& properties)
{
    std::vector<std::uint8_t> bytes(sizeof(Properties), 0);
    const bool known = plugin.dispatch(opcode, index, 0, bytes) != 0;
    if (known)
        std::memcpy(&properties, bytes.data(), sizeof(Properties));
    else
        properties = Properties{};
    return known;
}

}  // namespace

std::string Plugin::text(VstInt32 opcode, VstInt32 index)
{
    std::vector<std::uint8_t> bytes(kTextBufferSize, 0);
    dispatch(opcode, index, 0, bytes);
    return std::string(bytes.begin(), std::find(bytes.begin(), bytes.end(), std::uint8_t{0}));
}

VstIntPtr Plugin::sendText(VstInt32 opcode, VstInt32 index, const std::string& value)
{
    std::vector<std::uint8_t> bytes(value.begin(), value.end());
    bytes.push_back(0);
    return dispatch(opcode, index, 0, bytes);
}

bool Plugin::stringToParameter(VstInt32 index, const std::string& value)
{
    return sendText(effString2Parameter, index, value) != 0;
}

int Plugin::paramSteps(VstInt32 index)
{
    VstParameterProperties properties;
    if (!parameterProperties(index, properties))
        return 0;
    if (properties.flags & kVstParameterIsSwitch)
        return 1;
    if (properties.flags & kVstParameterUsesIntegerMinMax)
        return std::max(0, properties.maxInteger - properties.minInteger);
    return 0;
}

bool Plugin::parameterProperties(VstInt32 index, VstParameterProperties& properties)
{
    return readProperties(*this, effGetParameterProperties, index, properties);
}

bool Plugin::pinProperties(bool output, VstInt32 pin, VstPinProperties& properties)
{
    return readProperties(*this, output ? effGetOutputProperties : effGetInputProperties, pin,
                          properties);
}

VstIntPtr Plugin::setBankChunk(std::vector<std::uint8_t> bytes)
{
    return dispatch(effSetChunk, 0, static_cast<VstIntPtr>(bytes.size()), bytes);
}

VstIntPtr Plugin::setProgramChunk(std::vector<std::uint8_t> bytes)
{
    return dispatch(effSetChunk, 1, static_cast<VstIntPtr>(bytes.size()), bytes);
}

}  // namespace host
