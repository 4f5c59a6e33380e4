#include "tools/audio/AudioFile.h"

#include "tools/common/ToolError.h"

#include <cmath>
#include <filesystem>
#include <system_error>

#include <strings.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

// A rate outside these limits is taken for a damaged header.
constexpr int kMinRate = 1000;    // Hz
constexpr int kMaxRate = 768000;  // Hz

// The 32-bit sizes of WAV and AIFF, less room for the headers.
constexpr std::int64_t kMaxBytes = (std::int64_t{1} << 32) - 65536;

constexpr int kMaxFlacRate = 655350;  // Hz

struct FileType {
    const char* ending;
    const char* name;
    int format;
};

constexpr FileType kFileTypes[]{
    {".wav", "WAV", SF_FORMAT_WAV},
    {".aif", "AIFF", SF_FORMAT_AIFF},
    {".aiff", "AIFF", SF_FORMAT_AIFF},
    {".flac", "FLAC", SF_FORMAT_FLAC},
};

const FileType& fileTypeOf(const std::string& path)
{
    const std::string ending = fs::path(path).extension().string();
    for (const FileType& type : kFileTypes)
        if (strcasecmp(ending.c_str(), type.ending) == 0)
            return type;
    throw ToolError("cannot tell what to write to '" + path
                    + "': its name must end in .wav, .aif, .aiff or .flac");
}

int bytesPerSample(SampleFormat format)
{
    switch (format) {
    case SampleFormat::Int16:
        return 2;
    case SampleFormat::Int24:
        return 3;
    case SampleFormat::Float32:
        return 4;
    }
    return 4;
}

int subformat(SampleFormat format)
{
    switch (format) {
    case SampleFormat::Int16:
        return SF_FORMAT_PCM_16;
    case SampleFormat::Int24:
        return SF_FORMAT_PCM_24;
    case SampleFormat::Float32:
        return SF_FORMAT_FLOAT;
    }
    return SF_FORMAT_FLOAT;
}

OutputFile& outputFile(void* user)
{
    return *static_cast<OutputFile*>(user);
}

// libsndfile's calls for writing to an OutputFile.
SF_VIRTUAL_IO outputFileCalls()
{
    SF_VIRTUAL_IO calls;
    calls.get_filelen = [](void* user) -> sf_count_t { return outputFile(user).size(); };
    calls.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
        return outputFile(user).seek(offset, whence);
    };
    calls.read = [](void* data, sf_count_t size, void* user) -> sf_count_t {
        return outputFile(user).read(data, size);
    };
    calls.write = [](const void* data, sf_count_t size, void* user) -> sf_count_t {
        return outputFile(user).write(data, size);
    };
    calls.tell = [](void* user) -> sf_count_t { return outputFile(user).seek(0, SEEK_CUR); };
    return calls;
}

// Returns the path; throws ToolError if its format cannot hold the audio.
const std::string& checkedPath(const std::string& path, int rate, int channels, SampleFormat format,
                               std::int64_t frames)
{
    const FileType& type = fileTypeOf(path);
    const bool flac = type.format == SF_FORMAT_FLAC;
    if (flac && format == SampleFormat::Float32)
        throw ToolError("a FLAC file cannot hold 32-bit floats: choose --bits 16 or 24");
    if (flac && rate > kMaxFlacRate)
        throw ToolError("a FLAC file cannot have a rate of " + std::to_string(rate) + " Hz");
    if (!flac && frames > kMaxBytes / (channels * bytesPerSample(format)))
        throw ToolError("the result is too long for a " + std::string(type.name)
                        + " file: write FLAC instead");
    return path;
}

std::string withoutLastDot(std::string text)
{
    while (!text.empty() && (text.back() == '.' || text.back() == '\n'))
        text.pop_back();
    return text;
}

}  // namespace

SampleFormat parseSampleFormat(const std::string& text)
{
    if (text == "16")
        return SampleFormat::Int16;
    if (text == "24")
        return SampleFormat::Int24;
    if (text == "32f")
        return SampleFormat::Float32;
    throw ToolError("--bits is 16, 24 or 32f, not '" + text + "'");
}

