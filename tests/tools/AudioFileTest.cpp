// Files are written completely or not at all, and samples are read back unchanged.
#include "tests/support/Noise.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/AudioContent.h"
#include "tests/tools/Complaint.h"
#include "tools/audio/UnreadMetadata.h"
#include "tools/common/OutputFile.h"

#include <cmath>
#include <cstring>
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
    ASSERT_EQ(symlink("made.csv", (folder / "dangling.csv").c_str()), 0);
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
    writeFile(folder / "dangling.csv", "made");
    EXPECT_EQ(contentOf(folder / "made.csv"), "made");
    struct stat status;
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777u, 0640u) << "the permissions changed";
    EXPECT_EQ(folder.count(), 5) << "a temporary file is left";
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

    writeAudio(folder / "empty.flac", {}, SampleFormat::Int24);
    for (const char* name : {"empty.wav", "empty.aif"}) {
        writeAudio(folder / name, {}, SampleFormat::Int24);
        EXPECT_EQ(AudioReader(folder / name).frames(), 0);
    }

    // Samples outside full scale are clipped and counted.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> hot{1.0f, -1.0f, 1.5f, -1.5f, infinity, -infinity, nan};
    AudioWriter writer(folder / "hot.wav", {FileFormat::Wav, SampleFormat::Int16, 44100, 1}, 7);
    writer.write(hot.data(), 7);
    writer.commit();
    EXPECT_EQ(writer.clipped(), 5) << "all but NaN and -1, the lowest sample";
    const float top = 32767.0f / 32768.0f;
    EXPECT_EQ(readAudio(folder / "hot.wav"),
              (std::vector<float>{top, -1.0f, top, -1.0f, top, -1.0f, 0.0f}));
    Quantizer dithered(16, Dither::Triangular, 1, 44100);
    std::vector<int> integers(100);
    dithered.quantize(std::vector<float>(100, top).data(), 100, integers.data());
    EXPECT_EQ(dithered.clipped(), 0) << "by the dither alone";
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
        {"a.flac", 88201, SampleFormat::Int16, 10, "a FLAC file cannot have a rate of 88201 Hz"},
        {"a.aif", 44100, SampleFormat::Int24, 715827882, "too long for an AIFF file"},
        {"a.wav", 44100, SampleFormat::Int24, 715827882, "none"},
        {"a.flac", 44100, SampleFormat::Int24, 715827882, "none"},
        {"a.mp3", 44100, SampleFormat::Int16, 10, "a.mp3"},
    };
    TemporaryFolder folder;
    for (const auto& row : rows) {
        const std::string said = complaintOf([&] {
            AudioWriter(folder / row.name,
                        {checkedFileFormat(folder / row.name), row.format, row.rate, 2},
                        row.frames);
        });
        EXPECT_NE(said.find(row.words), std::string::npos) << row.name << ": " << said;
    }
    EXPECT_EQ(folder.count(), 0);
}

TEST(AudioFile, WavBecomesRf64FromFourGigabytesOn)
{
    TemporaryFolder folder;
    FileMetadata metadata;
    metadata.chunks = {{"iXML", "<x/>"}};
    for (const auto& [frames, id] :
         {std::pair{std::int64_t{715000000}, "RIFF"}, {std::int64_t{715827882}, "RF64"}}) {
        const std::string path = folder / "long.wav";
        const std::vector<float> second(2 * 44100);
        AudioWriter writer(path, {FileFormat::Wav, SampleFormat::Int24, 44100, 2}, frames,
                           metadata);
        writer.write(second.data(), 44100);
        EXPECT_EQ(writer.commit(), std::vector<std::string>{});
        EXPECT_EQ(contentOf(path).substr(0, 4), id);
        EXPECT_EQ(AudioReader(path).frames(), 44100);
        EXPECT_EQ(AudioReader(path).truncation(), "");
    }
    writeContent(folder / "bw.wav", contentOf(folder / "long.wav").replace(0, 4, "BW64"));
    EXPECT_EQ(AudioReader(folder / "bw.wav").frames(), 44100);
}

