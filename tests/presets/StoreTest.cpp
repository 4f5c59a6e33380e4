// The per-user store and its files: between processes, among processes, and when a save fails.
#include "Files.h"
#include "HandMadeImages.h"
#include "TestStore.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <future>
#include <map>

using namespace handmade;

namespace {

// Runs store_process to its end.
int runProcess(const std::string& arguments)
{
    const auto program = std::filesystem::path(ZKR_STORE_PROCESS).make_preferred().string();
    return std::system((program + ' ' + arguments).c_str());
}

class Store : public testing::Test {
protected:
    void TearDown() override { discardPlace(place); }

    const std::string place = newPlace();
    const std::unique_ptr<platform::SettingsStore> store = openStore(place);
};

}  // namespace

TEST_F(Store, HoldsWhatAnotherProcessHasWritten)
{
    ASSERT_EQ(runProcess(place + " write MemoA x 2065 1"), 0);
    EXPECT_EQ(store->read("MemoA"), Bytes(2065, 'x'));
    ASSERT_EQ(runProcess(place + " write MemoA y 3 2"), 0);
    EXPECT_EQ(store->read("MemoA"), Bytes(3, 'y')) << "a shorter value replaces the whole";
    ASSERT_EQ(runProcess(place + " remove MemoA"), 0);
    EXPECT_FALSE(store->read("MemoA"));
    ASSERT_EQ(runProcess(place + " remove MemoA"), 0) << "what is absent may be removed";
    EXPECT_EQ(countEntries(place), 0u);
}

TEST_F(Store, WhatIsAbsentIsReadAsNothingAndMakesNothing)
{
    EXPECT_FALSE(store->read("DefaultBank"));
    EXPECT_FALSE(store->readText("CurrDir"));
    store->remove("DefaultBank");
    EXPECT_EQ(countEntries(place), 0u);
    store->write("Empty", {});
    EXPECT_EQ(store->read("Empty"), Bytes());
}

TEST_F(Store, TextsKeepUmlautsAndChinese)
{
    for (const char* text : {"", "a", "/tmp/ab/", u8"/Musik/Größer als 中文/", u8"音.zkr",
                             "\xF0\x9F\x8E\x9A beyond 16 bits"}) {
        store->writeText("CurrDir", text);
        EXPECT_EQ(openStore(place)->readText("CurrDir"), text);
    }
}

TEST_F(Store, ATextIsAbsentWhenItIsTooLong)
{
    // In 16-bit characters with their terminator, 1023 of them are within 2050 bytes.
    store->writeText("ManualPath", std::string(1023, 'm'));
    EXPECT_EQ(store->readText("ManualPath"), std::string(1023, 'm'));
    store->writeText("ManualPath", std::string(2051, 'm'));
    EXPECT_FALSE(store->readText("ManualPath"));
}

// Two processes write long and short values by turns as fast as they can; whoever reads meanwhile
// finds one of the two.
TEST_F(Store, NobodyReadsHalfAValue)
{
    const std::map<std::uint8_t, std::size_t> written{{'l', 48617}, {'s', 2065}};
    store->write("DefaultBank", Bytes(48617, 'l'));
    const auto start = [this](const std::string& value) {
        return std::async(std::launch::async, [this, value] {
            return runProcess(place + " write DefaultBank " + value + " 400");
        });
    };
    const auto isOver = [](std::future<int>& writer) {
        return writer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    std::uint8_t last = 'l';
    int changes = 0;
    // Now and then one writer is done before the other begins.
    for (int round = 0; round < 20 && changes < 5; ++round) {
        std::future<int> writers[] = {start("l 48617"), start("s 2065")};
        while (!isOver(writers[0]) || !isOver(writers[1])) {
            const auto value = store->read("DefaultBank");
            ASSERT_TRUE(value) << "the value was away after " << changes << " changes";
            ASSERT_FALSE(value->empty());
            const std::uint8_t letter = value->front();
            ASSERT_EQ(written.count(letter), 1u);
            ASSERT_EQ(*value, Bytes(written.at(letter), letter));
            changes += letter == last ? 0 : 1;
            last = letter;
        }
        EXPECT_EQ(writers[0].get(), 0);
        EXPECT_EQ(writers[1].get(), 0);
    }
    EXPECT_GE(changes, 5) << "the writers never met, so this shows nothing";
    EXPECT_EQ(countEntries(place), 1u) << "a writer has left something behind";
}

// --- Files ---

class SavedFile : public testing::Test {
protected:
    SavedFile()
    {
        std::filesystem::create_directories(folder);
        EXPECT_TRUE(platform::replaceFile(path.u8string(), old));
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    Bytes contents() const
    {
        return platform::readFile(path.u8string(), 1 << 20).value_or(Bytes());
    }
    std::size_t filesInFolder() const
    {
        const std::filesystem::directory_iterator entries(folder);
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    const std::filesystem::path folder = std::filesystem::temp_directory_path()
        / std::filesystem::u8path("zkrt46 gespeichert \xC3\xBC\xE4\xB8\xAD");
    const std::filesystem::path path = folder / std::filesystem::u8path("B\xC3\xA4nke.zkb");
    const Bytes old = goodBank(1, 3), next = goodBank(2, 4);
};

TEST_F(SavedFile, IsReplacedWhole)
{
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_TRUE(platform::replaceFile(path.u8string(), {1, 2, 3}));
    EXPECT_EQ(contents(), (Bytes{1, 2, 3}));
    EXPECT_TRUE(platform::replaceFile(path.u8string(), next));
    EXPECT_EQ(contents(), next);
    EXPECT_TRUE(platform::replaceFile(path.u8string(), {}));
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(SavedFile, IsNoFolder)
{
    EXPECT_FALSE(platform::replaceFile(folder.u8string(), next));
    EXPECT_FALSE(platform::readFile(folder.u8string(), 1 << 20));
    EXPECT_FALSE(platform::replaceFile((folder / "missing" / "file").u8string(), next));
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(SavedFile, IsReadUpToALimit)
{
    EXPECT_EQ(platform::readFile(path.u8string(), old.size()), old);
    EXPECT_EQ(platform::readFile(path.u8string(), 5), Bytes(old.begin(), old.begin() + 5));
}
