// Writes and reads all samples of audio files.
#pragma once

#include "tools/audio/AudioWriter.h"

#include <cstdint>
#include <string>
#include <vector>

inline void writeAudio(const std::string& path, const std::vector<float>& samples,
                       tool::SampleFormat format, int rate = 44100, int channels = 1,
                       const tool::FileMetadata& metadata = {},
                       tool::Dither dither = tool::Dither::None)
{
    const auto frames = static_cast<std::int64_t>(samples.size()) / channels;
    tool::AudioWriter writer(path, {tool::checkedFileFormat(path), format, rate, channels, dither},
                             frames, metadata);
    writer.write(samples.data(), frames);
    writer.commit();
}

inline std::vector<float> readAudio(const std::string& path)
{
    tool::AudioReader reader(path);
    std::vector<float> samples(static_cast<std::size_t>(reader.frames() * reader.channels()));
    samples.resize(
        static_cast<std::size_t>(reader.read(samples.data(), reader.frames()) * reader.channels()));
    return samples;
}
