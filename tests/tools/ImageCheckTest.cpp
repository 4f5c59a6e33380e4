// The words for faulty images, and that they are never at odds with the readers of the plug-in.
#include "ImageCheck.h"
#include "HandMadeImages.h"
#include "PresetFile.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace tool;
using Bytes = std::vector<std::uint8_t>;

ImageReport check(const Bytes& bytes)
{
    return checkImage({bytes.data(), bytes.size()});
}

void put(Bytes& bytes, std::size_t at, std::uint32_t word)
{
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<std::uint8_t>(word >> (8 * i));
}

void putFloat(Bytes& bytes, std::size_t at, float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    put(bytes, at, bits);
}

Bytes goodPreset()
{
    return presetImage(factoryBank()[3]);
}

Bytes goodBank()
{
    return bankImage({factoryBank(), 0});
}

// A header is 41 bytes, a name record 168, a value record 32 with its value at 24; a preset in a
// bank takes 168 + 58 * 32 = 2024.
constexpr std::size_t kValueOf28 = 41 + 168 + 28 * 32 + 24;  // 1129
constexpr std::size_t kPreset5 = 41 + 5 * 2024;              // 10161

enum Image { kPreset, kBank, kState };

Bytes goodImage(Image image)
{
    return image == kPreset ? goodPreset()
        : image == kBank    ? goodBank()
                            : handmade::stateOf(goodBank());
}

const std::uint32_t kNan = 0x7FC00000, k2 = 0x40000000, kMinusQuarter = 0xBE800000;

// An image with a word put over four of its bytes, which may end it; or, where the word is `kCut`,
// cut off or prolonged there.
constexpr std::uint32_t kCut = 0xC0C0C0C0;
struct Row {
    Image image;
    std::size_t at;
    std::uint32_t word;
    Outcome outcome;
    bool isFault;
    std::size_t offset;
    const char* words;
};
constexpr Outcome kIgnored = Outcome::Ignored, kNoEffect = Outcome::NoEffect,
                  kUndone = Outcome::Undone, kTaken = Outcome::Taken, kPartly = Outcome::Partly;
// clang-format off
const Row kRows[]{
    {kPreset, 4, kCut, kIgnored, true, 4, "first five bytes"},
    {kPreset, 0, 0x74343678, kIgnored, true, 0, "no preset and no"},
    {kPreset, 4, 0x39, kNoEffect, true, 4, "kind is 0x39"},
    {kBank, 40, kCut, kNoEffect, true, 40, "header of 41"},
    {kPreset, 21, 0xFFFFFFFF, kNoEffect, true, 21, "negative, -1"},
    {kPreset, 21, 2025, kNoEffect, true, 21, "is 2025, but only 2024 bytes"},
    {kPreset, kMostOfFile + 2, kCut, kPartly, false, 2065, "16775153 bytes follow"},
    {kBank, 13, 0x80000000, kNoEffect, true, 13, "record count is negative"},
    {kPreset, 13, 0x80000000, kPartly, true, 13, "resets"},
    {kPreset, 13, 60, kUndone, true, 2065, "record 60 of 60 should begin here"},
    // The last record begins at 41 + 168 + 57 * 32 = 2033, with 8 and with 18 bytes left.
    {kPreset, 21, 2000, kUndone, true, 2033, "record 59 of 59 is cut off in its head of 12 bytes: 8 bytes"},
    {kPreset, 21, 2010, kUndone, true, 2037, "20 bytes follow its head, but only 6 are left"},
    {kPreset, 45, 0xFFFFFFF0, kUndone, true, 45, "record 1 of 59 has the negative size -16"},
    {kPreset, 45, 5000, kUndone, true, 45, "5000 bytes follow its head, but only 2012 are left"},
    {kPreset, kValueOf28, k2, kUndone, true, 1129, "parameter 28 is 2, which lies outside 0 to 1"},
    {kPreset, kValueOf28, kNan, kUndone, true, 1129, "is nan"},
    {kBank, kPreset5 + 192, kMinusQuarter, kUndone, true, kPreset5 + 192, "parameter 0 of preset 5 is -0.25"},
    {kPreset, 5, 7, kTaken, false, 5, "format word"},
    {kPreset, 9, 57, kTaken, false, 9, "57 instead of 58"},
    {kBank, 17, 24, kTaken, false, 17, "preset 0 is"},
    {kPreset, 30, 1, kTaken, false, 30, "reserved"},
    {kPreset, 2066, kCut, kPartly, false, 2065, "1 bytes"},
    {kPreset, 41, 9, kPartly, false, 41, "unknown kind 9"},
    {kPreset, 73, 0x78, kTaken, false, 73, "behind its"},
    {kPreset, 53, 0x786FE4, kTaken, false, 53, "\"\\xE4ox\", is not UTF-8"},
    {kPreset, 221, 58, kPartly, false, 221, "unknown parameter 58"},
    {kPreset, 221, 1, kPartly, false, 253, "second value of parameter 1"},
    {kBank, kPreset5 + 8, 24, kPartly, false, kPreset5 + 8, "preset 24"},
    {kState, 8 + kValueOf28, k2, kUndone, true, 8 + 1129, "parameter 28 of preset 0 is 2"},
    {kState, 40000, kCut, kPartly, true, 40000, "instead of at byte 48625"},
    {kState, 3, 1, kTaken, false, 3, "prefix"},
};
// clang-format on

