// Reads all samples of audio files.
#pragma once

#include "tools/audio/AudioFile.h"

#include <cstdint>
#include <string>
#include <vector>

inline void writeAudio(const std::string& path, const std::vector<float>& samples,
                       tool::SampleFormat format, int rate = 44100, int channels = 1)
{
    const auto frames = static_cast<std::int64_t>(samples.size()) / channels;
    tool::AudioWriter writer(path, rate, channels, format, frames);
    writer.write(samples.data(), frames);
    writer.commit();
}

inline std::vector<float> readAudio(const std::string& path)
{
    tool::AudioReader reader(path);
    std::vector<float> samples(static_cast<std::size_t>(reader.frames() * reader.channels()));
    reader.read(samples.data(), reader.frames());
    return samples;
}
