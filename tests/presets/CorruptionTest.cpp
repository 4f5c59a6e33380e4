// Banks, presets and states with any byte changed or any number of bytes cut off: what is in the
// bank afterwards is what the remaining records say, or what was there before.
#include "HandMadeImages.h"
#include "OpenedController.h"

#include "public.sdk/source/common/memorystream.h"

#include <gtest/gtest.h>

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

std::vector<std::uint8_t> outerBits(std::uint8_t byte)
{
    return {static_cast<std::uint8_t>(byte ^ 0x01), static_cast<std::uint8_t>(byte ^ 0x80),
            static_cast<std::uint8_t>(~byte)};
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

    void setState(Bytes& bytes)
    {
        Steinberg::MemoryStream stream(bytes.data(), static_cast<Steinberg::TSize>(bytes.size()));
        controller.setState(&stream);
    }

    // Both load the same image, the code under test and what is expected of it.
    template <typename Load, typename Expectation>
    void expectSame(Load load, Expectation expectation)
    {
        controller.become(before);
        expected = before;
        load();
        const int selections = expectation();
        ASSERT_TRUE(controller.is(expected, selections));
        ++tried;
    }
    void tryBankFile(ChangingFile& file, const Bytes& image)
    {
        expectSame([&] { controller.loadBank(file.path.c_str(), false); },
                   [&] { return expected.loadBankFile(image); });
    }
    void tryPresetFile(ChangingFile& file, const Bytes& image)
    {
        expectSame([&] { controller.loadPreset(file.path.c_str(), false); },
                   [&] { return expected.loadPresetFile(image); });
    }
    void tryStoredBank(const Bytes& image)
    {
        store.values["DefaultBank"] = image;
        expectSame([&] { controller.loadDefaultBank(); },
                   [&] { return expected.loadStoredBank(image); });
    }
    void tryStoredPreset(const Bytes& image)
    {
        store.values["MemoB"] = image;
        expectSame([&] { controller.loadMemoB(); },
                   [&] { return expected.loadStoredPreset(image); });
    }
    void tryState(Bytes& state)
    {
        expectSame([&] { setState(state); }, [&] { return expected.loadState(state); });
    }

    // Runs `attempt` with an image that is shorter by a byte each time, down to none.
    template <typename Attempt>
    void cutOff(Bytes image, Attempt attempt)
    {
        while (!image.empty() && !HasFatalFailure()) {
            image.pop_back();
            attempt(image);
            EXPECT_FALSE(HasFatalFailure()) << image.size() << " bytes";
        }
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
    ChangingFile file;
    file.write(goodBank(1, 7));
    cutOff(goodBank(1, 7), [&](const Bytes& image) {
        file.cut(image.size());
        tryBankFile(file, image);
        ASSERT_EQ(expected.bank, before.bank);
        ASSERT_EQ(expected.selected, image.size() < 5 ? kPresetBefore : 0);
    });
    EXPECT_EQ(tried, 48617);
}

TEST_F(Corruption, ACutOffPresetFileChangesNothing)
{
    ChangingFile file;
    file.write(goodPreset(1));
    cutOff(goodPreset(1), [&](const Bytes& image) {
        file.cut(image.size());
        tryPresetFile(file, image);
        ASSERT_EQ(expected.bank, before.bank);
    });
    EXPECT_EQ(tried, 2065);
}

TEST_F(Corruption, ACutOffStoredImageChangesNothing)
{
    cutOff(goodBank(1, 7), [&](const Bytes& image) {
        tryStoredBank(image);
        ASSERT_EQ(expected.bank, before.bank);
    });
    cutOff(goodPreset(1), [&](const Bytes& image) {
        tryStoredPreset(image);
        ASSERT_EQ(expected.bank, before.bank);
    });
    EXPECT_EQ(tried, 48617 + 2065);
}

TEST_F(Corruption, OfACutOffStateTheRestIsWhatTheBufferHeld)
{
    cutOff(stateOf(goodBank(1, 7)), [&](Bytes& state) { tryState(state); });
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
    changeBytes(image, 0, image.size(), outerBits, [&](std::size_t) { tryStoredPreset(image); });
    EXPECT_EQ(tried, 2065 * 255 + 2065 * 3);
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

TEST_F(Corruption, EveryChangeOfABankOfOnePresetIsSurvived)
{
    Image one;
    addPreset(one, 1, 23);
    Bytes image = one.finish(kBank);
    changeBytes(image, kHeader, image.size(), allOthers,
                [&](std::size_t) { tryStoredBank(image); });
    EXPECT_EQ(tried, 2024 * 255);
}

// Where each record lies, once.
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
