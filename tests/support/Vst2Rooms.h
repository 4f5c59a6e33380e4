// The buffer size of each VST 2 operation.
#pragma once

#include "sdk/vst2/vst2interface.h"

#include <cstddef>

// Bytes that an operation may write, terminators included; 0 if it writes nothing.
inline std::size_t roomOf(VstInt32 opcode)
{
    constexpr struct {
        VstInt32 opcode;
        std::size_t room;
    } kRooms[] = {
        {effGetParamLabel, 9},
        {effGetParamDisplay, 9},
        {effGetProgramName, 24},
        {effGetProgramNameIndexed, 24},
        {effGetParamName, 32},
        {effGetEffectName, 32},
        {effGetVendorString, 64},
        {effGetProductString, 64},
        // Some hosts leave no room for reserved bytes.
        {effGetInputProperties, offsetof(VstPinProperties, future)},
        {effGetOutputProperties, offsetof(VstPinProperties, future)},
        {effGetParameterProperties, offsetof(VstParameterProperties, future)},
        {effGetChunk, sizeof(void*)},
        {effEditGetRect, sizeof(void*)},
        {effVendorSpecific, 16},
    };
    for (const auto& row : kRooms)
        if (row.opcode == opcode)
            return row.room;
    return 0;
}
