// A store in a folder, one file for each value.
#pragma once

#include "SettingsStore.h"

namespace platform {

class FileStore : public SettingsStore {
public:
    // The folder is made with the first value. Without a folder (empty) the store stays empty.
    explicit FileStore(std::string folder);

    std::optional<std::vector<std::uint8_t>> read(const char* name) const override;
    void write(const char* name, const std::vector<std::uint8_t>& bytes) override;
    void remove(const char* name) override;
    std::optional<std::string> readText(const char* name) const override;
    void writeText(const char* name, const std::string& text) override;

private:
    std::string folder;
};

}  // namespace platform
