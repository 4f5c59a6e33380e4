// The bytes of images as users' files hold them, and what becomes of a file that is not good.
#include "ControllerProbe.h"
#include "HandMadeImages.h"

#include "Files.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

Bytes bytesAt(const Bytes& image, std::size_t offset, std::size_t count)
{
    const auto first = image.begin() + static_cast<std::ptrdiff_t>(offset);
    return Bytes(first, first + static_cast<std::ptrdiff_t>(count));
}

// Where the records of a good image begin: name and 58 values for each preset.
std::size_t nameRecordAt(int preset)
{
    return 41 + static_cast<std::size_t>(preset) * (168 + 58 * 32);
}
std::size_t valueRecordAt(int preset, unsigned id)
{
    return nameRecordAt(preset) + 168 + id * 32;
}

struct BankFiles : testing::Test {
    BankFiles() : folder(fs::temp_directory_path() / ("zkrt46-" + std::to_string(std::rand())))
    {
        fs::create_directories(folder / fs::u8path(u8"Größe 音"));
        fillWithOddValues(controller);
        controller.setCurrentPreset(3);
    }
    ~BankFiles() override
    {
        fs::current_path(fs::temp_directory_path());
        fs::remove_all(folder);
    }

    std::string path(const std::string& name) const
    {
        return ((folder / fs::u8path(u8"Größe 音")) / fs::u8path(name)).u8string();
    }
    std::string write(const Bytes& bytes, const std::string& name = "in.zkb")
    {
        std::ofstream(fs::u8path(path(name)), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return path(name);
    }
    Bytes read(const std::string& name)
    {
        std::ifstream file(fs::u8path(path(name)), std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(file), {});
    }

    fs::path folder;
    platform::MemoryStore store;
    ControllerProbe controller{store};
};

TEST_F(BankFiles, HoldHeaderAndRecordsAtTheirPlaces)
{
    controller.preset(2).values[26] = 0.25f;
    const Bytes image = controller.bankImage();
    ASSERT_EQ(image.size(), 48617u);
    EXPECT_EQ(bytesAt(image, 0, 25),
              (Bytes{0x36, 0x34, 0x74, 0x5A, 0x38,                 // magic, kind
                     0x00, 0x01, 0x00, 0x01,                       // format word
                     58,   0,    0,    0,    0x88, 0x05, 0, 0,     // parameters, 1416 records
                     3,    0,    0,    0,    0xC0, 0xBD, 0, 0}));  // current preset, 48576 bytes
    EXPECT_EQ(bytesAt(image, 25, 16), Bytes(16, 0));
    EXPECT_EQ(bytesAt(image, nameRecordAt(2), 18),
              (Bytes{0, 0, 0, 0, 0x9C, 0, 0, 0, 2, 0, 0, 0, 'O', 'd', 'd', ' ', '2', 0}));
    EXPECT_EQ(bytesAt(image, valueRecordAt(2, 26), 32),
              (Bytes{1, 0, 0, 0, 0x14, 0, 0, 0, 2, 0, 0,    0,    26, 0, 0, 0,
                     0, 0, 0, 0, 0,    0, 0, 0, 0, 0, 0x80, 0x3E, 0,  0, 0, 0}));

    const Bytes preset = controller.presetImage();
    ASSERT_EQ(preset.size(), 2065u);
    EXPECT_EQ(bytesAt(preset, 4, 21), (Bytes{0x22, 0x00, 0x01, 0x00, 0x01, 58, 0,    0,    0, 59, 0,
                                             0,    0,    0,    0,    0,    0,  0xE8, 0x07, 0, 0}))
        << "a preset's image bears index 0 wherever the preset lies";
    EXPECT_EQ(bytesAt(preset, 41 + 8, 9), (Bytes{0, 0, 0, 0, 'O', 'd', 'd', ' ', '3'}));
}

TEST_F(BankFiles, GiveBackTheSameBankAndPreset)
{
    const Bytes saved = controller.bank();
    controller.saveBank(path("my.zkb").c_str());
    controller.setCurrentPreset(5);
    controller.savePreset(path("my.zkr").c_str());
    EXPECT_EQ(read("my.zkr").size(), 2065u);
    platform::MemoryStore empty;
    ControllerProbe other(empty);
    other.setCurrentPreset(7);
    other.loadBank(path("my.zkb").c_str(), false);
    EXPECT_EQ(other.bank(), saved);
    EXPECT_EQ(other.getCurrentPreset(), 0) << "a bank file always ends on preset 0";
    other.setCurrentPreset(7);
    other.loadPreset(path("my.zkr").c_str(), false);
    EXPECT_EQ(other.getCurrentPreset(), 7);
    EXPECT_EQ(std::memcmp(&other.preset(7), &controller.preset(5), 256), 0);
}

TEST_F(BankFiles, OfABigEndianMachineAreReadAlikeUnlessTheyAreTurnedRoundOnceMore)
{
    const Bytes little = handmade::goodBank(1, 7), big = handmade::goodBank(1, 7, true);
    const Bytes before = controller.bank();
    for (const Bytes& image : {little, big}) {
        controller.setCurrentPreset(3);
        controller.loadBank(write(image).c_str(), true);
        EXPECT_EQ(controller.bank(), before);
        EXPECT_EQ(controller.getCurrentPreset(), 0);
    }
    controller.loadBank(write(little).c_str(), false);
    const Bytes wanted = controller.bank();
    EXPECT_NE(wanted, before);
    platform::MemoryStore empty;
    ControllerProbe other(empty);
    other.loadBank(write(big).c_str(), false);
    EXPECT_EQ(other.bank(), wanted);
}

// What follows the payload does not matter, be it more than is ever read of a file.
TEST_F(BankFiles, AreLoadedWhateverFollowsTheBank)
{
    Bytes image = handmade::goodBank(1, 7);
    controller.loadBank(write(image).c_str(), false);
    const Bytes wanted = controller.bank();
    for (const std::size_t size : {image.size() + 1, kMostOfFile + 1}) {
        image.resize(size);
        platform::MemoryStore empty;
        ControllerProbe other(empty);
        other.loadBank(write(image).c_str(), false);
        EXPECT_EQ(other.bank(), wanted) << size;
    }
}

TEST_F(BankFiles, OfTheOtherKindOrWithoutAFileChangeNothing)
{
    const Bytes before = controller.bank();
    controller.host.calls.clear();
    controller.loadBank(path("missing.zkb").c_str(), false);
    controller.loadBank(nullptr, false);
    controller.loadPreset(write(controller.bankImage(), "in.zkr").c_str(), false);
    EXPECT_EQ(controller.getCurrentPreset(), 3);
    EXPECT_TRUE(controller.host.calls.empty());
    controller.loadBank(write(controller.presetImage()).c_str(), false);
    EXPECT_EQ(controller.getCurrentPreset(), 0) << "a preset is read up to its kind";
    EXPECT_EQ(controller.bank(), before);
}

TEST_F(BankFiles, LieWhereTheirPathSaysAndTheFolderIsKept)
{
    controller.saveBank(path("first.zkb").c_str());
    EXPECT_STREQ(controller.getCurrBank(), "first.zkb");
    EXPECT_EQ(std::string(controller.getCurrDir()) + "first.zkb", path("first.zkb"));
    fs::current_path(folder);
    controller.savePreset(path("one.zkr").c_str());
    EXPECT_STREQ(controller.getCurrPreset(), "one.zkr");
    EXPECT_TRUE(fs::equivalent(fs::current_path(), folder / fs::u8path(u8"Größe 音")))
        << "files are opened from their folder";

    // Without a separator the name used last is opened.
    fs::remove(fs::u8path(path("first.zkb")));
    controller.saveBank("ignored.zkb");
    EXPECT_EQ(read("first.zkb").size(), 48617u);
    EXPECT_FALSE(fs::exists(fs::u8path(path("ignored.zkb"))));

    // As long as file systems allow.
    const std::string longName = path(std::string(251, 'n') + ".zkb");
    controller.saveBank(longName.c_str());
    EXPECT_EQ(fs::file_size(fs::u8path(longName)), 48617u);
    controller.saveBank((path("no such folder") + platform::kPathSeparator + "x.zkb").c_str());
    EXPECT_EQ(fs::file_size(fs::u8path(longName)), 48617u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / fs::u8path(u8"Größe 音")), {}), 3)
        << "something was left behind";
}

TEST_F(BankFiles, InAFolderTooLongToBeRememberedLeaveTheFolderAndFileOfBefore)
{
    if (platform::kPathSeparator == '\\')
        GTEST_SKIP() << "Windows enters no such folder";
    controller.saveBank(path("first.zkb").c_str());
    std::string far = path(std::string(120, 'f'));
    for (int i = 0; i < 2; ++i)
        far += platform::kPathSeparator + std::string(120, 'f');
    fs::create_directories(fs::u8path(far));
    far += platform::kPathSeparator + std::string("far.zkb");
    controller.preset(0).values[0] = 0.125f;
    controller.saveBank(far.c_str());
    EXPECT_EQ(fs::file_size(fs::u8path(far)), 48617u);
    EXPECT_EQ(std::string(controller.getCurrDir()) + controller.getCurrBank(), path("first.zkb"));
    controller.loadBank(path("first.zkb").c_str(), false);
    controller.loadBank(far.c_str(), false);
    EXPECT_EQ(controller.preset(0).values[0], 0.125f);
    EXPECT_EQ(std::string(controller.getCurrDir()) + controller.getCurrBank(), path("first.zkb"));
}

}  // namespace
