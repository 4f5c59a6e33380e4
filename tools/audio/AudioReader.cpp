#include "tools/audio/AudioReader.h"

#include "tools/audio/UnreadMetadata.h"
#include "tools/common/ScratchFile.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

// The plug-in's filters are designed for these rates: below 88.2 kHz it processes at four times the
// file's, and from 20 to 400 kHz its filters know the rate.
constexpr int kMinRate = 5000;    // Hz
constexpr int kMaxRate = 400000;  // Hz

// Programs that write into a pipe cannot go back to put the length into the header, and leave one
// of these there.
bool standsForUnknownLength(unsigned long long size)
{
    return size == 0 || (size >= 0x7FFFF000 && size <= 0x7FFFFFFF)
        || (size >= 0xFFFFF000 && size <= 0xFFFFFFFF);
}

// The header's length against the file's, as libsndfile notes it in its log:
// "data : 120000 (should be 50000)". An odd chunk may lack its last byte.
std::string truncationIn(const std::string& log)
{
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(':');
        const std::size_t mark = line.find("(should be ");
        if (colon == std::string::npos || mark == std::string::npos || mark < colon)
            continue;
        const std::size_t first = line.find_first_not_of(' ');
        const std::string label =
            line.substr(first, line.find_last_not_of(' ', colon - 1) + 1 - first);
        const char* lengths[]{"RIFF", "Riff size", "riff", "FORM", "data", "SSND", "Data Size"};
        if (std::find(std::begin(lengths), std::end(lengths), label) == std::end(lengths))
            continue;
        const auto stated = std::strtoull(line.c_str() + colon + 1, nullptr, 10);
        const auto found = std::strtoull(line.c_str() + mark + 11, nullptr, 10);
        if (stated > found + 1 && !standsForUnknownLength(stated))
            return "its header states " + std::to_string(stated) + " bytes, and "
                + std::to_string(found) + " are there";
    }
    return "";
}

}  // namespace

std::string soundFileError(SNDFILE* file)
{
    std::string text = sf_strerror(file);
    while (!text.empty() && (text.back() == '.' || text.back() == '\n'))
        text.pop_back();
    return text;
}

// The file's bytes for libsndfile, with four of them replaced where the header needs it.
struct AudioReader::Bytes {
    int file;
    sf_count_t position = 0;
    sf_count_t patchAt = -1;  // none
    const char* patch = "";   // four bytes

    explicit Bytes(int file) : file(file) { }
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;
    ~Bytes() { close(file); }
    sf_count_t length() const
    {
        struct stat status;
        return fstat(file, &status) == 0 ? status.st_size : 0;
    }
    sf_count_t readAt(sf_count_t offset, void* data, sf_count_t size) const
    {
        sf_count_t done = 0;
        while (done < size) {
            const ssize_t count = pread(file, static_cast<char*>(data) + done,
                                        static_cast<std::size_t>(size - done), offset + done);
            if (count <= 0)
                break;
            done += count;
        }
        for (sf_count_t at = patchAt; patchAt >= 0 && at < patchAt + 4; ++at)
            if (at >= offset && at < offset + done)
                static_cast<char*>(data)[at - offset] = patch[at - patchAt];
        return done;
    }
    // libsndfile does not know BW64 (ITU-R BS.2088), which is RF64 with further chunks.
    void patchType()
    {
        char id[4];
        if (readAt(0, id, 4) != 4 || std::memcmp(id, "BW64", 4) != 0)
            return;
        patchAt = 0;
        patch = "RF64";
    }
    // A WAV file from a pipe may state 0 for the length of its last chunk, the audio. Gives it the
    // length that libsndfile takes for unknown.
    bool patchUnknownLength()
    {
        const auto number = [this](sf_count_t at) {
            unsigned char b[4]{};
            readAt(at, b, 4);
            return b[0] | b[1] << 8 | b[2] << 16 | static_cast<std::uint32_t>(b[3]) << 24;
        };
        char id[4];
        if (readAt(0, id, 4) != 4 || std::memcmp(id, "RIFF", 4) != 0)
            return false;
        const sf_count_t riffEnd =
            standsForUnknownLength(number(4)) ? 0 : sf_count_t{number(4)} + 8;
        for (sf_count_t at = 12; readAt(at, id, 4) == 4;) {
            const sf_count_t size = number(at + 4);
            if (std::memcmp(id, "data", 4) == 0) {
                if (size != 0 || riffEnd > at + 8 || length() <= at + 8)
                    return false;
                patchAt = at + 4;
                patch = "\xFF\xFF\xFF\xFF";
                return true;
            }
            at += 8 + size + size % 2;
        }
        return false;
    }

