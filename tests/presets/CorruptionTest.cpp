// Banks, presets and states with bytes changed or cut off: what is in the bank afterwards is what
// the remaining records say, or what was there before.
#include "HandMadeImages.h"
#include "OpenedController.h"

#include "public.sdk/source/common/memorystream.h"

#include <gtest/gtest.h>

#include <functional>

using namespace handmade;

namespace {

constexpr std::size_t kHeader = 41, kName = 168, kStatePrefix = 8;
// Has no factor in common with the 2024 bytes of a preset's records: in a bank of 24, each of their
// places is met in one preset or another.
constexpr unsigned kStride = 21;

struct Corruption : testing::Test {
    Corruption()
    {
        // Nothing of this is in the images that are read.
        EXPECT_EQ(checked.start.loadImage(goodBank(9, 4), 0x38, false, false), 1);
        expected::Controller other = checked.start;
        EXPECT_EQ(other.loadImage(goodPreset(8), 0x22, false, false), 1);
        checked.start.reset = other.bank[4];
    }

    bool loadsState(Bytes& state)
    {
        Bytes buffer = stateOf(goodBank(9, 4));
        checked.controller.become(checked.wanted = checked.start);
        checked.controller.setStateBuffer(buffer);
        Steinberg::MemoryStream stream(state.data(), static_cast<Steinberg::TSize>(state.size()));
        checked.controller.setState(&stream);
        return checked.controller.is(checked.wanted, checked.wanted.loadState(state, buffer));
    }
    bool changedNothing() const { return checked.wanted.bank == checked.start.bank; }

