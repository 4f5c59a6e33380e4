// The messages for faulty files, and their agreement with the plug-in's own readers.
#include "tools/banks/BankCheck.h"
#include "tests/presets/HandMadeImages.h"
#include "tools/banks/HostFile.h"
#include "tools/banks/PresetFile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace tool;
using Bytes = std::vector<std::uint8_t>;

BankReport check(const Bytes& bytes)
{
    return checkBank({bytes.data(), bytes.size()});
}

void put(Bytes& bytes, std::size_t at, std::uint32_t word)
{
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<std::uint8_t>(word >> (8 * i));
}

Bytes goodPreset()
{
    return presetBytes(factoryBank()[3]);
}

Bytes goodBank()
{
    return bankBytes({factoryBank(), 0});
}

// A header is 41 bytes, a name record 168, a value record 32 with its value at 24; a preset in a
// bank takes 168 + 58 * 32 = 2024.
constexpr std::size_t kValueOf28 = 41 + 168 + 28 * 32 + 24;  // 1129
constexpr std::size_t kPreset5 = 41 + 5 * 2024;              // 10161

enum Image { kPreset, kBank, kState, kBigEndian, kZeros, kFxp, kFxb, kVst };

const std::uint32_t kNan = 0x7FC00000, k2 = 0x40000000, kMinusQuarter = 0xBE800000,
                    kXs = 0x78787878;

// 32-bit words to write into an image at an offset; kCut instead sets the image's length to that
// offset.
constexpr std::uint32_t kCut = 0xC0C0C0C0;
constexpr std::size_t kAnywhere = 0xFFFFFFFF;
struct Patch {
    std::size_t at;
    std::uint32_t word;
};
struct Row {
    Image image;
    std::vector<Patch> patches;
    Outcome outcome;
    bool isFault;
    std::size_t offset;
    const char* words;
};
constexpr Outcome kIgnored = Outcome::Ignored, kNoEffect = Outcome::NoEffect,
                  kUndone = Outcome::Undone, kTaken = Outcome::Taken, kPartly = Outcome::Partly;
