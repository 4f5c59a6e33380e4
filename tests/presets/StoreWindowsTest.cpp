// The per-user store and its files on Windows: what lies in the registry, byte for byte, and files
// that may not be replaced.
#include "Files.h"
#include "HandMadeImages.h"
#include "OpenedController.h"
#include "RegistryStore.h"
#include "TestStore.h"
#include "WideText.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <thread>

using namespace handmade;

namespace {

struct RawValue {
    DWORD type;
    Bytes bytes;
};

class RegistryValues : public testing::Test {
protected:
    RegistryValues()
    {
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, platform::toWide(place).c_str(), 0, nullptr, 0,
                                  KEY_READ | KEY_WRITE, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
    }
    void TearDown() override
    {
        RegCloseKey(key);
        discardPlace(place);
    }

    RawValue raw(const wchar_t* name) const
    {
        RawValue value{REG_NONE, Bytes(1 << 16, 0xCD)};
        auto size = static_cast<DWORD>(value.bytes.size());
        EXPECT_EQ(RegQueryValueExW(key, name, nullptr, &value.type, value.bytes.data(), &size),
                  ERROR_SUCCESS);
        value.bytes.resize(size);
        return value;
    }
    void set(const wchar_t* name, DWORD type, const void* data, std::size_t size) const
    {
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data),
                                 static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }

    const std::string place = newPlace();
    const std::unique_ptr<platform::SettingsStore> store = openStore(place);
    HKEY key = nullptr;
};

}  // namespace

