// Files and folders. Paths are UTF-8; relative ones start at the process's working directory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// '\\' on Windows, '/' elsewhere.
extern const char kPathSeparator;

// Empty if unknown.
std::string workingDirectory();
bool setWorkingDirectory(const std::string& path);

// The access that a file must permit.
enum class Access { Read, ReadAndWrite };

// The bytes of a file, at most the first `limit`; nothing if it cannot be opened with that access
// or is not a regular file.
std::optional<std::vector<std::uint8_t>> readFile(const std::string& path, std::size_t limit,
                                                  Access access = Access::Read);

// Whether a save is flushed to disk, so that it survives a loss of power.
enum class Sync { Wait, None };

// Writes a temporary file beside the old one and renames it over that, so that a crash or a full
// disk leaves the old one intact. Follows a symbolic link. Where the folder admits no new file, or
// the new one could not have the old one's owner and group, writes in place. False, and nothing
// changed, if that fails or the old file is not writable. On Windows, if another program has the old
// file open, retries for 0.2 s and then writes in place, if that program shares the file for
// writing.
bool replaceFile(const std::string& path, const std::vector<std::uint8_t>& bytes,
                 Sync sync = Sync::Wait);

}  // namespace platform