AudioReader::AudioReader(const std::string& path) : path(path), info{}
{
    // Opening a pipe or a device could wait for ever.
    std::error_code error;
    if (!fs::exists(path, error))
        throw ToolError("no such file: '" + path + "'");
    if (!fs::is_regular_file(path, error))
        throw ToolError("'" + path + "' is not an ordinary file");
    file.reset(sf_open(path.c_str(), SFM_READ, &info));
    if (!file)
        throw ToolError("cannot read '" + path
                        + "' as audio: " + withoutLastDot(sf_strerror(nullptr)));
    if (info.channels < 1 || info.channels > 2)
        throw ToolError("'" + path + "' has " + std::to_string(info.channels)
                        + " channels; only mono and stereo can be processed");
    if (info.samplerate < kMinRate || info.samplerate > kMaxRate)
        throw ToolError("'" + path + "' has a rate of " + std::to_string(info.samplerate) + " Hz; "
                        + std::to_string(kMinRate) + " to " + std::to_string(kMaxRate)
                        + " Hz can be processed");
    if (info.frames < 0 || info.frames == SF_COUNT_MAX)
        throw ToolError("'" + path + "' does not say how long it is");
}

bool AudioReader::holdsFloats() const
{
    const int kind = info.format & SF_FORMAT_SUBMASK;
    return kind == SF_FORMAT_FLOAT || kind == SF_FORMAT_DOUBLE;
}

void AudioReader::read(float* interleaved, std::int64_t frames)
{
    if (sf_readf_float(file.get(), interleaved, frames) != frames)
        throw ToolError("'" + path + "' is damaged: it ends before the length it states");
}

AudioWriter::AudioWriter(const std::string& path, int rate, int channels, SampleFormat format,
                         std::int64_t frames)
    : path(path), channels(channels), format(format), clippedCount(0),
      output(checkedPath(path, rate, channels, format, frames))
{
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = fileTypeOf(path).format | subformat(format);
    SF_VIRTUAL_IO calls = outputFileCalls();
    file.reset(sf_open_virtual(&calls, SFM_WRITE, &info, &output));
    if (!file)
        refuse(sf_strerror(nullptr));
    // The peak chunk contains a time stamp, by which equal renders would differ.
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
}

void AudioWriter::write(const float* interleaved, std::int64_t frames)
{
    const std::int64_t count = frames * channels;
    if (format != SampleFormat::Float32)
        writeIntegers(interleaved, count);
    else if (sf_write_float(file.get(), interleaved, count) != count)
        refuse(sf_strerror(file.get()));
}

void AudioWriter::writeIntegers(const float* samples, std::int64_t count)
{
    const int bits = 8 * bytesPerSample(format);
    const double fullScale = std::ldexp(1.0, bits - 1);
    const int unused = 32 - bits;  // libsndfile takes the upper bits of 32
    integers.resize(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < integers.size(); ++i) {
        const double value = std::isnan(samples[i]) ? 0.0 : static_cast<double>(samples[i]);
        double level = std::nearbyint(value * fullScale);
        if (level > fullScale - 1.0 || level < -fullScale) {
            ++clippedCount;
            level = level > 0.0 ? fullScale - 1.0 : -fullScale;
        }
        integers[i] = static_cast<int>(level) * (1 << unused);
    }
    if (sf_write_int(file.get(), integers.data(), count) != count)
        refuse(sf_strerror(file.get()));
}

void AudioWriter::commit()
{
    file.reset();
    output.commit();
}

void AudioWriter::refuse(const std::string& reason)
{
    // If the output failed, commit throws with the system's reason.
    file.reset();
    if (output.failed())
        output.commit();
    throw ToolError("cannot write '" + path + "': " + withoutLastDot(reason));
}

SampleFormat defaultSampleFormat(const AudioReader& input, const std::string& path)
{
    const bool canHoldFloats = fileTypeOf(path).format != SF_FORMAT_FLAC;
    return input.holdsFloats() && canHoldFloats ? SampleFormat::Float32 : SampleFormat::Int24;
}

}  // namespace tool