// clang-format off
const Row kRows[]{
    {kPreset, {{0, kCut}}, kIgnored, true, 0, ""},
    {kPreset, {{4, kCut}}, kIgnored, true, 4, "first five bytes"},
    {kPreset, {{0, 0x74343678}}, kIgnored, true, 0, "no preset and no"},
    {kPreset, {{4, 0x39}}, kNoEffect, true, 4, "kind is 0x39"},
    {kBank, {{40, kCut}}, kNoEffect, true, 40, "header of 41"},
    {kPreset, {{21, 0xFFFFFFFF}}, kNoEffect, true, 21, "negative, -1"},
    {kPreset, {{21, 2025}}, kNoEffect, true, 21, "is 2025, but only 2024 bytes"},
    {kPreset, {{kMaxFileSize + 2, kCut}}, kPartly, false, 2065, "16775153 bytes follow"},
    {kPreset, {{kMaxFileSize + 2, kCut}, {21, kMaxFileSize - 41 + 1}}, kNoEffect, true, 21, "first 16 MiB"},
    {kBank, {{13, 0x80000000}}, kNoEffect, true, 13, "record count is negative"},
    {kPreset, {{13, 0x80000000}}, kPartly, true, 13, "resets"},
    {kPreset, {{13, 58}}, kPartly, false, 2033, "32 bytes follow the last record"},
    {kPreset, {{13, 60}}, kUndone, true, 2065, "record 60 of 60 should begin here"},
    // The last record begins at 41 + 168 + 57 * 32 = 2033, with 8 and with 18 bytes left.
    {kPreset, {{21, 2000}}, kUndone, true, 2033, "record 59 of 59 is cut off in its head of 12 bytes: 8 bytes"},
    {kPreset, {{21, 2010}}, kUndone, true, 2037, "20 bytes follow its head, but only 6 are left"},
    {kPreset, {{45, 0xFFFFFFF0}}, kUndone, true, 45, "record 1 of 59 has the negative size -16"},
    {kPreset, {{kValueOf28, k2}}, kUndone, true, 1129, "parameter 28 is 2, which lies outside 0 to 1"},
    {kPreset, {{kValueOf28, kNan}}, kUndone, true, 1129, "is nan"},
    {kBank, {{kPreset5 + 192, kMinusQuarter}}, kUndone, true, kPreset5 + 192, "parameter 0 of preset 5 is -0.25"},
    {kPreset, {{5, 7}}, kTaken, false, 5, "format word"},
    {kPreset, {{9, 57}}, kTaken, false, 9, "57 instead of 58"},
    {kBank, {{17, 24}}, kTaken, false, 17, "preset 0 is"},
    {kPreset, {{30, 1}}, kTaken, false, 30, "reserved"},
    {kPreset, {{41, 9}}, kPartly, false, 41, "unknown kind 9"},
    {kPreset, {{73, 0x78}}, kTaken, false, 73, "behind its"},
    {kPreset, {{53, 0x786FE4}}, kTaken, false, 53, "\"\\xE4ox\", is not UTF-8"},
    {kPreset, {{53, kXs}, {57, kXs}, {61, kXs}, {65, kXs}, {69, kXs}, {73, kXs}}, kTaken, false, 53, "no terminator"},
    {kPreset, {{221, 58}}, kPartly, false, 221, "unknown parameter 58"},
    {kPreset, {{221, 1}}, kPartly, false, 253, "second value of parameter 1"},
    {kBank, {{kPreset5 + 8, 24}}, kPartly, false, kPreset5 + 8, "preset 24"},
    {kPreset, {{17, 2}}, kTaken, false, 17, "current preset is 2 instead of 0"},
    {kPreset, {{49, 3}}, kTaken, false, 49, "belongs to preset 3 instead of 0"},
    {kPreset, {{45, 20}}, kUndone, true, 45, "holds 20 bytes, too few for a name"},
    {kPreset, {{213, 8}}, kUndone, true, 213, "holds 8 bytes, too few for a value"},
    {kPreset, {{2037, 16}, {21, 2020}}, kPartly, false, 2037, "holds 16 bytes instead of 20"},
    {kPreset, {{77, 1}}, kTaken, false, 77, "a reserved byte of a record"},
    {kPreset, {{225, 1}}, kTaken, false, 225, "a reserved byte of a record"},
    {kPreset, {{41, 9}}, kPartly, false, kAnywhere, "the preset gets the name of the default preset"},
    // Preset 5 loses its name record to preset 4.
    {kBank, {{kPreset5 + 8, 4}}, kPartly, false, kPreset5, "58 values of preset 4 stand ahead"},
    {kBank, {{kPreset5 + 8, 4}}, kPartly, false, kPreset5, "second name record of preset 4"},
    {kBank, {{kPreset5 + 8, 4}}, kPartly, false, kAnywhere, "values but no name record of preset 5"},
    {kBank, {{kPreset5 + 8, 4}}, kPartly, false, kAnywhere, "parameter 4 and 53 more: the default"},
    {kBank, {{13, 59}}, kPartly, false, kAnywhere, "no records of preset 1, 2, 3"},
    {kState, {{48630, kCut}}, kPartly, false, 48625, "5 bytes follow the state"},
    {kState, {{8 + kValueOf28, k2}}, kUndone, true, 8 + 1129, "parameter 28 of preset 0 is 2"},
    {kState, {{40000, kCut}}, kPartly, true, 40000, "instead of at byte 48625"},
    {kState, {{3, 1}}, kTaken, false, 3, "prefix"},
    {kState, {{8 + 13, 59}, {8 + 21, 2024}, {8 + 41 + 2024, kCut}}, kPartly, false, kAnywhere, "no records of preset 1, 2"},
    {kState, {{8 + 21, 2024}}, kTaken, false, 8 + 21, "payload size is 2024"},
    {kBigEndian, {}, kTaken, false, 0, "big-endian"},
    {kBigEndian, {{kValueOf28, 0x40}}, kUndone, true, 1129, "parameter 28 is 2"},
    {kZeros, {}, kPartly, false, 8, "magic is not \"64tZ\"; in a state it is not looked at"},
    {kZeros, {{1, kCut}}, kIgnored, true, kAnywhere, "no records, and the plug-in keeps its bank"},
    {kZeros, {{48626, kCut}, {8 + 13, 0xFFFFFFFF}}, kIgnored, true, kAnywhere, "reads it without effect"},
    {kZeros, {{48626, kCut}, {8 + 13, 5000}}, kIgnored, true, kAnywhere, "undoes the load as a whole"},
    // The state begins at byte 76 of a .fxp, 292 of a .vstpreset, whose list begins at 2365.
    {kFxp, {{59, kCut}}, kIgnored, true, 59, "header of 60"},
    {kFxb, {{159, kCut}}, kIgnored, true, 159, "header of 160"},
    {kFxp, {{8, 0x6B437846}}, kIgnored, true, 8, "the form is FxCk, a list of values"},
    {kFxp, {{8, kXs}}, kIgnored, true, 8, "\"xxxx\", neither FPCh"},
    {kFxb, {{16, kXs}}, kIgnored, true, 16, "another plug-in, \"xxxx\""},
    {kFxp, {{2148, kCut}}, kIgnored, true, 56, "2089 bytes, but 2088 follow"},
    {kFxp, {{56, 0x0F000000}}, kIgnored, true, 56, "15 bytes, fewer than"},
    {kFxp, {{60, 1}}, kIgnored, true, 60, "1 and 2073 bytes by its head, of 2073"},
    {kFxp, {{68, 0}}, kIgnored, true, 60, "0 and 0 bytes"},
    {kFxp, {{68, 2072}}, kNoEffect, true, 76 + 2072, "the state ends here"},
    {kFxp, {{76 + 8 + kValueOf28, k2}}, kUndone, true, 76 + 8 + 1129, "parameter 28 of preset 0 is 2"},
    {kVst, {{47, kCut}}, kIgnored, true, 47, "header of 48"},
    {kVst, {{8, kXs}}, kIgnored, true, 8, "another plug-in, of the class \"xxxx"},
    {kVst, {{44, 0x80000000}}, kIgnored, true, 40, "at byte 9223372036854778173 of 2413"},
    {kVst, {{40, 47}}, kIgnored, true, 40, "at byte 47 of"},
    {kVst, {{40, 48}}, kIgnored, true, 48, "no list"},
    {kVst, {{2369, 3}}, kIgnored, true, 2369, "have 3 parts"},
    {kVst, {{2385, 2366}}, kIgnored, true, 2377, "\"Comp\" is said to have 2366 bytes at byte 48"},
    {kVst, {{2385, 0xFFFFFFD0}, {2389, 0xFFFFFFFF}}, kIgnored, true, 2377, "18446744073709551568 bytes"},
    {kVst, {{2373, kXs}, {2393, kXs}}, kIgnored, true, 2365, "none of the parts"},
    {kVst, {{2393, kXs}}, kPartly, false, kAnywhere, "values but no name record of preset 0"},
    {kVst, {{2405, 0}}, kPartly, false, kAnywhere, "values but no name record of preset 0"},
    {kVst, {{292 + 8 + kValueOf28, k2}}, kUndone, true, 292 + 8 + 1129, "parameter 28 of preset 0 is 2"},
};
// clang-format on

