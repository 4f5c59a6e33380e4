// Audio files as interleaved floats: reading any format libsndfile knows, writing WAV, AIFF and
// FLAC.
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
    // Throws ToolError unless the file is audio with one or two channels at a rate that makes
    // sense.
    explicit AudioReader(const std::string& path);

    int rate() const { return info.samplerate; }  // Hz
    int channels() const { return info.channels; }
    std::int64_t frames() const { return info.frames; }
    bool holdsFloats() const;

    // Fills `frames` frames. Throws ToolError where the file ends before its header says.
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

    // Integer formats limit to full scale; `clipped` counts the samples that needed it. NaN becomes
    // 0.
    void write(const float* interleaved, std::int64_t frames);
    void commit();
    std::int64_t clipped() const { return clippedCount; }

private:
    void writeIntegers(const float* samples, std::int64_t count);
    [[noreturn]] void refuse(const std::string& reason);

    std::string path;
    int channelCount;
    SampleFormat format;
    std::int64_t clippedCount;
    OutputFile output;
    std::vector<int> integers;
    std::unique_ptr<SNDFILE, CloseSoundFile> file;  // last: closing it still writes to `output`
};

// The writer's default: floats stay floats where the format of `path` holds them, else 24 bits.
SampleFormat defaultSampleFormat(const AudioReader& input, const std::string& path);

}  // namespace tool
