// Files and folders. Paths are UTF-8 and, where they are not absolute, start at the working
// directory of the process.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// '\\' on Windows, '/' elsewhere.
extern const char kPathSeparator;

// Empty when it cannot be told.
std::string workingDirectory();
bool setWorkingDirectory(const std::string& path);

// What a file has to permit to be opened.
enum class Access { Read, ReadAndWrite };

// The bytes of a file, of a large one the first `limit`; nothing if it cannot be opened with that
// access or is not an ordinary file.
std::optional<std::vector<std::uint8_t>> readFile(const std::string& path, std::size_t limit,
                                                  Access access = Access::Read);

// Whether a save waits until the disk has it, so that it outlives a loss of power.
enum class Sync { Wait, None };

// Writes a new file beside the old one and renames it over that, so that a crash or a full disk
// leaves the old one whole. A link is followed. False, and nothing changed, if that fails or the
// old file may not be written. On Windows, an old file that another program has open is given 0.2
// seconds and then written in place, if that program lets others write.
bool replaceFile(const std::string& path, const std::vector<std::uint8_t>& bytes,
                 Sync sync = Sync::Wait);

}  // namespace platform
