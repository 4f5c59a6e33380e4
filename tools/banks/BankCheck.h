// Checks the bytes of a preset, a bank or a project's state as the plug-in would read them.
#pragma once

#include "presets/BankFormat.h"
#include "tools/banks/BankReport.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

// The parts of a file whose start could be read.
struct FileParts {
    FileKind kind;
    bool swap;
    FileHeader header;                  // in this machine's order
    std::size_t recordsAt;              // bytes from the start of the file
    std::size_t end;                    // of the file; a short state is filled up behind it
    std::vector<std::uint8_t> records;  // as far as the plug-in looks
};

// Takes a file's bytes apart as the plug-in does; nothing where it would go no further. `titles`,
// by id, make the messages readable; without them parameters go by their number.
std::optional<FileParts> takeApart(ByteView file, BankReport& report);
BankReport checkBank(ByteView file, const std::vector<std::string>& titles = {});

}  // namespace tool
