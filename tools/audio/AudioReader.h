// AudioReader: audio files of the formats that libsndfile knows, as interleaved floats.
#pragma once

#include "tools/audio/FileMetadata.h"

#include <cstdint>
#include <memory>
#include <string>

#include <sndfile.h>

namespace tool {

struct CloseSoundFile {
    void operator()(SNDFILE* handle) const { sf_close(handle); }
};
using SoundFile = std::unique_ptr<SNDFILE, CloseSoundFile>;

// libsndfile's message, of the last failure to open a file if `file` is null.
std::string soundFileError(SNDFILE* file);

class AudioReader {
public:
    // "-" is the standard input, which is read to its end first. Throws ToolError unless the file
    // is audio with one or two channels and a rate of 5 to 400 kHz.
    explicit AudioReader(const std::string& path);
    ~AudioReader();
    AudioReader(const AudioReader&) = delete;
    AudioReader& operator=(const AudioReader&) = delete;

    int rate() const { return info.samplerate; }  // Hz
    int channels() const { return info.channels; }
    // The file's length; an estimate in formats that don't state it, such as MP3.
    std::int64_t frames() const { return info.frames; }
    bool holdsFloats() const;
    FileMetadata metadata() const;
    // Of a file that is shorter than its header states: what is wrong, in words. Else empty.
    const std::string& truncation() const { return truncated; }

    // Reads up to `frames` frames, fewer only at the file's end. Throws ToolError if compressed
    // audio ends before the length it states.
    std::int64_t read(float* interleaved, std::int64_t frames);

private:
    struct Bytes;
    void open();
    void countFrames();

    std::string name;  // for messages
    std::unique_ptr<Bytes> bytes;
    SF_INFO info;
    std::int64_t position;
    std::string truncated;
    SoundFile file;  // closed before `bytes`
};

}  // namespace tool
