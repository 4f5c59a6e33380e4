// The words for faulty images, and that they are never at odds with the readers of the plug-in.
#include "ImageCheck.h"
#include "HandMadeImages.h"
#include "PresetFile.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
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

struct Case {
    Bytes (*make)();
    std::function<void(Bytes&)> damage;
    Outcome outcome;
    bool isFault;
    std::size_t offset;
    const char* words;
};

TEST(ImageCheck, NamesTheFaultTheByteAndTheConsequence)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Case cases[]{
        {goodPreset, [](Bytes& b) { b.resize(4); }, Outcome::Ignored, true, 4, "first five bytes"},
        {goodPreset, [](Bytes& b) { b[0] = 'x'; }, Outcome::Ignored, true, 0, "no preset and no"},
        {goodPreset, [](Bytes& b) { b[4] = 0x39; }, Outcome::NoEffect, true, 4, "kind is 0x39"},
        {goodBank, [](Bytes& b) { b.resize(40); }, Outcome::NoEffect, true, 40, "header of 41"},
        {goodPreset, [](Bytes& b) { put(b, 21, 0xFFFFFFFF); }, Outcome::NoEffect, true, 21,
         "negative, -1"},
        {goodPreset, [](Bytes& b) { put(b, 21, 2025); }, Outcome::NoEffect, true, 21,
         "is 2025, but only 2024 bytes"},
        {goodPreset,
         [](Bytes& b) {
             b.resize(kMostOfFile + 2);
             put(b, 21, kMostOfFile - 41 + 1);
         },
         Outcome::NoEffect, true, 21, "first 16 MiB"},
        {goodPreset, [](Bytes& b) { b.resize(kMostOfFile + 2); }, Outcome::Partly, false, 2065,
         "16775153 bytes follow"},
        {goodBank, [](Bytes& b) { put(b, 13, 0x80000000); }, Outcome::NoEffect, true, 13,
         "record count is negative"},
        {goodPreset, [](Bytes& b) { put(b, 13, 0x80000000); }, Outcome::Partly, true, 13, "resets"},
        {goodPreset, [](Bytes& b) { put(b, 13, 60); }, Outcome::Undone, true, 2065,
         "record 60 of 60 should begin here"},
        // The last record begins at 41 + 168 + 57 * 32 = 2033, with 8 and with 18 bytes left.
        {goodPreset, [](Bytes& b) { put(b, 21, 2000); }, Outcome::Undone, true, 2033,
         "record 59 of 59 is cut off in its head of 12 bytes: 8 bytes"},
        {goodPreset, [](Bytes& b) { put(b, 21, 2010); }, Outcome::Undone, true, 2033 + 4,
         "20 bytes follow its head, but only 6 are left"},
        {goodPreset, [](Bytes& b) { put(b, 41 + 4, 0xFFFFFFF0); }, Outcome::Undone, true, 45,
         "record 1 of 59 has the negative size -16"},
        {goodPreset, [](Bytes& b) { put(b, 41 + 4, 5000); }, Outcome::Undone, true, 45,
         "5000 bytes follow its head, but only 2012 are left"},
        {goodPreset, [](Bytes& b) { putFloat(b, kValueOf28, 1.5f); }, Outcome::Undone, true, 1129,
         "parameter 28 is 1.5, which lies outside 0 to 1"},
        {goodPreset, [nan](Bytes& b) { putFloat(b, kValueOf28, nan); }, Outcome::Undone, true, 1129,
         "is nan"},
        {goodBank, [](Bytes& b) { putFloat(b, kPreset5 + 168 + 24, -0.25f); }, Outcome::Undone,
         true, kPreset5 + 168 + 24, "parameter 0 of preset 5 is -0.25"},
        {goodPreset, [](Bytes& b) { put(b, 5, 7); }, Outcome::Taken, false, 5, "format word"},
        {goodPreset, [](Bytes& b) { put(b, 9, 57); }, Outcome::Taken, false, 9, "57 instead of 58"},
        {goodBank, [](Bytes& b) { put(b, 17, 24); }, Outcome::Taken, false, 17, "preset 0 is"},
        {goodPreset, [](Bytes& b) { b[30] = 1; }, Outcome::Taken, false, 30, "reserved"},
        {goodPreset, [](Bytes& b) { b.push_back(0); }, Outcome::Partly, false, 2065, "1 bytes"},
        {goodPreset, [](Bytes& b) { put(b, 41, 9); }, Outcome::Partly, false, 41, "unknown kind 9"},
        {goodPreset, [](Bytes& b) { std::fill_n(&b[53], 24, 'x'); }, Outcome::Taken, false, 53,
         "no terminator"},
        {goodPreset, [](Bytes& b) { b[53 + 20] = 'x'; }, Outcome::Taken, false, 73, "behind its"},
        {goodPreset, [](Bytes& b) { b[53] = 0xE4; }, Outcome::Taken, false, 53,
         "\"\\xE4ox\", is not UTF-8"},
        {goodPreset, [](Bytes& b) { put(b, 41 + 168 + 12, 58); }, Outcome::Partly, false, 221,
         "unknown parameter 58"},
        {goodPreset, [](Bytes& b) { put(b, 41 + 168 + 12, 1); }, Outcome::Partly, false, 253,
         "second value of parameter 1"},
        {goodBank, [](Bytes& b) { put(b, kPreset5 + 8, 24); }, Outcome::Partly, false, kPreset5 + 8,
         "preset 24"},
        {goodBank,
         [](Bytes& b) { std::rotate(&b[kPreset5], &b[kPreset5 + 168], &b[kPreset5] + 2024); },
         Outcome::Partly, false, kPreset5 + 58 * 32, "58 values of preset 5 stand ahead"},
        {[] { return handmade::stateOf(goodBank()); },
         [](Bytes& b) { putFloat(b, 8 + kValueOf28, 2.0f); }, Outcome::Undone, true, 8 + 1129,
         "parameter 28 of preset 0 is 2"},
        {[] { return handmade::stateOf(goodBank()); }, [](Bytes& b) { b.resize(40000); },
         Outcome::Partly, true, 40000, "instead of at byte 48625"},
        {[] { return handmade::stateOf(goodBank()); }, [](Bytes& b) { b[3] = 1; }, Outcome::Taken,
         false, 3, "prefix"},
        {[] { return handmade::stateOf(goodBank()); },
         [](Bytes& b) { std::fill(b.begin(), b.end(), std::uint8_t{0}); }, Outcome::Partly, false,
         8, "magic is not \"64tZ\"; in a state it is not looked at"},
        {[] { return handmade::stateOf(goodBank()); },
         [](Bytes& b) {
             put(b, 8 + 13, 59);
             put(b, 8 + 21, 2024);
             b.resize(8 + 41 + 2024);
         },
         Outcome::Partly, false, 8 + 21, "payload size is 2024"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.words);
        Bytes bytes = one.make();
        EXPECT_TRUE(check(bytes).findings.empty());
        one.damage(bytes);
        const ImageReport report = check(bytes);
        EXPECT_EQ(report.outcome, one.outcome);
        EXPECT_EQ(report.hasFaults(), one.isFault);
        const auto found = std::find_if(
            report.findings.begin(), report.findings.end(), [&](const Finding& finding) {
                return finding.offset == one.offset && finding.isFault == one.isFault
                    && finding.text.find(one.words) != std::string::npos;
            });
        EXPECT_NE(found, report.findings.end())
            << (report.findings.empty() ? "nothing" : report.findings.front().text) << " "
            << (report.findings.empty() ? 0 : report.findings.front().offset.value_or(0));
    }
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