void expectFinding(const Bytes& bytes, const Row& row)
{
    SCOPED_TRACE(row.words);
    const ImageReport report = check(bytes);
    EXPECT_EQ(report.outcome, row.outcome);
    EXPECT_EQ(report.hasFaults(), row.isFault);
    EXPECT_TRUE(std::any_of(report.findings.begin(), report.findings.end(),
                            [&](const Finding& finding) {
                                return finding.offset == row.offset
                                    && finding.isFault == row.isFault
                                    && finding.text.find(row.words) != std::string::npos;
                            }))
        << (report.findings.empty() ? "nothing" : report.findings.front().text);
}

TEST(ImageCheck, NamesTheFaultTheByteAndTheConsequence)
{
    for (const Row& row : kRows) {
        Bytes bytes = goodImage(row.image);
        EXPECT_TRUE(check(bytes).findings.empty());
        if (row.word == kCut)
            bytes.resize(row.at);
        else
            put(bytes, row.at, row.word);
        expectFinding(bytes, row);
    }
    // Several changes at once: a size beyond what is read of a file; a name that fills its field;
    // values ahead of their preset; and as states, no image at all, and one of a single preset.
    Bytes bytes = goodPreset();
    bytes.resize(kMostOfFile + 2);
    put(bytes, 21, kMostOfFile - 41 + 1);
    expectFinding(bytes, {kPreset, 0, 0, kNoEffect, true, 21, "first 16 MiB"});
    bytes = goodPreset();
    std::fill_n(&bytes[53], 24, 'x');
    expectFinding(bytes, {kPreset, 0, 0, kTaken, false, 53, "no terminator"});
    bytes = goodBank();
    std::rotate(&bytes[kPreset5], &bytes[kPreset5 + 168], &bytes[kPreset5] + 2024);
    expectFinding(
        bytes,
        {kBank, 0, 0, kPartly, false, kPreset5 + 58 * 32, "58 values of preset 5 stand ahead"});
    bytes = Bytes(goodImage(kState).size());
    expectFinding(
        bytes,
        {kState, 0, 0, kPartly, false, 8, "magic is not \"64tZ\"; in a state it is not looked at"});
    bytes = goodImage(kState);
    put(bytes, 8 + 13, 59);
    put(bytes, 8 + 21, 2024);
    bytes.resize(8 + 41 + 2024);
    expectFinding(bytes, {kState, 0, 0, kPartly, false, 8 + 21, "payload size is 2024"});
}

// Of a state neither start nor size is looked at, so that one may be in any file but an empty one.
TEST(ImageCheck, TellsWhatAFileThatIsNoImageDoesAsAState)
{
    EXPECT_EQ(check({}).findings.size(), 1u);
    Bytes refused(48625 + 1, 0), undone(48625 + 1, 0);
    put(refused, 8 + 13, 0xFFFFFFFF);
    put(undone, 8 + 13, 5000);
    const std::pair<Bytes, const char*> cases[]{
        {Bytes(1, 0), "no records, and the plug-in keeps its bank"},
        {refused, "reads it without effect"},
        {undone, "undoes the load as a whole"},
    };
    for (const auto& [bytes, words] : cases) {
        const ImageReport report = check(bytes);
        EXPECT_EQ(report.outcome, Outcome::Ignored) << words;
        EXPECT_NE(report.findings.back().text.find(words), std::string::npos)
            << report.findings.back().text;
    }
}