    static SF_VIRTUAL_IO calls()
    {
        static constexpr auto bytes = [](void* user) -> Bytes& {
            return *static_cast<Bytes*>(user);
        };
        SF_VIRTUAL_IO calls{};
        calls.get_filelen = [](void* user) -> sf_count_t { return bytes(user).length(); };
        calls.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
            Bytes& b = bytes(user);
            const sf_count_t from = whence == SEEK_SET ? 0
                : whence == SEEK_CUR                   ? b.position
                                                       : b.length();
            return b.position = std::max<sf_count_t>(from + offset, 0);
        };
        calls.read = [](void* data, sf_count_t size, void* user) -> sf_count_t {
            Bytes& b = bytes(user);
            const sf_count_t count = b.readAt(b.position, data, size);
            b.position += count;
            return count;
        };
        calls.tell = [](void* user) -> sf_count_t { return bytes(user).position; };
        return calls;
    }
};

AudioReader::AudioReader(const std::string& path)
    : name(path == "-" ? "the standard input" : "'" + path + "'"), info{}, position(0)
{
    // Opening a pipe or a device could wait for ever.
    std::error_code error;
    if (path != "-" && !fs::exists(path, error))
        throw ToolError("no such file: '" + path + "'");
    if (path != "-" && !fs::is_regular_file(path, error))
        throw ToolError("'" + path + "' is not an ordinary file");
    const int descriptor =
        path == "-" ? copyOfStandardInput() : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        throw ToolError("cannot read " + name + ": " + std::strerror(errno));
    bytes = std::make_unique<Bytes>(descriptor);
    bytes->patchType();
    open();
    if (info.frames == 0 && bytes->patchUnknownLength())
        open();
    if (info.channels < 1 || info.channels > 2)
        throw ToolError(name + " has " + std::to_string(info.channels)
                        + " channels; only mono and stereo can be processed");
    if (info.samplerate < kMinRate || info.samplerate > kMaxRate)
        throw ToolError(name + " has a rate of " + std::to_string(info.samplerate) + " Hz; "
                        + std::to_string(kMinRate) + " to " + std::to_string(kMaxRate)
                        + " Hz can be processed");
    if (info.frames <= 0 || info.frames == SF_COUNT_MAX)
        countFrames();
    std::vector<char> log(1 << 14);
    sf_command(file.get(), SFC_GET_LOG_INFO, log.data(), static_cast<int>(log.size()));
    truncated = truncationIn(log.data());
}

AudioReader::~AudioReader() = default;

void AudioReader::open()
{
    bytes->position = 0;
    info = {};
    SF_VIRTUAL_IO calls = Bytes::calls();
    file.reset(sf_open_virtual(&calls, SFM_READ, &info, bytes.get()));
    if (!file)
        throw ToolError("cannot read " + name + " as audio: " + soundFileError(nullptr));
}

// Of a file that does not say how long it is, such as FLAC from a pipe.
void AudioReader::countFrames()
{
    std::vector<float> audio(static_cast<std::size_t>(info.channels) << 16);
    sf_count_t frames = 0;
    while (const sf_count_t count = sf_readf_float(file.get(), audio.data(), 1 << 16))
        frames += count;
    open();
    info.frames = frames;
}

bool AudioReader::holdsFloats() const
{
    const int kind = info.format & SF_FORMAT_SUBMASK;
    return kind == SF_FORMAT_FLOAT || kind == SF_FORMAT_DOUBLE;
}

FileMetadata AudioReader::metadata() const
{
    FileMetadata metadata = readMetadata(file.get(), info.format);
    const auto read = [this](std::int64_t offset, std::size_t size) {
        std::string content(size, '\0');
        const sf_count_t count =
            bytes->readAt(offset, content.data(), static_cast<sf_count_t>(size));
        content.resize(static_cast<std::size_t>(count));
        return content;
    };
    const std::vector<std::string> unread = unreadInFlac(read, metadata);
    metadata.unread.insert(metadata.unread.end(), unread.begin(), unread.end());
    return metadata;
}

std::int64_t AudioReader::read(float* interleaved, std::int64_t frames)
{
    const std::int64_t count = sf_readf_float(file.get(), interleaved, frames);
    position += count;
    const bool lengthIsExact = (info.format & SF_FORMAT_TYPEMASK) != SF_FORMAT_MPEG;
    if (count < frames && position < info.frames && lengthIsExact)
        throw ToolError(name + " is damaged: it ends before the length it states");
    return count;
}

}  // namespace tool
