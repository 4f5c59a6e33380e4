#include "tools/audio/AudioWriter.h"

#include "tools/audio/AppendedChunks.h"
#include "tools/common/ToolError.h"

#include <filesystem>
#include <utility>

#include <strings.h>

namespace tool {

namespace {

// The 32-bit sizes of WAV and AIFF, less room for the headers and what the file carries beside the
// audio.
constexpr std::int64_t kMaxBytes = (std::int64_t{1} << 32) - (1 << 20);

// A FLAC file states its rate in Hz, or above this one in steps of 10 Hz.
constexpr int kMaxFineFlacRate = 65535;

struct FileEnding {
    const char* ending;
    FileFormat format;
};

constexpr FileEnding kEndings[]{
    {".wav", FileFormat::Wav},
    {".aif", FileFormat::Aiff},
    {".aiff", FileFormat::Aiff},
    {".flac", FileFormat::Flac},
};

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

std::int64_t sizeOf(const AudioFormat& format, std::int64_t frames, const FileMetadata& metadata)
{
    return frames * format.channels * bitsOf(format.samples) / 8 + sizeOf(metadata.chunks);
}

// Returns the path; throws ToolError if its format cannot hold the audio.
const std::string& checkedPath(const std::string& path, const AudioFormat& format,
                               std::int64_t frames, const FileMetadata& metadata)
{
    const bool flac = format.file == FileFormat::Flac;
    if (flac && format.samples == SampleFormat::Float32)
        throw ToolError("a FLAC file cannot hold 32-bit floats: choose --bits 16 or 24");
    if (flac && format.rate > kMaxFineFlacRate
        && (format.rate % 10 != 0 || format.rate > 10 * kMaxFineFlacRate))
        throw ToolError("a FLAC file cannot have a rate of " + std::to_string(format.rate) + " Hz");
    if (format.file == FileFormat::Aiff && sizeOf(format, frames, metadata) > kMaxBytes)
        throw ToolError("the result is too long for an AIFF file: write WAV or FLAC instead");
    return path;
}

int soundFileFormat(const AudioFormat& format, std::int64_t frames, const FileMetadata& metadata)
{
    const int samples = subformat(format.samples);
    switch (format.file) {
    case FileFormat::Wav:
        return samples
            | (sizeOf(format, frames, metadata) > kMaxBytes ? SF_FORMAT_RF64 : SF_FORMAT_WAV);
    case FileFormat::Aiff:
        return samples | SF_FORMAT_AIFF;
    case FileFormat::Flac:
        return samples | SF_FORMAT_FLAC;
    }
    return samples | SF_FORMAT_WAV;
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

FileFormat parseFileFormat(const std::string& text)
{
    if (text == "wav")
        return FileFormat::Wav;
    if (text == "aiff")
        return FileFormat::Aiff;
    if (text == "flac")
        return FileFormat::Flac;
    throw ToolError("--format is wav, aiff or flac, not '" + text + "'");
}

Dither parseDither(const std::string& text)
{
    if (text == "none")
        return Dither::None;
    if (text == "tpdf")
        return Dither::Triangular;
    if (text == "shaped")
        return Dither::Shaped;
    throw ToolError("--dither is none, tpdf or shaped, not '" + text + "'");
}

const char* nameOf(Dither dither)
{
    switch (dither) {
    case Dither::None:
        return "none";
    case Dither::Triangular:
        return "tpdf";
    case Dither::Shaped:
        return "shaped";
    }
    return "";
}

std::optional<FileFormat> fileFormatOf(const std::string& path)
{
    if (path == "-")
        return FileFormat::Wav;
    const std::string ending = std::filesystem::path(path).extension().string();
    for (const FileEnding& known : kEndings)
        if (strcasecmp(ending.c_str(), known.ending) == 0)
            return known.format;
    return std::nullopt;
}

const char* endingOf(FileFormat format)
{
    for (const FileEnding& known : kEndings)
        if (known.format == format)
            return known.ending;
    return "";
}

FileFormat checkedFileFormat(const std::string& path)
{
    if (const auto format = fileFormatOf(path))
        return *format;
    throw ToolError("cannot tell what to write to '" + path
                    + "': its name must end in .wav, .aif, .aiff or .flac");
}

int bitsOf(SampleFormat format)
{
    switch (format) {
    case SampleFormat::Int16:
        return 16;
    case SampleFormat::Int24:
        return 24;
    case SampleFormat::Float32:
        return 32;
    }
    return 32;
}

AudioWriter::AudioWriter(const std::string& path, const AudioFormat& format, std::int64_t frames,
                         const FileMetadata& metadata)
    : path(path), format(format), metadata(metadata),
      output(checkedPath(path, format, frames, metadata)),
      quantizer(bitsOf(format.samples), format.dither, format.channels, format.rate)
{
    SF_INFO info{};
    info.samplerate = format.rate;
    info.channels = format.channels;
    info.format = soundFileFormat(format, frames, metadata);
    isRf64 = (info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_RF64;
    SF_VIRTUAL_IO calls = outputFileCalls();
    file.reset(sf_open_virtual(&calls, SFM_WRITE, &info, &output));
    if (!file)
        refuse(soundFileError(nullptr));
    // The peak chunk contains a time stamp, by which equal renders would differ.
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    writeMetadata(file.get(), info.format, metadata);
}

void AudioWriter::write(const float* interleaved, std::int64_t frames)
{
    const std::int64_t count = frames * format.channels;
    std::int64_t written = 0;
    if (format.samples == SampleFormat::Float32) {
        written = sf_write_float(file.get(), interleaved, count);
    } else {
        integers.resize(static_cast<std::size_t>(count));
        quantizer.quantize(interleaved, count, integers.data());
        written = sf_write_int(file.get(), integers.data(), count);
    }
    if (written != count)
        refuse(soundFileError(file.get()));
    framesWritten += frames;
}

std::vector<std::string> AudioWriter::commit()
{
    file.reset();
    std::vector<std::string> missing;
    std::vector<FileMetadata::Chunk> chunks = metadata.chunks;
    if (format.file == FileFormat::Wav && !isRf64)
        for (FileMetadata::Chunk& chunk : cueChunks(metadata.cues))
            chunks.push_back(std::move(chunk));
    appendChunks(output, chunks);
    if (!output.failed()) {
        output.seek(0, SEEK_SET);
        SF_INFO info{};
        SF_VIRTUAL_IO calls = outputFileCalls();
        const SoundFile written(sf_open_virtual(&calls, SFM_READ, &info, &output));
        // libsndfile does not read empty FLAC files.
        if (framesWritten > 0 && (!written || info.frames != framesWritten))
            refuse("it could not be read again");
        if (written)
            missing = metadata.missingFrom(readMetadata(written.get(), info.format));
    }
    output.commit();
    return missing;
}

void AudioWriter::refuse(const std::string& reason)
{
    // If the output failed, commit throws with the system's reason.
    file.reset();
    if (output.failed())
        output.commit();
    throw ToolError("cannot write '" + path + "': " + reason);
}

SampleFormat defaultSampleFormat(const AudioReader& input, FileFormat format)
{
    const bool canHoldFloats = format != FileFormat::Flac;
    return input.holdsFloats() && canHoldFloats ? SampleFormat::Float32 : SampleFormat::Int24;
}

}  // namespace tool