TEST(ImageCheck, CountsWhatIsTooMuchToList)
{
    Bytes bytes = goodBank();
    for (std::size_t id = 0; id < 58; ++id)
        putFloat(bytes, kPreset5 + 168 + id * 32 + 24, 3.0f);
    const ImageReport report = check(bytes);
    ASSERT_EQ(report.findings.size(), 11u);
    EXPECT_EQ(report.findings.back().text, "and 48 more values outside 0 to 1");
}

TEST(ImageCheck, KnowsAnImageFromABigEndianMachine)
{
    Bytes bytes = handmade::goodPreset(1, true);
    ImageReport report = check(bytes);
    EXPECT_EQ(report.outcome, Outcome::Taken);
    ASSERT_EQ(report.findings.size(), 1u);
    EXPECT_NE(report.findings[0].text.find("big-endian"), std::string::npos);
    bytes[kValueOf28] = 0x40;  // the exponent: 0.x becomes more than 2
    report = check(bytes);
    EXPECT_EQ(report.outcome, Outcome::Undone);
    EXPECT_EQ(report.findings.back().offset, kValueOf28);
}

// What becomes of an image, by the readers of the plug-in alone; and the image that it would write
// of what it read.
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
        written = presetImage(preset);
        return taken ? Outcome::Taken : Outcome::Undone;
    }
    const bool inBank = header.currentPreset >= 0 && header.currentPreset < kPresetCount;
    BankContent bank{factoryBank(), inBank ? header.currentPreset : 0};
    const bool taken = readBankRecords(records, header.recordCount, start->bigEndian,
                                       factoryBank()[0], bank.presets.data());
    written = bankImage(bank);
    return taken ? Outcome::Taken : Outcome::Undone;
}

// Findings are there exactly where the image is not the one that the plug-in itself would write;
// but for the few names that it does write, and that are odd.
void expectAgreement(const Bytes& bytes)
{
    Bytes written;
    const Outcome outcome = readerSays(bytes, written);
    const ImageReport report = check(bytes);
    EXPECT_EQ(report.outcome == Outcome::Partly ? Outcome::Taken : report.outcome, outcome);
    const bool perfect = outcome == Outcome::Taken && written == bytes;
    const bool onlyNames =
        std::all_of(report.findings.begin(), report.findings.end(),
                    [](const Finding& finding) { return finding.text.rfind("the name", 0) == 0; });
    EXPECT_EQ(perfect, onlyNames) << (report.findings.empty() ? "" : report.findings[0].text);
}

TEST(ImageCheck, AgreesWithTheReadersOnEveryTruncationAndEveryChangedByte)
{
    const Bytes good = goodPreset();
    for (std::size_t size = 0; size <= good.size(); ++size) {
        SCOPED_TRACE(size);
        Bytes bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
        expectAgreement(bytes);
        if (size >= kFileHeaderSize) {
            put(bytes, 21, static_cast<std::uint32_t>(size - kFileHeaderSize));
            expectAgreement(bytes);
        }
        ASSERT_FALSE(HasFailure());
    }
    for (std::size_t at = 0; at < good.size(); ++at) {
        SCOPED_TRACE(at);
        for (const int mask : {0x01, 0x02, 0x10, 0x1A, 0x40, 0x80, 0xFF}) {
            Bytes bytes = good;
            bytes[at] = static_cast<std::uint8_t>(bytes[at] ^ mask);
            expectAgreement(bytes);
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(ImageCheck, AgreesWithTheReadersOnBanksWithSeveralFaults)
{
    std::mt19937 random(20);
    const Bytes good = goodBank();
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        Bytes bytes = good;
        for (int change = 0; change < 3; ++change) {
            // Heads and ids more often than the rest: there is more to go wrong.
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
