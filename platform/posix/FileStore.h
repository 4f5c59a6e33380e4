// A store in a folder, one file for each value.
#pragma once

#include "platform/Files.h"
#include "platform/SettingsStore.h"

namespace platform {

// Where packages install values for all users, such as the manual's path: the program's folders in
// the directories of XDG_DATA_DIRS, which is a list with colons. Relative paths are ignored.
std::vector<std::string> systemFolders();

class FileStore : public SettingsStore {
public:
    // The folder is created with the first value. With an empty path nothing is stored. Values that
    // are missing there are read from the shared folders, in their order.
    explicit FileStore(std::string folder, std::vector<std::string> sharedFolders = {});

    std::optional<std::vector<std::uint8_t>> read(const char* name) const override;
    void write(const char* name, const std::vector<std::uint8_t>& bytes) override;
    void remove(const char* name) override;
    std::optional<std::string> readText(const char* name) const override;
    void writeText(const char* name, const std::string& text) override;

private:
    void save(const char* name, const std::vector<std::uint8_t>& bytes, Sync sync);

    std::string folder;
    std::vector<std::string> sharedFolders;
};

}  // namespace platform