TEST(AudioFile, AFileCutShortIsNoticedAndUnknownLengthsAreNot)
{
    TemporaryFolder folder;
    const std::vector<float> sound = noise(10000, 1);
    for (const char* name : {"a.wav", "a.aif"}) {
        writeAudio(folder / name, sound, SampleFormat::Int16);
        EXPECT_EQ(AudioReader(folder / name).truncation(), "");
        const std::string whole = contentOf(folder / name);
        writeContent(folder / name, whole.substr(0, 10000));
        AudioReader cut(folder / name);
        EXPECT_NE(cut.truncation().find("its header states 200"), std::string::npos)
            << cut.truncation();
        EXPECT_EQ(readAudio(folder / name).size(), static_cast<std::size_t>(cut.frames()));
        EXPECT_GT(cut.frames(), 4900);
    }
    // The lengths that programs leave in a header which they have sent into a pipe.
    writeAudio(folder / "a.wav", sound, SampleFormat::Int16);
    std::string piped = contentOf(folder / "a.wav");
    const std::size_t data = piped.find("data") + 4;
    for (const auto& [riff, size] : {std::pair{"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\xFF"},
                                     {"\xFF\xFF\xFF\x7F", "\x00\xF0\xFF\x7F"},
                                     {"\xFF\xFF\xFF\xFF", "\0\0\0\0"},
                                     {"\0\0\0\0", "\0\0\0\0"},
                                     {"\x24\0\0\0", "\0\0\0\0"}}) {
        piped.replace(4, 4, riff, 4).replace(data, 4, size, 4);
        writeContent(folder / "p.wav", piped);
        EXPECT_EQ(AudioReader(folder / "p.wav").truncation(), "");
        EXPECT_EQ(readAudio(folder / "p.wav"), readAudio(folder / "a.wav"));
    }
    // Behind a chunk of an odd length.
    writeContent(folder / "p.wav", piped.insert(12, std::string("odd \3\0\0\0abc\0", 12)));
    EXPECT_EQ(readAudio(folder / "p.wav"), readAudio(folder / "a.wav"));
    writeAudio(folder / "empty.wav", {}, SampleFormat::Int16);
    EXPECT_EQ(AudioReader(folder / "empty.wav").frames(), 0);
}

TEST(AudioFile, AnMp3IsReadAsFarAsItGoes)
{
    TemporaryFolder folder;
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    SoundFile file(sf_open((folder / "a.mp3").c_str(), SFM_WRITE, &info));
    ASSERT_TRUE(file) << soundFileError(nullptr);
    int mode = SF_BITRATE_MODE_CONSTANT;
    double compression = 0.95;
    sf_command(file.get(), SFC_SET_BITRATE_MODE, &mode, sizeof(mode));
    sf_command(file.get(), SFC_SET_COMPRESSION_LEVEL, &compression, sizeof(compression));
    sf_writef_float(file.get(), noise(132300, 1).data(), 132300);
    file.reset();
    EXPECT_GT(AudioReader(folder / "a.mp3").frames(), 134000) << "the estimate is right";
    const std::size_t read = readAudio(folder / "a.mp3").size();
    EXPECT_GE(read, 132300u);
    EXPECT_LT(read, 134000u);
}

