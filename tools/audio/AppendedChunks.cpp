#include "tools/audio/AppendedChunks.h"

#include <algorithm>
#include <string>

#include <unistd.h>

namespace tool {

namespace {

constexpr std::int64_t kChunkHead = 8;  // ID and size; the file's size does not count its own

// A number of `size` bytes.
std::string number(std::int64_t value, int size, bool bigEndian)
{
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i);
    if (bigEndian)
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

}  // namespace

std::vector<FileMetadata::Chunk> cueChunks(const std::vector<SF_CUE_POINT>& cues)
{
    const auto word = [](std::int64_t value) { return number(value, 4, false); };
    std::string points = word(static_cast<std::int64_t>(cues.size())), names = "adtl";
    for (const SF_CUE_POINT& cue : cues) {
        const std::string id = word(cue.indx), name = cue.name, place = word(cue.sample_offset);
        // Without a playlist, the position in it is that in the audio. Chunk and block start at 0.
        points += id + place + "data" + word(0) + word(0) + place;
        if (name.empty())
            continue;
        const std::string label = id + name + '\0';
        names += "labl" + word(static_cast<std::int64_t>(label.size())) + label
            + std::string(label.size() % 2, '\0');
    }
    std::vector<FileMetadata::Chunk> chunks;
    if (!cues.empty())
        chunks.push_back({"cue ", points});
    if (names.size() > 4)
        chunks.push_back({"LIST", names});
    return chunks;
}

std::int64_t sizeOf(const std::vector<FileMetadata::Chunk>& chunks)
{
    std::int64_t size = 0;
    for (const FileMetadata::Chunk& chunk : chunks)
        size += kChunkHead + static_cast<std::int64_t>(chunk.data.size() + chunk.data.size() % 2);
    return size;
}

void appendChunks(OutputFile& file, const std::vector<FileMetadata::Chunk>& chunks)
{
    const auto write = [&](const std::string& bytes) {
        file.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    };
    std::string type(4, '\0');
    file.seek(0, SEEK_SET);
    file.read(type.data(), 4);
    const bool bigEndian = type == "FORM", isRf64 = type == "RF64";
    if (chunks.empty() || (!bigEndian && !isRf64 && type != "RIFF"))
        return;
    file.seek(0, SEEK_END);  // an even place
    for (const FileMetadata::Chunk& chunk : chunks) {
        write(chunk.id + number(static_cast<std::int64_t>(chunk.data.size()), 4, bigEndian));
        write(chunk.data + std::string(chunk.data.size() % 2, '\0'));
    }
    // RF64 has the file's size in its first chunk.
    file.seek(isRf64 ? 20 : 4, SEEK_SET);
    write(number(file.size() - kChunkHead, isRf64 ? 8 : 4, bigEndian));
}

}  // namespace tool
