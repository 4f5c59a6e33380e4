// Banks, presets and states with any byte changed or any number of bytes cut off: what is in the
// bank afterwards is what the remaining records say, or what was there before.
//
// ZKR_EVERY_BYTE=1 in the environment tries all 255 other values of every byte of a whole bank's
// records, and not only three of each.
#include "HandMadeImages.h"
#include "OpenedController.h"

#include "public.sdk/source/common/memorystream.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace handmade;

namespace {

constexpr std::size_t kHeader = 41;
constexpr std::size_t kStateStart = 8;
constexpr std::size_t kPresetBefore = 4;  // selected before anything is loaded

std::vector<std::uint8_t> allOthers(std::uint8_t byte)
{
    std::vector<std::uint8_t> values;
    for (unsigned value = 0; value < 256; ++value)
        if (value != byte)
            values.push_back(static_cast<std::uint8_t>(value));
    return values;
}

// Single bits and the edges of ranges.
std::vector<std::uint8_t> bitsAndEdges(std::uint8_t byte)
{
    std::vector<std::uint8_t> values;
    for (unsigned bit = 0; bit < 8; ++bit)
        values.push_back(static_cast<std::uint8_t>(byte ^ 1u << bit));
    for (const unsigned edge : {0x00u, 0x7Fu, 0x80u, 0xFFu})
        if (edge != byte && std::find(values.begin(), values.end(), edge) == values.end())
            values.push_back(static_cast<std::uint8_t>(edge));
    return values;
}

std::vector<std::uint8_t> outerBits(std::uint8_t byte)
{
    return {static_cast<std::uint8_t>(byte ^ 0x01), static_cast<std::uint8_t>(byte ^ 0x80),
            static_cast<std::uint8_t>(~byte)};
}

bool everyByte()
{
    const char* wish = std::getenv("ZKR_EVERY_BYTE");
    return wish && *wish == '1';
}

// A file of its own in a folder of its own, which the process leaves at the end.
class ChangingFile {
public:
    ChangingFile() : startedIn(std::filesystem::current_path())
    {
        static int count = 0;
        folder = std::filesystem::path(testing::TempDir())
            / ("zkrt46-corruption-" + std::to_string(++count) + "-"
               + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
        std::filesystem::create_directories(folder);
        path = (folder / "image").make_preferred().string();
    }
    ~ChangingFile()
    {
        file.close();
        std::filesystem::current_path(startedIn);
        std::filesystem::remove_all(folder);
    }

    void write(const Bytes& bytes)
    {
        file.close();
        file.open(path, std::ios::binary | std::ios::out | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        file.close();
        file.open(path, std::ios::binary | std::ios::in | std::ios::out);
    }
    void put(std::size_t position, std::uint8_t byte)
    {
        file.seekp(static_cast<std::streamoff>(position));
        file.put(static_cast<char>(byte));
        file.flush();
    }
    void cut(std::size_t length)
    {
        file.close();
        std::filesystem::resize_file(path, length);
    }

    std::string path;

private:
    std::filesystem::path startedIn, folder;
    std::fstream file;
};

class Corruption : public testing::Test {
protected:
    Corruption() : before(controller.now())
    {
        // Nothing of this is in the images that are read.
        EXPECT_EQ(before.loadStoredBank(goodBank(9, kPresetBefore)), 1);
        before.state = stateOf(goodBank(9, kPresetBefore));
        expected::Controller other = before;
        EXPECT_EQ(other.loadStoredPreset(goodPreset(8)), 1);
        before.reset = other.bank[kPresetBefore];
        expected = before;
    }

    void startAnew()
    {
        controller.become(before);
        expected = before;
    }

    void setState(Bytes& bytes)
    {
        Steinberg::MemoryStream stream(bytes.data(), static_cast<Steinberg::TSize>(bytes.size()));
        controller.setState(&stream);
    }

    void tryBankFile(ChangingFile& file, const Bytes& image)
    {
        startAnew();
        controller.loadBank(file.path.c_str(), false);
        const int selections = expected.loadBankFile(image);
        ASSERT_TRUE(controller.is(expected, selections));
        ++tried;
    }
    void tryPresetFile(ChangingFile& file, const Bytes& image)
    {
        startAnew();
        controller.loadPreset(file.path.c_str(), false);
        const int selections = expected.loadPresetFile(image);
        ASSERT_TRUE(controller.is(expected, selections));
        ++tried;
    }
    void tryStoredBank(const Bytes& image)
    {
        startAnew();
        store.values["DefaultBank"] = image;
        controller.loadDefaultBank();
        const int selections = expected.loadStoredBank(image);
        ASSERT_TRUE(controller.is(expected, selections));
        ++tried;
    }
    void tryStoredPreset(const Bytes& image)
    {
        startAnew();
        store.values["MemoB"] = image;
        controller.loadMemoB();
        const int selections = expected.loadStoredPreset(image);
        ASSERT_TRUE(controller.is(expected, selections));
        ++tried;
    }
    void tryState(Bytes& state)
    {
        startAnew();
        setState(state);
        const int selections = expected.loadState(state);
        ASSERT_TRUE(controller.is(expected, selections));
        ++tried;
    }

    // Runs `attempt` with each byte of [first, last) changed to each of `others`.
    template <typename Others, typename Attempt>
    void changeBytes(Bytes& image, std::size_t first, std::size_t last, Others others,
                     Attempt attempt)
    {
        for (std::size_t i = first; i < last && !HasFatalFailure(); ++i) {
            const std::uint8_t good = image[i];
            for (const std::uint8_t value : others(good)) {
                image[i] = value;
                attempt(i);
                if (HasFatalFailure()) {
                    ADD_FAILURE() << "byte " << i << " changed to " << unsigned{value};
                    break;
                }
            }
            image[i] = good;
        }
    }

    void TearDown() override { RecordProperty("tried", std::to_string(tried)); }

    platform::MemoryStore store;
    OpenedController controller{store};
    expected::Controller before, expected;
    std::int64_t tried = 0;
};

}  // namespace

// --- Bytes cut off ---

TEST_F(Corruption, ACutOffBankFileChangesNothingAndSelectsPreset0OnceItsKindIsThere)
{
    const Bytes good = goodBank(1, 7);
    ChangingFile file;
    file.write(good);
    for (std::size_t length = good.size(); length-- > 0;) {
        file.cut(length);
        controller.become(before);
        controller.loadBank(file.path.c_str(), false);
        expected = before;
        expected.selected = length < 5 ? kPresetBefore : 0;
        ASSERT_TRUE(controller.is(expected, length < 5 ? 0 : 1)) << length << " bytes";
        ++tried;
    }
    EXPECT_EQ(tried, 48617);
}

TEST_F(Corruption, ACutOffPresetFileChangesNothing)
{
    const Bytes good = goodPreset(1);
    ChangingFile file;
    file.write(good);
    for (std::size_t length = good.size(); length-- > 0;) {
        file.cut(length);
        controller.become(before);
        controller.loadPreset(file.path.c_str(), false);
        ASSERT_TRUE(controller.is(before, 0)) << length << " bytes";
        ++tried;
    }
    EXPECT_EQ(tried, 2065);
}

TEST_F(Corruption, ACutOffStoredImageChangesNothing)
{
    for (Bytes image = goodBank(1, 7); !image.empty();) {
        image.pop_back();
        store.values["DefaultBank"] = image;
        controller.become(before);
        controller.loadDefaultBank();
        ASSERT_TRUE(controller.is(before, 0)) << image.size() << " bytes";
        ++tried;
    }
    for (Bytes image = goodPreset(1); !image.empty();) {
        image.pop_back();
        store.values["MemoB"] = image;
        controller.become(before);
        controller.loadMemoB();
        ASSERT_TRUE(controller.is(before, 0)) << image.size() << " bytes";
        ++tried;
    }
    EXPECT_EQ(tried, 48617 + 2065);
}

TEST_F(Corruption, OfACutOffStateTheRestIsWhatTheBufferHeld)
{
    for (Bytes state = stateOf(goodBank(1, 7)); !state.empty() && !HasFatalFailure();) {
        state.pop_back();
        tryState(state);
        EXPECT_FALSE(HasFatalFailure()) << state.size() << " bytes";
    }
    EXPECT_EQ(tried, 48625);
}

// --- Bytes changed ---

// A file differs from a stored image in its header only, which tells where the records end.
TEST_F(Corruption, EveryChangeOfAFilesHeaderIsSurvived)
{
    for (const bool bigEndian : {false, true}) {
        ChangingFile file;
        Bytes bank = goodBank(1, 7, bigEndian), preset = goodPreset(1, bigEndian);
        file.write(bank);
        const Bytes goodHeader(bank.begin(), bank.begin() + kHeader);
        changeBytes(bank, 0, kHeader, allOthers, [&](std::size_t position) {
            file.put(position, bank[position]);
            tryBankFile(file, bank);
            file.put(position, goodHeader[position]);
        });
        file.write(preset);
        const Bytes goodStart(preset.begin(), preset.begin() + kHeader);
        changeBytes(preset, 0, kHeader, allOthers, [&](std::size_t position) {
            file.put(position, preset[position]);
            tryPresetFile(file, preset);
            file.put(position, goodStart[position]);
        });
    }
    EXPECT_EQ(tried, 4 * 41 * 255);
}

TEST_F(Corruption, EveryChangeOfAStoredPresetIsSurvived)
{
    Bytes image = goodPreset(1);
    changeBytes(image, 0, image.size(), allOthers, [&](std::size_t) { tryStoredPreset(image); });
    EXPECT_EQ(tried, 2065 * 255);

    image = goodPreset(1, true);
    changeBytes(image, 0, image.size(), bitsAndEdges, [&](std::size_t) { tryStoredPreset(image); });
    EXPECT_GE(tried, 2065 * 255 + 2065 * 9);
}

TEST_F(Corruption, EveryChangeOfAStoredBanksHeaderIsSurvived)
{
    Bytes image = goodBank(1, 7);
    changeBytes(image, 0, kHeader, allOthers, [&](std::size_t) { tryStoredBank(image); });
    EXPECT_EQ(tried, 41 * 255);
}

TEST_F(Corruption, EveryChangeOfAStatesHeaderIsSurvived)
{
    Bytes state = stateOf(goodBank(1, 7));
    changeBytes(state, 0, kStateStart + kHeader, allOthers, [&](std::size_t) { tryState(state); });
    EXPECT_EQ(tried, (8 + 41) * 255);
}

// Every byte of the records through the whole controller, once; the next test tries the values.
TEST_F(Corruption, EveryInvertedByteOfABankOrAStateIsSurvived)
{
    const auto inverted = [](std::uint8_t byte) {
        return std::vector<std::uint8_t>{static_cast<std::uint8_t>(~byte)};
    };
    Bytes image = goodBank(1, 7), state = stateOf(goodBank(2, 7));
    changeBytes(image, kHeader, image.size(), inverted, [&](std::size_t) { tryStoredBank(image); });
    changeBytes(state, kStateStart + kHeader, state.size(), inverted,
                [&](std::size_t) { tryState(state); });
    EXPECT_EQ(tried, 2 * 48576);
}

// The records of a bank, as the reader of both banks and states takes them. Where each one lies is
// known as long as no size changes, so only what the changed byte says has to be worked out again.
class CorruptRecords : public Corruption {
protected:
    template <typename Others>
    void changeRecords(Bytes& image, std::int64_t count, Others others)
    {
        const auto list = [&] {
            return expected::listRecords(image, kHeader, image.size(), count, false);
        };
        const std::vector<expected::Record> good = *list();
        std::vector<expected::Record> records = good;
        expected::Bank whole = before.bank;
        ASSERT_TRUE(expected::takeForBank(image, good, false, before.reset, whole));

        PresetSlot reset;
        std::memcpy(&reset, before.reset.data(), sizeof reset);
        std::vector<PresetSlot> bank(24);
        std::size_t which = 0;  // the record that the byte lies in
        changeBytes(image, kHeader, image.size(), others, [&](std::size_t position) {
            while (which + 1 < good.size() && position >= good[which + 1].body - 12)
                ++which;
            const std::size_t start = good[which].body - 12, offset = position - start;
            // After the name, and around the value.
            const bool isReserved =
                good[which].kind == 0 ? offset >= 36 : offset >= 28 || offset / 8 == 2;
            expected::Bank wanted = isReserved ? whole : before.bank;
            bool taken = true;
            if (offset >= 4 && offset < 8) {
                const auto all = list();
                taken = all && expected::takeForBank(image, *all, false, before.reset, wanted);
            } else if (!isReserved) {
                records[which] = expected::recordAt(image, start, false);
                taken = expected::takeForBank(image, records, false, before.reset, wanted);
                records[which] = good[which];
            }
            std::memcpy(bank.data(), before.bank.data(), sizeof before.bank);
            ASSERT_EQ(readBankRecords({image.data() + kHeader, image.size() - kHeader},
                                      static_cast<std::int32_t>(count), false, reset, bank.data()),
                      taken);
            ASSERT_EQ(std::memcmp(bank.data(), wanted.data(), sizeof wanted), 0);
            ++tried;
        });
    }
};

TEST_F(CorruptRecords, EveryChangeOfABankOfOnePresetIsSurvived)
{
    for (const unsigned preset : {0u, 23u}) {
        Image one;
        addPreset(one, 1, preset);
        Bytes image = one.finish(kBank);
        changeRecords(image, 59, allOthers);
    }
    EXPECT_EQ(tried, 2 * 2024 * 255);
}

TEST_F(CorruptRecords, EveryChangeOfAWholeBankIsSurvived)
{
    Bytes image = goodBank(1, 7);
    if (everyByte())
        changeRecords(image, 1416, allOthers);
    else
        changeRecords(image, 1416, outerBits);
    EXPECT_EQ(tried, 48576 * (everyByte() ? 255 : 3));
}
