// The tests' store in a key of the registry.
#include "RegistryStore.h"
#include "TestStore.h"
#include "WideText.h"

#include <windows.h>

std::string newPlace()
{
    static int count = 0;
    return "SOFTWARE\\ZKR-soundworks\\Tests\\Store-" + std::to_string(GetCurrentProcessId()) + '-'
        + std::to_string(++count);
}

std::unique_ptr<platform::SettingsStore> openStore(const std::string& place)
{
    return std::make_unique<platform::RegistryStore>(platform::toWide(place));
}

void discardPlace(const std::string& place)
{
    RegDeleteKeyW(HKEY_CURRENT_USER, platform::toWide(place).c_str());
    // Goes with the last of them.
    RegDeleteKeyW(HKEY_CURRENT_USER, L"SOFTWARE\\ZKR-soundworks\\Tests");
}

std::size_t countEntries(const std::string& place)
{
    HKEY key = nullptr;
    DWORD values = 0;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, platform::toWide(place).c_str(), 0, KEY_QUERY_VALUE, &key)
        != ERROR_SUCCESS)
        return 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(key);
    return values;
}
