// The per-user store and its files, shared by several instances.
#include "platform/Files.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/presets/TestStore.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <future>
#include <map>

using namespace handmade;

namespace {

struct Store : testing::Test {
    const StorePlace place = StorePlace();
    SystemStore store = openStore(place.name), other = openStore(place.name);
};

TEST_F(Store, ReadsWhatAnotherInstanceHasWritten)
{
    for (const Bytes& value : {Bytes(2065, 'x'), Bytes(3, 'y'), Bytes()}) {
        other.write("MemoA", value);
        EXPECT_EQ(store.read("MemoA"), value);
    }
    for (int round = 0; round < 2; ++round)  // removing an absent value is allowed
        other.remove("MemoA");
    EXPECT_FALSE(store.read("MemoA"));
    EXPECT_FALSE(store.readText("CurrDir"));
    EXPECT_EQ(place.count(), 0);
}

TEST_F(Store, TextsKeepAllOfUnicodeAndAreAbsentWhenTheyAreTooLong)
{
    // 1023 UTF-16 code units and their terminator are within 2050 bytes.
    for (const std::string& text :
         {std::string(), std::string("/tmp/ab/"), std::string(u8"/Musik/Größer als 中文/"),
          std::string("\xF0\x9F\x8E\x9A beyond 16 bits"), std::string(1023, 'm')}) {
        store.writeText("CurrDir", text);
        EXPECT_EQ(other.readText("CurrDir"), text);
    }
    store.writeText("CurrDir", std::string(2051, 'm'));
    EXPECT_FALSE(store.readText("CurrDir"));
}

// Two instances write a long and a short value as fast as they can; a reader always finds one of
// the two, complete.
TEST_F(Store, NobodyReadsHalfAValue)
{
    const std::map<std::uint8_t, std::size_t> written{{'l', 48617}, {'s', 2065}};
    store.write("DefaultBank", Bytes(48617, 'l'));
    const auto start = [this](const Bytes& value) {
        return std::async(std::launch::async, [this, value] {
            SystemStore writer = openStore(place.name);
            for (int i = 0; i < 400; ++i)
                writer.write("DefaultBank", value);
        });
    };
    const auto isOver = [](const std::future<void>& writer) {
        return writer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    std::uint8_t last = 'l';
    int changes = 0;
    // Repeated, since one writer may finish before the other begins.
    for (int round = 0; round < 20 && changes < 5; ++round) {
        const std::future<void> writers[] = {start(Bytes(48617, 'l')), start(Bytes(2065, 's'))};
        while (!isOver(writers[0]) || !isOver(writers[1])) {
            const auto value = store.read("DefaultBank");
            ASSERT_TRUE(value) << "the value was missing after " << changes << " changes";
            ASSERT_FALSE(value->empty());
            const std::uint8_t letter = value->front();
            ASSERT_EQ(written.count(letter), 1u);
            ASSERT_EQ(*value, Bytes(written.at(letter), letter));
            changes += letter == last ? 0 : 1;
            last = letter;
        }
    }
    EXPECT_GE(changes, 5) << "the writers hardly overlapped: nothing was tested";
    EXPECT_EQ(place.count(), 1) << "a writer has left something behind";
}

TEST(SavedFile, IsReplacedWholeAndReadUpToALimit)
{
    const TemporaryFolder folder(u8" gespeichert ü中");
    const std::string path = folder / u8"Bänke.zkb";
    for (const Bytes& bytes : {goodBank(1, 3), Bytes{1, 2, 3}, goodBank(2, 4), Bytes()}) {
        EXPECT_TRUE(platform::replaceFile(path, bytes));
        EXPECT_EQ(contentOf(path), std::string(bytes.begin(), bytes.end()));
        EXPECT_EQ(platform::readFile(path, bytes.size()), bytes);
    }
    EXPECT_TRUE(platform::replaceFile(path, {1, 2, 3}));
    EXPECT_EQ(platform::readFile(path, 2), (Bytes{1, 2}));
    const std::string itself = folder.path().u8string();
    EXPECT_FALSE(platform::replaceFile(itself, {1}));
    EXPECT_FALSE(platform::readFile(itself, 9));
    EXPECT_FALSE(platform::replaceFile(folder / "missing/file", {1}));
    EXPECT_EQ(folder.count(), 1);
}

}  // namespace
