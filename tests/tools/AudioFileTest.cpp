// Files are written completely or not at all, and samples are read back unchanged.
#include "tests/support/Noise.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/AudioContent.h"
#include "tests/tools/Complaint.h"
#include "tools/common/OutputFile.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace tool;

// Simulates a full disk: writes beyond the limit fail.
std::string complaintWithin(rlim_t bytes, const std::function<void()>& action)
{
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string said = complaintOf(action);
    setrlimit(RLIMIT_FSIZE, &before);
    return said;
}

TEST(OutputFile, ReplacesAFileCompletelyOrNotAtAll)
{
    TemporaryFolder folder;
    const std::string path = folder / "real.csv";
    writeContent(path, "old and longer than the new");
    chmod(path.c_str(), 0640);
    ASSERT_EQ(symlink("real.csv", (folder / "link.csv").c_str()), 0);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    {
        OutputFile abandoned(path);
        abandoned.write("half", 4);
    }
    const std::pair<const char*, const char*> refusals[]{
        {"pipe", "not an ordinary file"},
        {"missing/x.csv", "No such file or directory"},
        {"real.csv", "File too large"},
    };
    for (const auto& [name, words] : refusals) {
        const std::string said = complaintWithin(
            1000, [&, to = folder / name] { writeFile(to, std::string(5000, 'x')); });
        EXPECT_NE(said.find(words), std::string::npos) << name << ": " << said;
    }
    EXPECT_EQ(contentOf(path), "old and longer than the new");

    writeFile(folder / "link.csv", "new");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.csv"));
    struct stat status;
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777u, 0640u) << "the permissions changed";
    EXPECT_EQ(folder.count(), 3) << "a temporary file is left";
}

TEST(AudioFile, AFullDiskAtAnyPointLeavesNoFile)
{
    const std::vector<float> sound = noise(20000, 1);
    // About 40000 bytes in each: the largest limits take effect only when the file is closed.
    for (const char* name : {"a.wav", "a.aif", "a.flac"}) {
        TemporaryFolder folder;
        writeAudio(folder / name, sound, SampleFormat::Int16);
        const auto size = static_cast<rlim_t>(std::filesystem::file_size(folder / name));
        std::filesystem::remove(folder / name);
        for (const rlim_t bytes : {rlim_t{0}, rlim_t{30}, size / 2, size - 1000, size - 1}) {
            SCOPED_TRACE(std::string(name) + " cut at " + std::to_string(bytes));
            EXPECT_NE(complaintWithin(
                          bytes, [&] { writeAudio(folder / name, sound, SampleFormat::Int16); }),
                      "none");
            EXPECT_EQ(folder.count(), 0);
        }
    }
}