TEST(BankCheck, ReportsTheFaultItsOffsetAndItsConsequence)
{
    // The reader of states checks neither magic nor size, so zeros are a valid state.
    const Bytes images[]{goodPreset(),
                         goodBank(),
                         handmade::stateOf(goodBank()),
                         handmade::goodPreset(1, true),
                         Bytes(8 + 48617),
                         fxpBytes(goodPreset(), factoryBank()[3], 1),
                         fxbBytes(goodBank(), 1),
                         vstPresetBytes(goodPreset(), factoryBank()[3])};
    for (const Image image : {kPreset, kBank, kState, kFxp, kFxb, kVst})
        EXPECT_TRUE(check(images[image]).findings.empty());
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.words);
        Bytes bytes = images[row.image];
        for (const auto& [at, word] : row.patches)
            if (word == kCut)
                bytes.resize(at);
            else
                put(bytes, at, word);
        const BankReport report = check(bytes);
        EXPECT_EQ(report.outcome, row.outcome);
        EXPECT_EQ(report.hasFaults(), row.isFault);
        const auto isTheOne = [&row](const Finding& finding) {
            return (row.offset == kAnywhere
                    || (finding.offset == row.offset && finding.isFault == row.isFault))
                && finding.text.find(row.words) != std::string::npos;
        };
        EXPECT_TRUE(std::any_of(report.findings.begin(), report.findings.end(), isTheOne))
            << (report.findings.empty() ? "nothing" : report.findings.front().text);
    }
    for (const Image image : {kFxp, kFxb, kVst})
        for (std::size_t size = 4; size < images[image].size(); ++size)
            EXPECT_EQ(checkBank({images[image].data(), size}).outcome, Outcome::Ignored) << size;
    // Findings beyond the longest list are counted.
    Bytes bytes = goodBank();
    for (std::size_t id = 0; id < 58; ++id)
        put(bytes, kPreset5 + 192 + id * 32, k2);
    const BankReport report = check(bytes);
    ASSERT_EQ(report.findings.size(), 11u);
    EXPECT_EQ(report.findings.back().text, "and 48 more values outside 0 to 1");
}

