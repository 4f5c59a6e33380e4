// The per-user store and its files on Windows: the registry values, byte for byte, and files that
// cannot be replaced.
#include "platform/Files.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/presets/OpenedController.h"
#include "tests/presets/TestStore.h"

#include <gtest/gtest.h>

#include <thread>

using namespace handmade;

namespace {

struct RegistryValues : testing::Test {
    ~RegistryValues() override { RegCloseKey(key); }

    void set(const wchar_t* name, DWORD type, const void* data, DWORD size)
    {
        if (!key)
            store.write("First", {1});
        key = key ? key : place.open();
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), size),
                  ERROR_SUCCESS);
    }
    void expectRaw(const wchar_t* name, DWORD type, Bytes bytes)
    {
        key = key ? key : place.open();
        Bytes raw(1 << 16, 0xCD);
        DWORD found = REG_NONE;
        auto size = static_cast<DWORD>(raw.size());
        EXPECT_EQ(RegQueryValueExW(key, name, nullptr, &found, raw.data(), &size), ERROR_SUCCESS);
        EXPECT_EQ(found, type);
        // Some systems complete half a terminator by adding a whole one.
        EXPECT_TRUE(size == bytes.size() || (type == REG_SZ && size == bytes.size() + 2)) << size;
        raw.resize(bytes.size());
        EXPECT_EQ(raw, bytes);
    }

    const StorePlace place;
    SystemStore store = openStore(place.name);
    HKEY key = nullptr;
};

TEST_F(RegistryValues, ImagesAreBinaryAndTextsUtf16WithHalfATerminator)
{
    EXPECT_FALSE(store.read("DefaultBank"));
    EXPECT_FALSE(store.readText("CurrDir"));
    store.remove("DefaultBank");
    EXPECT_FALSE(place.open()) << "reading created the key";
    store.write("DefaultBank", goodBank(1, 3));
    expectRaw(L"DefaultBank", REG_BINARY, goodBank(1, 3));
    store.writeText("CurrDir", u8"C:\\ü中");
    expectRaw(L"CurrDir", REG_SZ, {'C', 0, ':', 0, '\\', 0, 0xFC, 0, 0x2D, 0x4E, 0});
}

TEST_F(RegistryValues, FromOtherProgramsAreReadWithOrWithoutTerminatorIfTheTypeMatches)
{
    const std::wstring longest(1026, L'm');
    const struct {
        DWORD type;
        const void* data;
        DWORD size;
        std::optional<std::string> text;
        std::optional<Bytes> bytes;
    } rows[] = {
        {REG_SZ, L"D:\\x", 10, "D:\\x", {}},
        {REG_SZ, L"D:\\x", 8, "D:\\x", {}},
        {REG_SZ, longest.data(), 2050, std::string(1025, 'm'), {}},
        {REG_SZ, L"", 0, "", {}},
        {REG_BINARY, "bytes", 5, {}, Bytes{'b', 'y', 't', 'e', 's'}},
        {REG_DWORD, "four", 4, {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "type " << row.type << ", " << row.size << " bytes");
        set(L"Value", row.type, row.data, row.size);
        EXPECT_EQ(store.readText("Value"), row.text);
        EXPECT_EQ(store.read("Value"), row.bytes);
    }
}

// The share mode with which another program holds the file decides whether a save succeeds.
TEST(WindowsFile, IsSavedIfAttributesAndShareModePermitIt)
{
    const TemporaryFolder folder(u8"ü中");
    const std::string path = folder / "bank.zkb";
    const std::wstring wide = platform::toWide(path);
    platform::MemoryStore settings;
    OpenedController controller(settings);
    Bytes image;
    controller.serializeBank(image);
    const struct {
        DWORD attributes, share;
        bool saved;
    } rows[] = {
        {FILE_ATTRIBUTE_READONLY, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, false},
        {FILE_ATTRIBUTE_NORMAL, 0, false},
        {FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ, false},
        {FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ | FILE_SHARE_WRITE, true},
        {FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, true},
    };
    for (const auto& row : rows)
        for (const Bytes& old : {Bytes(60000, 'x'), Bytes(100, 'y')}) {
            SCOPED_TRACE(testing::Message() << "attributes " << row.attributes << ", share mode "
                                            << row.share << ", " << old.size() << " bytes");
            ASSERT_TRUE(platform::replaceFile(path, old));
            SetFileAttributesW(wide.c_str(), row.attributes);
            const HANDLE held = CreateFileW(wide.c_str(), GENERIC_READ, row.share, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
            ASSERT_NE(held, INVALID_HANDLE_VALUE);
            const ULONGLONG begun = GetTickCount64();
            controller.saveBank(path.c_str());
            EXPECT_LT(GetTickCount64() - begun, 1000u);
            CloseHandle(held);
            SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_NORMAL);
            EXPECT_EQ(platform::readFile(path, 1 << 20), row.saved ? image : old);
            EXPECT_EQ(folder.count(), 1) << "a save that failed has left something behind";
        }
}

// The save waits for a reader that closes the file soon, and replaces the file completely.
TEST(WindowsFile, IsReplacedWhenTheOtherProgramHasClosedIt)
{
    const TemporaryFolder folder;
    const std::string path = folder / "held a moment.zkb";
    // Left by a process that ended, with the same number.
    for (int i = 1; i < 60; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "~zk%lx-%x.tmp", GetCurrentProcessId(), i);
        writeContent(folder / name, "");
    }
    ASSERT_TRUE(platform::replaceFile(path, Bytes(3, 'x')));
    const HANDLE writing =
        CreateFileW(platform::toWide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(platform::readFile(path, 9), Bytes(3, 'x')) << "while another program writes";
    CloseHandle(writing);
    const HANDLE held = CreateFileW(platform::toWide(path).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    std::thread reader([held] {
        Sleep(60);
        CloseHandle(held);
    });
    EXPECT_TRUE(platform::replaceFile(path, Bytes(5, 'y')));
    reader.join();
    EXPECT_EQ(platform::readFile(path, 100), Bytes(5, 'y'));
}

}  // namespace
