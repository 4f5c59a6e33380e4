// A store under a key of the current user's registry.
#pragma once

#include "platform/SettingsStore.h"

namespace platform {

class RegistryStore : public SettingsStore {
public:
    // The key's path under HKEY_CURRENT_USER. The key is created with the first value.
    explicit RegistryStore(std::wstring keyPath);

    // Values of the type REG_BINARY.
    std::optional<std::vector<std::uint8_t>> read(const char* name) const override;
    void write(const char* name, const std::vector<std::uint8_t>& bytes) override;
    void remove(const char* name) override;
    // Values of the type REG_SZ. They are written with only one byte of the two-byte terminator, as
    // in every version so far; some systems complete it, and readers do not rely on it.
    std::optional<std::string> readText(const char* name) const override;
    void writeText(const char* name, const std::string& text) override;

private:
    void set(const char* name, unsigned long type, const void* data, std::size_t size);

    std::wstring keyPath;
};

}  // namespace platform