TEST(AudioFile, CarriesTagsMarkersAndBroadcastDataAndNamesWhatIsLost)
{
    FileMetadata metadata;
    metadata.tags = {{SF_STR_TITLE, "Tide"}, {SF_STR_ARTIST, "The Zs"}, {SF_STR_GENRE, "Dub"}};
    SF_BROADCAST_INFO bext{};
    std::strcpy(bext.description, "take 3");
    bext.time_reference_low = 172800000;
    bext.version = 2;
    metadata.broadcast.assign(reinterpret_cast<const char*>(&bext), sizeof(bext));
    metadata.broadcast.resize(sizeof(bext) + 16000);
    SF_CUE_POINT cue{};
    cue.indx = 1;
    cue.fcc_chunk = 0x61746164;  // "data"
    cue.position = cue.sample_offset = 200;
    std::strcpy(cue.name, "Verse 10");
    metadata.cues = {cue, cue};
    metadata.cues[1].indx = 2;
    SF_INSTRUMENT loop{};
    loop.gain = 1;
    loop.velocity_hi = loop.key_hi = 127;
    loop.loop_count = 1;
    loop.loops[0] = {SF_LOOP_FORWARD, 100, 300, 0};
    metadata.instrument = loop;
    // Longer than libsndfile's headers may be.
    const std::string text = "<" + std::string(70000, 'x') + ">";
    metadata.chunks = {{"iXML", text + '\0'}, {"id3 ", std::string("ID3\0", 4)}};
    metadata.unread = {"the chunk 'zzzz'"};

    TemporaryFolder folder;
    const struct {
        const char* name;
        std::vector<std::string> missing;
    } rows[]{
        {"a.wav", {"the chunk 'zzzz'"}},
        {"a.aif",
         {"the tag GENRE", "the broadcast information (bext)", "the loop points",
          "the chunk 'zzzz'"}},
        {"a.flac",
         {"the broadcast information (bext)", "2 cue points", "the loop points", "the chunk 'iXML'",
          "the chunk 'id3 '", "the chunk 'zzzz'"}},
    };
    metadata.delay(96);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        AudioWriter writer(folder / row.name,
                           {checkedFileFormat(row.name), SampleFormat::Int24, 48000, 1}, 1001,
                           metadata);
        writer.write(noise(1001, 1).data(), 1001);
        EXPECT_EQ(writer.commit(), row.missing);
        const FileMetadata read = AudioReader(folder / row.name).metadata();
        EXPECT_EQ(read.tags.at(SF_STR_TITLE), "Tide");
        if (std::string(row.name) == "a.flac")
            continue;
        EXPECT_EQ(read.cues.at(0).sample_offset, 296u);
        EXPECT_STREQ(read.cues.at(1).name, "Verse 10");
        EXPECT_EQ(read.chunks.at(0).data, text);
        EXPECT_EQ(read.chunks.at(1).data, metadata.chunks[1].data);
    }
    const FileMetadata wav = AudioReader(folder / "a.wav").metadata();
    std::memcpy(&bext, wav.broadcast.data(), sizeof(bext));
    EXPECT_STREQ(bext.description, "take 3");
    EXPECT_EQ(bext.time_reference_low, 172800000u);
    EXPECT_EQ(wav.instrument->loops[0].start, 196u);
    EXPECT_EQ(wav.instrument->loops[0].end, 396u);
}

