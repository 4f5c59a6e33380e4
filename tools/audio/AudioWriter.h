// AudioWriter: writes interleaved floats as WAV, AIFF or FLAC.
#pragma once

#include "tools/audio/AudioReader.h"
#include "tools/audio/Quantizer.h"
#include "tools/common/OutputFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tool {

enum class SampleFormat { Int16, Int24, Float32 };
enum class FileFormat { Wav, Aiff, Flac };

// "16", "24" or "32f"; anything else throws ToolError.
SampleFormat parseSampleFormat(const std::string& text);
// "wav", "aiff" or "flac", and "none", "tpdf" or "shaped"; anything else throws ToolError.
FileFormat parseFileFormat(const std::string& text);
Dither parseDither(const std::string& text);
const char* nameOf(Dither dither);

// By the path's ending: .wav, .aif, .aiff or .flac; WAV for "-". None for another ending.
std::optional<FileFormat> fileFormatOf(const std::string& path);
// ".wav", ".aif" or ".flac".
const char* endingOf(FileFormat format);
// Throws ToolError if the path has none of these endings.
FileFormat checkedFileFormat(const std::string& path);

int bitsOf(SampleFormat format);

struct AudioFormat {
    FileFormat file;
    SampleFormat samples;
    int rate;  // Hz
    int channels;
    Dither dither = Dither::None;  // of integer samples
};

class AudioWriter {
public:
    // `frames` is the length expected. Throws ToolError for what the format cannot hold: a rate, a
    // length, floats in FLAC. A WAV file of more than 4 GB becomes RF64. The file appears at
    // commit.
    AudioWriter(const std::string& path, const AudioFormat& format, std::int64_t frames,
                const FileMetadata& metadata = {});

    // In integer formats, samples beyond full scale are limited and counted in `clipped`, and NaN
    // becomes 0.
    void write(const float* interleaved, std::int64_t frames);
    // Returns what of the metadata the file does not hold, in words. Throws ToolError if the file
    // could not be written as a whole.
    std::vector<std::string> commit();
    std::int64_t clipped() const { return quantizer.clipped(); }

private:
    [[noreturn]] void refuse(const std::string& reason);

    std::string path;
    AudioFormat format;
    FileMetadata metadata;
    OutputFile output;
    Quantizer quantizer;
    std::vector<int> integers;
    std::int64_t framesWritten = 0;
    bool isRf64;
    SoundFile file;  // last: closing it still writes to `output`
};

// Floats for input that holds floats, if the file format can hold them; else 24 bits.
SampleFormat defaultSampleFormat(const AudioReader& input, FileFormat format);

}  // namespace tool
