// A store under a key of the current user's registry.
#pragma once

#include "SettingsStore.h"

namespace platform {

class RegistryStore : public SettingsStore {
public:
    // The key's path under HKEY_CURRENT_USER. It is made with the first value.
    explicit RegistryStore(std::wstring keyPath);

    // Values of the type REG_BINARY.
    std::optional<std::vector<std::uint8_t>> read(const char* name) const override;
    void write(const char* name, const std::vector<std::uint8_t>& bytes) override;
    void remove(const char* name) override;
    // Values of the type REG_SZ. They are handed over one byte short of their terminator, as every
    // build has done; the system completes it, but readers do not count on one.
    std::optional<std::string> readText(const char* name) const override;
    void writeText(const char* name, const std::string& text) override;

private:
    void set(const char* name, unsigned long type, const void* data, std::size_t size);

    std::wstring keyPath;
};

}  // namespace platform