TEST(AudioFile, NamesWhatIsNotReadOfTheMetadata)
{
    const auto text = [](auto& literal) { return std::string(literal, sizeof(literal) - 1); };
    FileMetadata read;
    read.tags = {{SF_STR_TITLE, "Tide"}, {SF_STR_ARTIST, "Zs"}};
    read.cues.resize(2);
    using Words = std::vector<std::string>;
    const struct {
        const char* id;
        std::string content;
        Words words;
    } rows[]{
        {"LIST",
         text("INFOINAM\5\0\0\0Tide\0\0IENG\2\0\0\0MeIART\2\0\0\0YoICMT\0\0\0\0"),
         {"the tag IENG", "the tag ARTIST"}},
        {"LIST",
         text("adtlnote\5\0\0\0\1\0\0\0x\0labl\6\0\0\0\1\0\0\0a\0"),
         {"the chunk 'note'", "the names of 1 cue point"}},
        {"cue ", text("\5\0\0\0"), {"3 cue points"}},
        {"MARK", text("\0\3"), {"1 cue point"}},
        {"smpl", std::string(28, '\0') + text("\2\0\0\0"), {"2 loops"}},
        {"bext", "", {kBroadcastWords}},
        {"cart", "", {kCartWords}},
        {"NAME", "Tide", {}},
        {"ANNO", "again", {"the tag COMMENT"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(unreadInChunk(row.id, row.content, read), row.words) << row.id;

    TemporaryFolder folder;
    FileMetadata metadata;
    metadata.chunks = {{"LIST", rows[0].content}, {"zzzz", "z"}};
    writeAudio(folder / "a.wav", noise(100, 1), SampleFormat::Int16, 44100, 1, metadata);
    EXPECT_EQ(AudioReader(folder / "a.wav").metadata().unread,
              (Words{"the tag IENG", "the chunk 'zzzz'"}));
    // A FLAC file of unknown length, as from a pipe. Its first block ends at byte 42.
    const std::vector<float> sound = noise(5000, 1);
    writeAudio(folder / "a.flac", sound, SampleFormat::Int24);
    std::string flac = contentOf(folder / "a.flac");
    flac[21] = static_cast<char>(flac[21] & 0xF0);
    flac.replace(22, 4, 4, '\0');
    const std::string comments =
        text("\0\0\0\0\3\0\0\0\x09\0\0\0artist=Zs\6\0\0\0isrc=1\x09\0\0\0ARTIST=Yo");
    flac.replace(42, 4 + static_cast<std::size_t>(flac[45]),
                 text("\2\0\0\4face\x84\0\0") + static_cast<char>(comments.size()) + comments);
    writeContent(folder / "b.flac", flac);
    EXPECT_EQ(AudioReader(folder / "b.flac").metadata().unread,
              (Words{"the application data", "the tag ISRC", "the tag ARTIST"}));
    EXPECT_EQ(readAudio(folder / "b.flac"), readAudio(folder / "a.flac"));
}

// The amplitude of a frequency in a signal, and the RMS of what remains without it.
std::pair<double, double> toneAndRest(const std::vector<float>& samples, double cyclesPerSample)
{
    double cosine = 0.0, sine = 0.0, power = 0.0;
    const auto phase = [&](std::size_t i) {
        return 6.283185307179586 * cyclesPerSample * static_cast<double>(i);
    };
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        cosine += 2.0 / count * static_cast<double>(samples[i]) * std::cos(phase(i));
        sine += 2.0 / count * static_cast<double>(samples[i]) * std::sin(phase(i));
    }
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double rest = static_cast<double>(samples[i]) - cosine * std::cos(phase(i))
            - sine * std::sin(phase(i));
        power += rest * rest / count;
    }
    return {std::hypot(cosine, sine), std::sqrt(power)};
}

TEST(AudioFile, DitherKeepsASineBelowTheLastBitAndItsNoiseIsAsComputed)
{
    TemporaryFolder folder;
    const std::size_t count = 88200;
    const double frequency = 1000.0 / 44100.0;
    std::vector<float> sine(count);
    for (std::size_t i = 0; i < count; ++i)
        sine[i] =
            static_cast<float>(std::pow(10.0, -95.0 / 20.0)
                               * std::sin(6.283185307179586 * frequency * static_cast<double>(i)));
    const double step = 1.0 / 32768.0;
    // Triangular: the RMS is half a step. Shaped: by the sum of the squared coefficients
    // 1, -2.033, 2.165, -1.959, 1.590 and -0.6149 times as much power.
    const struct {
        Dither dither;
        double toneError;  // dB
        double noise;      // steps, RMS
    } rows[]{{Dither::Triangular, 0.3, 0.5},
             {Dither::Shaped, 0.3, 0.5 * std::sqrt(1 + 4.133 + 4.687 + 3.838 + 2.528 + 0.378)}};
    for (const auto& row : rows) {
        for (const char* name : {"a.wav", "b.wav"})
            writeAudio(folder / name, sine, SampleFormat::Int16, 44100, 1, {}, row.dither);
        EXPECT_EQ(contentOf(folder / "a.wav"), contentOf(folder / "b.wav"));
        const auto [tone, rest] = toneAndRest(readAudio(folder / "a.wav"), frequency);
        EXPECT_NEAR(20.0 * std::log10(tone), -95.0, row.toneError);
        EXPECT_NEAR(rest / step, row.noise, 0.03 * row.noise);
        // No harmonic stands out: each is below -120 dBFS.
        for (const double harmonic : {2.0, 3.0, 5.0})
            EXPECT_LT(toneAndRest(readAudio(folder / "a.wav"), harmonic * frequency).first,
                      row.dither == Dither::Shaped ? 3e-7 : 1e-6)
                << harmonic;
    }
    // Each channel is shaped by its own errors: the correlation of neighbours, from the
    // coefficients.
    writeAudio(folder / "s.wav", std::vector<float>(count), SampleFormat::Int16, 48000, 2, {},
               Dither::Shaped);
    const std::vector<float> shaped = readAudio(folder / "s.wav");
    double power = 0.0, product = 0.0;
    for (std::size_t i = 2; i < count; i += 2) {
        power += static_cast<double>(shaped[i]) * static_cast<double>(shaped[i]);
        product += static_cast<double>(shaped[i]) * static_cast<double>(shaped[i - 2]);
    }
    EXPECT_NEAR(product / power, -14.77 / 16.56, 0.02);
    writeAudio(folder / "none.wav", sine, SampleFormat::Int16);
    EXPECT_GT(toneAndRest(readAudio(folder / "none.wav"), 3.0 * frequency).first, 3e-6)
        << "rounding alone distorts, which is what this test can see";
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
        {"slow.wav", "100 Hz; 5000 to 400000 Hz can be processed"},
        {"cut.flac", "damaged"},
    };
    for (const auto& [name, words] : refusals) {
        const std::string said = complaintOf([&, file = folder / name] { readAudio(file); });
        EXPECT_NE(said.find(words), std::string::npos) << name << ": " << said;
        EXPECT_NE(said.back(), '.') << "two sentences: " << said;
    }
}

}  // namespace
