// What an audio file carries beside the audio that libsndfile does not read, named for a note to
// the user.
#pragma once

#include "tools/audio/FileMetadata.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tool {

// Names what is in a chunk of a WAV or AIFF file, of this ID and content, but not in `read`.
std::vector<std::string> unreadInChunk(const std::string& id, const std::string& content,
                                       const FileMetadata& read);

// Up to `size` bytes of a file from `offset` on; fewer at its end.
using ReadBytes = std::function<std::string(std::int64_t offset, std::size_t size)>;

// Names what is in the metadata blocks of a FLAC file, but not in `read`. Empty for other files.
std::vector<std::string> unreadInFlac(const ReadBytes& file, const FileMetadata& read);

}  // namespace tool