    CheckedController checked;
};

// A good image, where it is read from, and in how many lengths or values there is one to try.
struct Row {
    const char* name;
    Bytes image;
    Road road;
    unsigned every;
};

// In either order of bytes, also turned round once more, of the kind that is asked for or the
// other, and with whatever behind the records, be it more than is ever read of a file.
TEST_F(Corruption, AGoodImageIsTakenUnlessItsKindOrOrderIsAnother)
{
    for (const bool bigEndian : {false, true})
        for (const bool reversed : {false, true})
            for (const Road road : {Road::BankFile, Road::PresetFile}) {
                const bool isBank = road == Road::BankFile;
                Bytes images[] = {goodBank(1, 7, bigEndian), goodPreset(1, bigEndian)};
                Bytes& own = images[isBank ? 0 : 1];
                const Bytes& other = images[isBank ? 1 : 0];
                EXPECT_TRUE(checked.loads(road, own, reversed)) << bigEndian << reversed;
                EXPECT_EQ(changedNothing(), reversed);
                EXPECT_TRUE(checked.loads(road, other, reversed)) << bigEndian << reversed;
                EXPECT_TRUE(changedNothing());
                for (const std::size_t size : {own.size() + 1, kMostOfFile + 1}) {
                    own.resize(size);
                    EXPECT_TRUE(checked.loads(road, own, reversed)) << size;
                    EXPECT_EQ(changedNothing(), reversed);
                }
            }
}

TEST_F(Corruption, WhatIsNotKnownIsPassedOver)
{
    Image image;
    image.name(2, "Named").value(2, 58, 2.0f).value(24, 1, 2.0f).head(7, 5, 2).zeros(5);
    image.head(0, 23, 2).zeros(23).head(1, 15, 2).zeros(15).value(2, 57, 0.25f);
    EXPECT_TRUE(checked.loads(Road::StoredBank, image.finish(kBank)));
    EXPECT_FALSE(changedNothing());
    EXPECT_TRUE(checked.loads(Road::StoredPreset, Image().value(0, 58, 2.0f).finish(kPreset)));
    EXPECT_FALSE(changedNothing());
}

// Every length up to the middle of the second value record, then every so many.
void cutOff(const Row& row, const std::function<bool(Bytes&)>& loads)
{
    Bytes image = row.image;
    const std::size_t dense = kStatePrefix + kHeader + kName + 48;
    while (!image.empty()) {
        image.resize(image.size() - (image.size() > dense + row.every ? row.every : 1));
        ASSERT_TRUE(loads(image)) << row.name << " of " << image.size() << " bytes";
    }
}

TEST_F(Corruption, ACutOffImageChangesNothing)
{
    const Row rows[] = {
        {"bank file", goodBank(1, 7), Road::BankFile, kStride},
        {"preset file", goodPreset(1), Road::PresetFile, 1},
        {"stored bank", goodBank(1, 7), Road::StoredBank, kStride},
        {"stored preset", goodPreset(1), Road::StoredPreset, 1},
    };
    for (const Row& row : rows)
        cutOff(row, [&](const Bytes& image) {
            const bool selects0 = row.road == Road::BankFile && image.size() >= 5;
            return checked.loads(row.road, image) && changedNothing()
                && checked.controller.getCurrentPreset() == (selects0 ? 0 : 4);
        });
}

TEST_F(Corruption, OfACutOffStateTheRestIsWhatTheBufferHeld)
{
    cutOff({"state", stateOf(goodBank(1, 7)), {}, kStride},
           [&](Bytes& state) { return loadsState(state); });
}

// The bytes of [first, last) that are `stride` apart, with one of `step` other values. A step of 17
// still tries all values at each place of a record, since there are 58 records of 32 bytes.
void change(Bytes image, std::size_t first, std::size_t last, std::size_t stride, unsigned step,
            const std::function<bool(Bytes&)>& loads)
{
    for (std::size_t at = first; at < last; at += stride) {
        const std::uint8_t good = image[at];
        for (unsigned by = 1 + static_cast<unsigned>(at) % step; by < 256; by += step) {
            image[at] = static_cast<std::uint8_t>(good + by);
            ASSERT_TRUE(loads(image)) << "byte " << at << " changed to " << unsigned{image[at]};
        }
        image[at] = good;
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
    for (const bool bigEndian : {false, true})
        for (const Road road :
             {Road::BankFile, Road::PresetFile, Road::StoredBank, Road::StoredPreset}) {
            SCOPED_TRACE(testing::Message()
                         << "road " << static_cast<int>(road) << ", big-endian " << bigEndian);
            const bool isBank = road == Road::BankFile || road == Road::StoredBank;
            const bool isFile = road == Road::BankFile || road == Road::PresetFile;
            change(isBank ? bankOfOne(bigEndian) : goodPreset(1, bigEndian), 0, kHeader, 1,
                   isFile ? 3 : 1, [&](const Bytes& image) { return checked.loads(road, image); });
        }
    change(stateOf(bankOfOne(false)), 0, kStatePrefix + kHeader, 1, 1,
           [&](Bytes& state) { return loadsState(state); });
}

TEST_F(Corruption, EveryChangeOfARecordIsSurvived)
{
    const Row rows[] = {
        {"preset", goodPreset(1), Road::StoredPreset, 1},
        {"big-endian preset", goodPreset(1, true), Road::StoredPreset, 5},
        {"bank", bankOfOne(false), Road::StoredBank, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto loads = [&](const Bytes& image) { return checked.loads(row.road, image); };
        change(row.image, kHeader, kHeader + kName, 1, row.every, loads);
        change(row.image, kHeader + kName, row.image.size(), 1, 17 * row.every, loads);
    }
}

// Where each record of all presets lies.
TEST_F(Corruption, ChangedBytesOfABankOrAStateAreSurvived)
{
    const Bytes bank = goodBank(1, 7), state = stateOf(goodBank(2, 7));
    change(bank, kHeader, bank.size(), kStride, 255,
           [&](const Bytes& image) { return checked.loads(Road::StoredBank, image); });
    change(state, kStatePrefix + kHeader, state.size(), kStride, 255,
           [&](Bytes& image) { return loadsState(image); });
}

}  // namespace
