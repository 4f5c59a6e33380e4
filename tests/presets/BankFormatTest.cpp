// The bytes of images as users' files hold them, and what becomes of a file that is not good.
#include "ControllerProbe.h"

#include "Files.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>

namespace {

namespace fs = std::filesystem;

Bytes bytesAt(const Bytes& image, std::size_t offset, std::size_t count)
{
    const auto first = image.begin() + static_cast<std::ptrdiff_t>(offset);
    return Bytes(first, first + static_cast<std::ptrdiff_t>(count));
}

void put32(Bytes& image, std::size_t offset, uint32 value)
{
    for (std::size_t i = 0; i < 4; ++i)
        image.at(offset + i) = static_cast<uint8>(value >> (8 * i));
}

void putFloat(Bytes& image, std::size_t offset, float value)
{
    uint32 bits = 0;
    std::memcpy(&bits, &value, 4);
    put32(image, offset, bits);
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

// The same image as a big-endian machine would have written it: every field turned round.
Bytes bigEndian(Bytes image)
{
    const auto turn = [&image](std::size_t offset) {
        std::swap(image[offset], image[offset + 3]);
        std::swap(image[offset + 1], image[offset + 2]);
    };
    turn(0);
    for (std::size_t offset = 5; offset < 41; offset += 4)
        turn(offset);
    for (std::size_t record = 41; record < image.size();) {
        const bool isName = image[record] == 0;
        for (const std::size_t field : {0u, 4u, 8u})
            turn(record + field);
        if (!isName)
            for (const std::size_t field : {12u, 24u})
                turn(record + field);
        record += isName ? 168 : 32;
    }
    return image;
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

TEST_F(BankFiles, GiveBackTheSameBankByEveryRoad)
{
    const Bytes saved = controller.bank();
    controller.saveBank(path("my.zkb").c_str());
    controller.setCurrentPreset(5);
    controller.savePreset(path("my.zkr").c_str());
    EXPECT_EQ(read("my.zkr").size(), 2065u);
    Bytes reversedImage = bigEndian(controller.bankImage());

    const auto expectSaved = [&](const char* road, auto load) {
        SCOPED_TRACE(road);
        platform::MemoryStore empty;
        ControllerProbe other(empty);
        load(other);
        EXPECT_EQ(other.bank(), saved);
    };
    expectSaved("file", [&](auto& other) { other.loadBank(path("my.zkb").c_str(), false); });
    expectSaved("big-endian file", [&](auto& other) {
        other.loadBank(write(reversedImage).c_str(), false);
        EXPECT_EQ(other.getCurrentPreset(), 0) << "a bank file always ends on preset 0";
    });

    platform::MemoryStore empty;
    ControllerProbe other(empty);
    other.setCurrentPreset(7);
    other.loadPreset(path("my.zkr").c_str(), false);
    EXPECT_EQ(other.getCurrentPreset(), 7);
    EXPECT_EQ(std::memcmp(&other.preset(7), &controller.preset(5), 256), 0);
    EXPECT_EQ(std::memcmp(&other.preset(5), &factoryBank()[5], 256), 0);
}

TEST_F(BankFiles, ThatAreNoBankHaveTheirFourOutcomes)
{
    const Bytes before = controller.bank();
    const Bytes good = controller.bankImage();
    const auto load = [&](const Bytes& bytes, bool reversed = false) {
        controller.setCurrentPreset(3);
        controller.host.calls.clear();
        controller.loadBank(write(bytes).c_str(), reversed);
        EXPECT_EQ(controller.bank(), before);
        return controller.getCurrentPreset();
    };
    EXPECT_EQ(load({}), 3);
    EXPECT_EQ(load(bytesAt(good, 0, 4)), 3) << "too short is ignored";
    EXPECT_EQ(load(Bytes(5000, 'x')), 3) << "a wrong magic is ignored";
    EXPECT_TRUE(controller.host.calls.empty());
    EXPECT_EQ(load(controller.presetImage()), 0) << "a preset is read up to its kind";
    EXPECT_EQ(load(bytesAt(good, 0, 30)), 0) << "half a header";
    EXPECT_EQ(load(bytesAt(good, 0, good.size() - 1)), 0) << "a payload that is not all there";
    EXPECT_EQ(load(good, true), 0) << "turned round against its magic";
    EXPECT_EQ(load(bigEndian(good), true), 0);

    for (const float value : {1.5f, -0.001f, std::numeric_limits<float>::quiet_NaN()}) {
        Bytes bad = good;
        put32(bad, 17, 9);
        putFloat(bad, valueRecordAt(23, 57) + 24, value);
        setName(controller.preset(8), "kept");
        const Bytes kept = controller.bank();
        controller.setCurrentPreset(3);
        controller.loadBank(write(bad).c_str(), false);
        EXPECT_EQ(controller.bank(), kept) << value;
        setName(controller.preset(8), "Odd 8");
    }

    controller.loadBank(path("missing.zkb").c_str(), false);
    controller.loadBank(nullptr, false);
    controller.loadPreset(write(good, "in.zkr").c_str(), false);
    EXPECT_EQ(controller.bank(), before) << "a bank is no preset";
    EXPECT_EQ(controller.getCurrentPreset(), 0);
}

TEST_F(BankFiles, WithOtherRecordsAreTakenAsFarAsTheyMakeSense)
{
    // One record each: a kind of tomorrow, a preset and a parameter that do not exist, and then
    // preset 3 with its name and one value.
    Bytes image = bytesAt(controller.bankImage(), 0, 41);
    const auto append = [&image](std::initializer_list<uint32> words) {
        for (const uint32 word : words) {
            image.resize(image.size() + 4);
            put32(image, image.size() - 4, word);
        }
    };
    append({7, 8, 3, 0xFFFFFFFF, 0xFFFFFFFF});
    append({1, 20, 24, 0, 0, 0, 0x40000000, 0});
    append({1, 20, 0xFFFFFFFF, 0, 0, 0, 0x40000000, 0});
    append({1, 20, 3, 58, 0, 0, 0x40000000, 0});
    append({0, 28, 3, 0x41414141, 0x41414141, 0x41414141, 0x41414141, 0x41414141, 0x41414141, 0});
    append({1, 16, 3, 28, 0, 0, 0x3F400000});
    put32(image, 13, 6);
    put32(image, 17, 11);
    put32(image, 21, static_cast<uint32>(image.size() - 41));

    const Bytes before = controller.bank();
    const FileHeader header = readHeader(image.data());
    controller.deserializeBank({image.data() + 41, image.size() - 41}, header, false);
    EXPECT_EQ(controller.getCurrentPreset(), 11);
    EXPECT_EQ(controller.name(3), std::string(24, 'A')) << "a name may fill its field";
    PresetSlot expected = factoryBank()[0];
    std::memset(expected.name, 'A', 24);
    expected.values[28] = 0.75f;
    EXPECT_EQ(std::memcmp(&controller.preset(3), &expected, 256), 0);
    Bytes after = controller.bank();
    std::copy_n(before.begin() + 3 * 256, 256, after.begin() + 3 * 256);
    EXPECT_EQ(after, before) << "a preset that no record names was touched";

    FileHeader odd = header;
    for (const int32 current : {-1, 24, std::numeric_limits<int32>::max()}) {
        odd.currentPreset = current;
        controller.setCurrentPreset(5);
        controller.deserializeBank({image.data() + 41, image.size() - 41}, odd, false);
        EXPECT_EQ(controller.getCurrentPreset(), 0) << current;
    }
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

    const std::string longName = path(std::string(240, 'n'));
    controller.saveBank(longName.c_str());
    EXPECT_EQ(fs::file_size(fs::u8path(longName)), 48617u);
    controller.saveBank((path("no such folder") + platform::kPathSeparator + "x.zkb").c_str());
    EXPECT_EQ(fs::file_size(fs::u8path(longName)), 48617u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / fs::u8path(u8"Größe 音")), {}), 3)
        << "something was left behind";
}

}  // namespace
