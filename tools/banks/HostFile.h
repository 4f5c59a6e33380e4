// The preset files of hosts: .fxp and .fxb of VST 2, .vstpreset of VST 3. They hold the state that
// the plug-in gives the host, a bank with or without some of its presets.
#pragma once

#include "presets/BankFormat.h"
#include "tools/banks/BankReport.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

struct HostFile {
    FileKind kind;                    // HostPreset or HostBank
    std::size_t stateAt;              // bytes from the start of the file
    std::vector<std::uint8_t> state;  // beginning with kStatePrefix
};

// By the first four bytes.
bool isHostFile(ByteView file);

// The state in a file. A .vstpreset without the controller's part gives a state of the values in
// the processor's part, without a name. None, and a fault in the report, if the file is damaged or
// for another plug-in.
std::optional<HostFile> readHostFile(ByteView file, BankReport& report);

// Files with a preset or bank image as the state. Of a preset, the plug-in puts it into preset 0 of
// its bank, selects it, and keeps the other presets. `selected` is the preset that will sound;
// `version` is the plug-in's, as in its VST 2 effect.
std::vector<std::uint8_t> fxpBytes(std::vector<std::uint8_t> presetImage,
                                   const PresetSlot& selected, std::int32_t version);
std::vector<std::uint8_t> fxbBytes(std::vector<std::uint8_t> bankImage, std::int32_t version);
std::vector<std::uint8_t> vstPresetBytes(std::vector<std::uint8_t> image,
                                         const PresetSlot& selected);

}  // namespace tool
