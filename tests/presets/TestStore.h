// The per-user store of the system, in a location of its own for each test.
#pragma once

#ifdef _WIN32
#include "platform/win32/RegistryStore.h"
#include "platform/win32/WideText.h"

#include <random>
#include <windows.h>
#else
#include "platform/posix/FileStore.h"
#include "tests/support/TemporaryFolder.h"
#endif

#include <string>

#ifdef _WIN32
using SystemStore = platform::RegistryStore;

// A registry key that no two tests on a machine share; the first value written creates it.
class StorePlace {
public:
    ~StorePlace()
    {
        RegDeleteKeyW(HKEY_CURRENT_USER, key.c_str());
        // Fails, as it should, while other tests still have keys there.
        RegDeleteKeyW(HKEY_CURRENT_USER, L"SOFTWARE\\ZKR-soundworks\\Tests");
    }
    HKEY open() const
    {
        HKEY opened = nullptr;
        RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ | KEY_WRITE, &opened);
        return opened;
    }
    // The number of values in this location.
    int count() const
    {
        const HKEY opened = open();
        DWORD values = 0;
        RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values,
                         nullptr, nullptr, nullptr, nullptr);
        RegCloseKey(opened);
        return static_cast<int>(values);
    }

    const std::string name =
        "SOFTWARE\\ZKR-soundworks\\Tests\\Store-" + std::to_string(std::random_device()());

private:
    const std::wstring key = platform::toWide(name);
};

inline SystemStore openStore(const std::string& name)
{
    return SystemStore(platform::toWide(name));
}
#else
using SystemStore = platform::FileStore;

struct StorePlace {
    int count() const { return folder.count(); }

    TemporaryFolder folder;
    const std::string name = folder.path().string();
};

inline SystemStore openStore(const std::string& name)
{
    return SystemStore(name);
}
#endif
