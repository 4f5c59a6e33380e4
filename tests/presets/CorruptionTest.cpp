// Banks, presets and states with changed bytes or cut short: afterwards the bank holds what the
// remaining valid records say, or is unchanged.
#include "tests/presets/HandMadeImages.h"
#include "tests/presets/OpenedController.h"

#include <gtest/gtest.h>

using namespace handmade;

namespace {

constexpr std::size_t kHeader = 41, kName = 168, kStatePrefix = 8;
// Coprime to the 2024 bytes of a preset's records, so that over the 24 presets of a bank each byte
// position of the records is reached.
constexpr unsigned kStride = 21;

// Changes every `stride`th byte of [first, last), one at a time, to every `step`th other value. A
// step of 17 still tries all values at each offset within a record: there are 58 records.
struct Row {
    const char* name;
    Road road;
    Bytes image;
    std::size_t first, last, stride;
    unsigned step;
};

struct Corruption : testing::Test {
    Corruption()
    {
        // Contents that none of the loaded images has.
        EXPECT_EQ(checked.start.loadImage(goodBank(9, 4), 0x38, false, false), 1);
        expected::Controller other = checked.start;
        EXPECT_EQ(other.loadImage(goodPreset(8), 0x22, false, false), 1);
        checked.start.reset = other.bank[4];
        checked.heldState = stateOf(goodBank(9, 4));
    }

    bool changedNothing() const { return checked.wanted.bank == checked.start.bank; }

    void change(const Row& row)
    {
        Bytes image = row.image;
        for (std::size_t at = row.first; at < row.last; at += row.stride) {
            const std::uint8_t good = image[at];
            for (unsigned by = 1 + static_cast<unsigned>(at) % row.step; by < 256; by += row.step) {
                image[at] = static_cast<std::uint8_t>(good + by);
                ASSERT_TRUE(checked.loads(row.road, image))
                    << row.name << ", byte " << at << " changed to " << unsigned{image[at]};
            }
            image[at] = good;
        }
    }

    CheckedController checked;
};

// In both byte orders, with and without the endian-reversed option, of the requested kind and of
// the other, and with bytes after the records, also beyond the largest size that is read.
TEST_F(Corruption, AGoodImageIsLoadedUnlessItsKindOrByteOrderIsWrong)
{
    for (const bool bigEndian : {false, true})
        for (const bool reversed : {false, true})
            for (const Road road : {Road::BankFile, Road::PresetFile}) {
                const bool isBank = road == Road::BankFile;
                Bytes images[] = {goodBank(1, 7, bigEndian), goodPreset(1, bigEndian)};
                Bytes& own = images[isBank ? 0 : 1];
                EXPECT_TRUE(checked.loads(road, images[isBank ? 1 : 0], reversed));
                EXPECT_TRUE(changedNothing());
                for (const std::size_t size : {own.size(), own.size() + 1, kMaxFileSize + 1}) {
                    own.resize(size);
                    EXPECT_TRUE(checked.loads(road, own, reversed)) << size;
                    EXPECT_EQ(changedNothing(), reversed);
                }
            }
}

TEST_F(Corruption, UnknownRecordsAreSkipped)
{
    Image image;
    image.name(2, "Named").value(2, 58, 2.0f).value(24, 1, 2.0f).head(7, 5, 2).zeros(5);
    image.head(0, 23, 2).zeros(23).head(1, 15, 2).zeros(15).value(2, 57, 0.25f);
    EXPECT_TRUE(checked.loads(Road::StoredBank, image.finish(kBank)));
    EXPECT_FALSE(changedNothing());
    EXPECT_TRUE(checked.loads(Road::StoredPreset, Image().value(0, 58, 2.0f).finish(kPreset)));
    EXPECT_FALSE(changedNothing());
}

// Every length up to the middle of the second value record, then every `every`th. A state that is
// cut short is completed by the previous contents of the state buffer.
TEST_F(Corruption, ACutOffImageChangesNothing)
{
    const struct {
        Bytes image;
        Road road;
        unsigned every;
    } rows[] = {
        {goodBank(1, 7), Road::BankFile, kStride},       {goodPreset(1), Road::PresetFile, 1},
        {goodBank(1, 7), Road::StoredBank, kStride},     {goodPreset(1), Road::StoredPreset, 1},
        {stateOf(goodBank(1, 7)), Road::State, kStride},
    };
    for (const auto& row : rows) {
        Bytes image = row.image;
        const std::size_t dense = kStatePrefix + kHeader + kName + 48;
        while (!image.empty()) {
            image.resize(image.size() - (image.size() > dense + row.every ? row.every : 1));
            ASSERT_TRUE(checked.loads(row.road, image)
                        && (row.road == Road::State || changedNothing()))
                << "road " << static_cast<int>(row.road) << ", " << image.size() << " bytes";
        }
    }
}

Bytes bankOfOne(bool bigEndian)
{
    Image image(bigEndian);
    addPreset(image, 1, 23);
    return image.finish(kBank, 7);
}

TEST_F(Corruption, EveryChangeOfAHeaderIsSurvived)
{
    for (const bool bigEndian : {false, true}) {
        const Bytes bank = bankOfOne(bigEndian), preset = goodPreset(1, bigEndian);
        SCOPED_TRACE(bigEndian ? "big-endian" : "little-endian");
        for (const Row& row : {Row{"bank file", Road::BankFile, bank, 0, kHeader, 1, 3},
                               Row{"preset file", Road::PresetFile, preset, 0, kHeader, 1, 3},
                               Row{"stored bank", Road::StoredBank, bank, 0, kHeader, 1, 1},
                               Row{"stored preset", Road::StoredPreset, preset, 0, kHeader, 1, 1}})
            change(row);
    }
    change({"state", Road::State, stateOf(bankOfOne(false)), 0, kStatePrefix + kHeader, 1, 1});
}

TEST_F(Corruption, EveryChangeOfARecordIsSurvived)
{
    constexpr std::size_t kValues = kHeader + kName;
    const Bytes preset = goodPreset(1), bigPreset = goodPreset(1, true), one = bankOfOne(false);
    const Bytes bank = goodBank(1, 7), state = stateOf(goodBank(2, 7));
    for (const Row& row :
         {Row{"a name", Road::StoredPreset, preset, kHeader, kValues, 1, 1},
          Row{"values", Road::StoredPreset, preset, kValues, preset.size(), 1, 17},
          Row{"a big-endian name", Road::StoredPreset, bigPreset, kHeader, kValues, 1, 5},
          Row{"big-endian values", Road::StoredPreset, bigPreset, kValues, preset.size(), 1, 85},
          Row{"a name of a bank", Road::StoredBank, one, kHeader, kValues, 1, 1},
          Row{"values of a bank", Road::StoredBank, one, kValues, one.size(), 1, 17},
          Row{"a whole bank", Road::StoredBank, bank, kHeader, bank.size(), kStride, 255},
          Row{"a whole state", Road::State, state, kStatePrefix + kHeader, state.size(), kStride,
              255}})
        change(row);
}

}  // namespace
