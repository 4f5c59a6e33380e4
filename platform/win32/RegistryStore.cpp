#include "platform/win32/RegistryStore.h"

#include "Product.h"
#include "platform/win32/WideText.h"

#include <windows.h>

namespace platform {

namespace {

// Closes the key at the end of the scope.
class Key {
public:
    Key() = default;
    ~Key()
    {
        if (key)
            RegCloseKey(key);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    bool open(const std::wstring& path, REGSAM access)
    {
        return RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, access, &key) == ERROR_SUCCESS;
    }
    bool create(const std::wstring& path)
    {
        return RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                               &key, nullptr)
            == ERROR_SUCCESS;
    }
    HKEY get() const { return key; }

private:
    HKEY key = nullptr;
};

}  // namespace

RegistryStore::RegistryStore(std::wstring keyPath) : keyPath(std::move(keyPath)) { }

std::optional<std::vector<std::uint8_t>> RegistryStore::read(const char* name) const
{
    const std::wstring valueName = toWide(name);
    Key key;
    DWORD size = 0;
    if (!key.open(keyPath, KEY_QUERY_VALUE)
        || RegQueryValueExW(key.get(), valueName.c_str(), nullptr, nullptr, nullptr, &size)
            != ERROR_SUCCESS)
        return std::nullopt;
    std::vector<std::uint8_t> bytes;
    DWORD type = REG_NONE;
    LSTATUS result = ERROR_MORE_DATA;
    // Another process may write a longer value between the two queries.
    while (result == ERROR_MORE_DATA) {
        bytes.resize(size);
        result =
            RegQueryValueExW(key.get(), valueName.c_str(), nullptr, &type, bytes.data(), &size);
    }
    if (result != ERROR_SUCCESS || type != REG_BINARY)
        return std::nullopt;
    bytes.resize(size);
    return bytes;
}

void RegistryStore::write(const char* name, const std::vector<std::uint8_t>& bytes)
{
    set(name, REG_BINARY, bytes.data(), bytes.size());
}

void RegistryStore::remove(const char* name)
{
    Key key;
    if (key.open(keyPath, KEY_SET_VALUE))
        RegDeleteValueW(key.get(), toWide(name).c_str());
}

std::optional<std::string> RegistryStore::readText(const char* name) const
{
    // Zeros after the text, since its terminator may be missing.
    wchar_t text[kMaxText / sizeof(wchar_t) + 2] = {};
    DWORD size = kMaxText;
    DWORD type = REG_NONE;
    Key key;
    if (!key.open(keyPath, KEY_QUERY_VALUE)
        || RegQueryValueExW(key.get(), toWide(name).c_str(), nullptr, &type,
                            reinterpret_cast<BYTE*>(text), &size)
            != ERROR_SUCCESS
        || type != REG_SZ)
        return std::nullopt;
    return fromWide(text);
}

void RegistryStore::writeText(const char* name, const std::string& text)
{
    const std::wstring wide = toWide(text);
    set(name, REG_SZ, wide.c_str(), 2 * wide.size() + 1);
}

void RegistryStore::set(const char* name, unsigned long type, const void* data, std::size_t size)
{
    Key key;
    if (key.create(keyPath))
        RegSetValueExW(key.get(), toWide(name).c_str(), 0, type, static_cast<const BYTE*>(data),
                       static_cast<DWORD>(size));
}

SettingsStore& userSettings()
{
    static RegistryStore store(product::kSettingsKey);
    return store;
}

}  // namespace platform