TEST(AudioFile, SamplesAreReadBackExactlyAndEqualWritesGiveEqualFiles)
{
    TemporaryFolder folder;
    // Multiples of a 16-bit step.
    std::vector<float> samples{0.0f,   1.0f / 32768.0f,     -1.0f / 32768.0f,    0.5f,
                               -0.75f, 32767.0f / 32768.0f, 12345.0f / 32768.0f, -1.0f};
    std::vector<std::string> files;
    for (int round = 0; round < 2; ++round) {
        for (const char* name : {"a.wav", "a.aif", "a.aiff", "a.flac", "A.WAV"})
            for (const SampleFormat format : {SampleFormat::Int16, SampleFormat::Int24}) {
                samples[7] = format == SampleFormat::Int24 ? 1.0f / 8388608.0f : -1.0f;
                writeAudio(folder / name, samples, format, 48000, 2);
                EXPECT_EQ(readAudio(folder / name), samples) << name;
                files.push_back(contentOf(folder / name));
            }
        sleep(round == 0 ? 2 : 0);  // a timestamp in the file would have a resolution of seconds
    }
    EXPECT_TRUE(std::equal(files.begin(), files.begin() + 10, files.begin() + 10));
    const std::vector<float> floats{1e-30f, -3.5f, 0.1f};
    writeAudio(folder / "f.wav", floats, SampleFormat::Float32);
    EXPECT_EQ(readAudio(folder / "f.wav"), floats);
    EXPECT_TRUE(AudioReader(folder / "f.wav").holdsFloats());
    EXPECT_FALSE(AudioReader(folder / "a.wav").holdsFloats());

    writeAudio(folder / "empty.wav", {}, SampleFormat::Int24);
    EXPECT_EQ(AudioReader(folder / "empty.wav").frames(), 0);

    // Samples outside full scale are clipped and counted.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> hot{1.0f, -1.0f, 1.5f, -1.5f, infinity, -infinity, nan};
    AudioWriter writer(folder / "hot.wav", 44100, 1, SampleFormat::Int16, 7);
    writer.write(hot.data(), 7);
    writer.commit();
    EXPECT_EQ(writer.clipped(), 5) << "all but NaN and -1, the lowest sample";
    const float top = 32767.0f / 32768.0f;
    EXPECT_EQ(readAudio(folder / "hot.wav"),
              (std::vector<float>{top, -1.0f, top, -1.0f, top, -1.0f, 0.0f}));
}

TEST(AudioFile, RefusesWhatAFormatCannotHold)
{
    // 2^32 bytes are 715827882 frames of two 24-bit samples.
    const struct {
        const char* name;
        int rate;
        SampleFormat format;
        std::int64_t frames;
        const char* words;
    } rows[]{
        {"a.flac", 44100, SampleFormat::Float32, 10,
         "a FLAC file cannot hold 32-bit floats: choose --bits 16 or 24"},
        {"a.flac", 700000, SampleFormat::Int16, 10, "a FLAC file cannot have a rate of 700000 Hz"},
        {"a.wav", 44100, SampleFormat::Int24, 715827882, "the result is too long for a WAV file"},
        {"a.wav", 44100, SampleFormat::Int24, 715000000, "none"},
        {"a.flac", 44100, SampleFormat::Int24, 715827882, "none"},
        {"a.mp3", 44100, SampleFormat::Int16, 10, "a.mp3"},
    };
    TemporaryFolder folder;
    for (const auto& row : rows) {
        const std::string said = complaintOf(
            [&] { AudioWriter(folder / row.name, row.rate, 2, row.format, row.frames); });
        EXPECT_NE(said.find(row.words), std::string::npos) << row.name << ": " << said;
    }
    EXPECT_EQ(folder.count(), 0);
}

TEST(AudioFile, RefusesFilesThatAreNotReadableAudio)
{
    TemporaryFolder folder;
    writeContent(folder / "text.wav", "this is no audio");
    ASSERT_EQ(mkfifo((folder / "pipe.wav").c_str(), 0600), 0);
    writeAudio(folder / "six.wav", std::vector<float>(60), SampleFormat::Int16, 44100, 6);
    writeAudio(folder / "slow.wav", std::vector<float>(60), SampleFormat::Int16, 100);
    writeAudio(folder / "whole.flac", std::vector<float>(60000, 0.1f), SampleFormat::Int16);
    const std::string whole = contentOf(folder / "whole.flac");
    writeContent(folder / "cut.flac", whole.substr(0, whole.size() / 2));
    const std::pair<const char*, const char*> refusals[]{
        {"text.wav", "text.wav"},
        {"missing.wav", "no such file"},
        {"pipe.wav", "not an ordinary file"},
        {"six.wav", "has 6 channels"},
        {"slow.wav", "100 Hz"},
        {"cut.flac", "damaged"},
    };
    for (const auto& [name, words] : refusals) {
        const std::string said = complaintOf([&] { readAudio(folder / name); });
        EXPECT_NE(said.find(words), std::string::npos) << name << ": " << said;
    }
}

}  // namespace
