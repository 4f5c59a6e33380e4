// Audio files as interleaved floats: AudioReader reads the formats that libsndfile knows,
// AudioWriter writes WAV, AIFF and FLAC.
#pragma once

#include "tools/common/OutputFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <sndfile.h>

namespace tool {

enum class SampleFormat { Int16, Int24, Float32 };

// "16", "24" or "32f"; anything else throws ToolError.
SampleFormat parseSampleFormat(const std::string& text);

struct CloseSoundFile {
    void operator()(SNDFILE* handle) const { sf_close(handle); }
};

class AudioReader {
public:
    // Throws ToolError unless the file is audio with one or two channels, a rate of 1 to 768 kHz
    // and a known length.
    explicit AudioReader(const std::string& path);

    int rate() const { return info.samplerate; }  // Hz
    int channels() const { return info.channels; }
    std::int64_t frames() const { return info.frames; }
    bool holdsFloats() const;

    // Reads `frames` frames. Throws ToolError if the file ends before the length it states.
    void read(float* interleaved, std::int64_t frames);

private:
    std::string path;
    SF_INFO info;
    std::unique_ptr<SNDFILE, CloseSoundFile> file;
};

class AudioWriter {
public:
    // The format follows the name's ending: .wav, .aif, .aiff or .flac. Throws ToolError for what
    // the format cannot hold: a rate, a length, floats in FLAC. The file appears at commit.
    AudioWriter(const std::string& path, int rate, int channels, SampleFormat format,
                std::int64_t frames);

    // In integer formats, samples beyond full scale are limited and counted in `clipped`, and NaN
    // becomes 0.
    void write(const float* interleaved, std::int64_t frames);
    void commit();
    std::int64_t clipped() const { return clippedCount; }

private:
    void writeIntegers(const float* samples, std::int64_t count);
    [[noreturn]] void refuse(const std::string& reason);

    std::string path;
    int channels;
    SampleFormat format;
    std::int64_t clippedCount;
    OutputFile output;
    std::vector<int> integers;
    std::unique_ptr<SNDFILE, CloseSoundFile> file;  // last: closing it still writes to `output`
};

// Floats for input that holds floats, if the format of `path` can hold them; else 24 bits.
SampleFormat defaultSampleFormat(const AudioReader& input, const std::string& path);

}  // namespace tool
