// Checks a preset file, a bank file, a host's preset file or a project's state as the plug-in would
// read it.
#pragma once

#include "presets/BankFormat.h"
#include "tools/banks/BankReport.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

// The parts of a file whose header could be read.
struct FileParts {
    FileKind kind;
    bool swap;
    FileHeader header;                  // in this machine's byte order
    std::size_t recordsAt;              // bytes from the start of the file
    std::size_t end;                    // of the file; a short state is padded with zeros after it
    std::vector<std::uint8_t> records;  // as far as the plug-in reads
};

// takeApart splits a file as the plug-in does; none if the plug-in would not read on. `titles` are
// the parameters' titles by id, for messages; without them parameters are named by number.
std::optional<FileParts> takeApart(ByteView file, BankReport& report);
BankReport checkBank(ByteView file, const std::vector<std::string>& titles = {});

}  // namespace tool