// The outcome of loading an image with the plug-in's readers, and the image that the plug-in would
// then write.
Outcome readerSays(const Bytes& bytes, Bytes& written)
{
    const ByteView image{bytes.data(), bytes.size()};
    const auto start = readImageStart(image);
    if (!start)
        return Outcome::Ignored;
    if ((start->kind != kPresetKind && start->kind != kBankKind) || image.size < kFileHeaderSize)
        return Outcome::NoEffect;
    FileHeader header = readHeader(image.data);
    if (start->bigEndian)
        swapHeader(header);
    if (header.payloadSize < 0
        || static_cast<std::size_t>(header.payloadSize) > image.size - kFileHeaderSize
        || (start->kind == kBankKind && header.recordCount < 0))
        return Outcome::NoEffect;
    const ByteView records{image.data + kFileHeaderSize,
                           static_cast<std::size_t>(header.payloadSize)};
    if (start->kind == kPresetKind) {
        PresetSlot preset = factoryBank()[0];
        const bool taken = readPresetRecords(records, header.recordCount, start->bigEndian,
                                             factoryBank()[0], preset);
        written = presetBytes(preset);
        return taken ? Outcome::Taken : Outcome::Undone;
    }
    const bool inBank = header.currentPreset >= 0 && header.currentPreset < kPresetCount;
    BankContent bank{factoryBank(), inBank ? header.currentPreset : 0};
    const bool taken = readBankRecords(records, header.recordCount, start->bigEndian,
                                       factoryBank()[0], bank.presets.data());
    written = bankBytes(bank);
    return taken ? Outcome::Taken : Outcome::Undone;
}

// There must be findings exactly if the image differs from the one that the plug-in would write;
// except for odd names, which it writes unchanged.
void expectAgreement(const Bytes& bytes)
{
    Bytes written;
    const Outcome outcome = readerSays(bytes, written);
    const BankReport report = check(bytes);
    EXPECT_EQ(report.outcome == Outcome::Partly ? Outcome::Taken : report.outcome, outcome);
    const bool perfect = outcome == Outcome::Taken && written == bytes;
    const bool onlyNames =
        std::all_of(report.findings.begin(), report.findings.end(),
                    [](const Finding& finding) { return finding.text.rfind("the name", 0) == 0; });
    EXPECT_EQ(perfect, onlyNames) << (report.findings.empty() ? "" : report.findings[0].text);
}

TEST(BankCheck, AgreesWithTheReaders)
{
    // For every truncation, every changed byte, and banks with several faults.
    const Bytes preset = goodPreset(), bank = goodBank();
    for (std::size_t at = 0; at < preset.size(); ++at) {
        SCOPED_TRACE(at);
        Bytes cut(preset.begin(), preset.begin() + static_cast<std::ptrdiff_t>(at));
        expectAgreement(cut);
        if (at >= kFileHeaderSize) {
            put(cut, 21, static_cast<std::uint32_t>(at - kFileHeaderSize));
            expectAgreement(cut);
        }
        for (const int mask : {0x01, 0x02, 0x10, 0x1A, 0x40, 0x80, 0xFF}) {
            Bytes bytes = preset;
            bytes[at] = static_cast<std::uint8_t>(bytes[at] ^ mask);
            expectAgreement(bytes);
        }
        ASSERT_FALSE(HasFailure());
    }
    std::mt19937 random(20);
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        Bytes bytes = bank;
        for (int change = 0; change < 3; ++change) {
            // Record headers and ids more often than the rest, since most cases depend on them.
            const std::size_t record = 41 + random() % 24 * 2024 + 168 + random() % 58 * 32;
            const std::size_t at =
                random() % 2 ? record + 4 * (random() % 4) : random() % bytes.size();
            bytes[at] = static_cast<std::uint8_t>(random() % 64);
        }
        expectAgreement(bytes);
        ASSERT_FALSE(HasFailure());
    }
}

}  // namespace
