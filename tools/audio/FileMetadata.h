// FileMetadata: what an audio file carries beside the audio, as far as libsndfile reads it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sndfile.h>

namespace tool {

struct FileMetadata {
    // A whole chunk of a WAV or AIFF file, such as iXML.
    struct Chunk {
        std::string id;
        std::string data;
    };

    std::map<int, std::string> tags;  // by SF_STR_TITLE and so on
    std::string broadcast;            // the bytes of SF_BROADCAST_INFO with its whole history
    std::string cart;                 // the bytes of SF_CART_INFO with its whole tag text
    std::vector<SF_CUE_POINT> cues;   // cue points and markers
    std::optional<SF_INSTRUMENT> instrument;  // key, velocity and loop points
    std::vector<Chunk> chunks;                // those that are copied as they are
    std::vector<std::string> unread;          // what else the file holds, in words

    // Moves cues and loops to audio that starts `frames` later.
    void delay(std::int64_t frames);
    // Takes out the loudness that a broadcast chunk states, since processing changes it.
    void forgetLoudness();
    // What `written` lacks of this, in words: "the tag ALBUM", "3 cue points".
    std::vector<std::string> missingFrom(const FileMetadata& written) const;
};

// A tag's name in a FLAC file, such as "TITLE" for SF_STR_TITLE.
const char* tagName(int tag);
// "1 cue point", "2 cue points".
std::string counted(std::size_t count, const char* one);
std::size_t namedCues(const FileMetadata& metadata);
constexpr const char* kBroadcastWords = "the broadcast information (bext)";
constexpr const char* kCartWords = "the radio traffic data (cart)";

// `format` is the file's SF_INFO::format.
FileMetadata readMetadata(SNDFILE* file, int format);
// Before the first sample is written, and without the chunks. What the format cannot hold is left
// out.
void writeMetadata(SNDFILE* file, int format, const FileMetadata& metadata);

}  // namespace tool
