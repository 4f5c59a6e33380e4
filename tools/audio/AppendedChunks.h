// Chunks that a finished WAV, RF64 or AIFF file gets behind its audio. libsndfile would write them
// into its header, whose size it limits, and would round their sizes.
#pragma once

#include "tools/audio/FileMetadata.h"
#include "tools/common/OutputFile.h"

#include <cstdint>
#include <vector>

namespace tool {

// The cue points and their names as chunks of a WAV file, in which libsndfile writes no names.
std::vector<FileMetadata::Chunk> cueChunks(const std::vector<SF_CUE_POINT>& cues);

// Bytes that the chunks take in a file.
std::int64_t sizeOf(const std::vector<FileMetadata::Chunk>& chunks);

// Writes nothing to files of other formats.
void appendChunks(OutputFile& file, const std::vector<FileMetadata::Chunk>& chunks);

}  // namespace tool