TEST_F(RegistryValues, ImagesAreBinary)
{
    const Bytes image = goodBank(1, 3);
    store->write("DefaultBank", image);
    EXPECT_EQ(raw(L"DefaultBank").type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(raw(L"DefaultBank").bytes, image);
}

// Given are two bytes a character and one more, half a terminator; systems that care for
// terminators add a whole one.
TEST_F(RegistryValues, TextsAreUtf16AndAtLeastHalfATerminator)
{
    store->writeText("CurrDir", "C:\\\xC3\xBC\xE4\xB8\xAD");
    RawValue text = raw(L"CurrDir");
    EXPECT_EQ(text.type, static_cast<DWORD>(REG_SZ));
    EXPECT_TRUE(text.bytes.size() == 11 || text.bytes.size() == 13) << text.bytes.size();
    text.bytes.resize(13);
    EXPECT_EQ(text.bytes, (Bytes{'C', 0, ':', 0, '\\', 0, 0xFC, 0, 0x2D, 0x4E, 0, 0, 0}));
}

TEST_F(RegistryValues, TextsOfOtherProgramsAreReadWithOrWithoutTheirTerminator)
{
    set(L"ManualPath", REG_SZ, L"D:\\x", 5 * sizeof(wchar_t));
    EXPECT_EQ(store->readText("ManualPath"), "D:\\x");
    set(L"ManualPath", REG_SZ, L"D:\\x", 4 * sizeof(wchar_t));
    EXPECT_EQ(store->readText("ManualPath"), "D:\\x");
    // As long as may be: 1025 characters without a terminator.
    const std::wstring longest(1026, L'm');
    set(L"ManualPath", REG_SZ, longest.data(), 2050);
    EXPECT_EQ(store->readText("ManualPath"), std::string(1025, 'm'));
    set(L"ManualPath", REG_SZ, L"", 0);
    EXPECT_EQ(store->readText("ManualPath"), "");
}

TEST_F(RegistryValues, AValueOfAnotherTypeIsAbsent)
{
    set(L"MemoA", REG_SZ, L"text", 10);
    EXPECT_FALSE(store->read("MemoA"));
    set(L"CurrDir", REG_BINARY, "bytes", 5);
    EXPECT_FALSE(store->readText("CurrDir"));
    set(L"CurrBank", REG_DWORD, "four", 4);
    EXPECT_FALSE(store->readText("CurrBank"));
    EXPECT_FALSE(store->read("CurrBank"));
}

TEST(RegistryKey, IsMadeByTheFirstValueAndNotByReading)
{
    const std::string place = newPlace();
    const auto exists = [&place] {
        HKEY key = nullptr;
        const LSTATUS status = RegOpenKeyExW(HKEY_CURRENT_USER, platform::toWide(place).c_str(), 0,
                                             KEY_QUERY_VALUE, &key);
        if (key)
            RegCloseKey(key);
        return status == ERROR_SUCCESS;
    };
    const auto store = openStore(place);
    EXPECT_FALSE(store->read("DefaultBank"));
    EXPECT_FALSE(store->readText("CurrDir"));
    store->remove("DefaultBank");
    EXPECT_FALSE(exists());
    store->write("MemoA", {1});
    EXPECT_TRUE(exists());
    discardPlace(place);
    EXPECT_FALSE(exists());
}

TEST(WindowsFile, ThatMayNotBeReplacedStays)
{
    const auto folder = std::filesystem::temp_directory_path() / L"zkrt46-\u00FC\u4E2D";
    const auto path = folder / L"bank.zkb";
    std::filesystem::create_directories(folder);
    const Bytes old = goodBank(1, 3), next = goodBank(2, 4);
    const auto filesInFolder = [&folder] {
        return std::distance(std::filesystem::directory_iterator(folder),
                             std::filesystem::directory_iterator());
    };
    ASSERT_TRUE(platform::replaceFile(path.u8string(), old));

    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(platform::replaceFile(path.u8string(), next));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(platform::readFile(path.u8string(), 1 << 20), old);

    EXPECT_EQ(filesInFolder(), 1) << "a save that failed has left something behind";
    std::filesystem::remove_all(folder);
}

// What another program permits while it reads the file decides what a save can do.
TEST(WindowsFile, ThatAnotherProgramReadsIsSavedWhereverThatIsPermitted)
{
    const auto start = std::filesystem::current_path();
    const auto folder = std::filesystem::temp_directory_path() / L"zkrt46-held-\u00FC\u4E2D";
    const auto path = folder / L"bank.zkb";
    std::filesystem::create_directories(folder);
    platform::MemoryStore settings;
    OpenedController controller(settings);
    const Bytes longer(60000, 'x'), shorter(100, 'y');
    struct Case {
        DWORD share;
        bool saved;
    };
    const Case cases[] = {
        {0, false},
        {FILE_SHARE_READ, false},
        {FILE_SHARE_READ | FILE_SHARE_WRITE, true},
        {FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, true},
    };
    for (const Case& now : cases)
        for (const Bytes& old : {longer, shorter}) {
            SCOPED_TRACE(testing::Message() << "share mode " << now.share << ", " << old.size());
            ASSERT_TRUE(platform::replaceFile(path.u8string(), old));
            const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, now.share, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
            ASSERT_NE(held, INVALID_HANDLE_VALUE);
            const ULONGLONG begun = GetTickCount64();
            controller.saveBank(path.u8string().c_str());
            EXPECT_LT(GetTickCount64() - begun, 1000u);
            CloseHandle(held);
            Bytes saved;
            controller.serializeBank(saved);
            EXPECT_EQ(platform::readFile(path.u8string(), 1 << 20), now.saved ? saved : old);
            EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder),
                                    std::filesystem::directory_iterator()),
                      1);
        }
    // Where the saves have gone.
    std::filesystem::current_path(start);
    std::filesystem::remove_all(folder);
}

// A reader that is done soon costs the save no more than a moment, and the file is replaced whole.
TEST(WindowsFile, IsReplacedWhenTheOtherProgramHasClosedIt)
{
    const auto path = std::filesystem::temp_directory_path() / L"zkrt46-held-a-moment.zkb";
    ASSERT_TRUE(platform::replaceFile(path.u8string(), Bytes(3, 'x')));
    const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    std::thread reader([held] {
        Sleep(60);
        CloseHandle(held);
    });
    EXPECT_TRUE(platform::replaceFile(path.u8string(), Bytes(5, 'y')));
    reader.join();
    EXPECT_EQ(platform::readFile(path.u8string(), 100), Bytes(5, 'y'));
    std::filesystem::remove(path);
}
