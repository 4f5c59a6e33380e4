#include "platform/posix/FileStore.h"

#include "Product.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace platform {

namespace {

// Far more than a bank, the largest value.
constexpr std::size_t kMaxValue = 1 << 20;

std::string homeDirectory()
{
    if (const char* home = std::getenv("HOME"); home && *home == '/')
        return home;
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> texts(16384);
    if (getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found) != 0 || !found)
        return "";
    return found->pw_dir;
}

// By the XDG base directory rules: a relative path in the variable is ignored.
std::string userFolder()
{
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/')
        return std::string(data) + '/' + product::kSettingsFolder;
    const std::string home = homeDirectory();
    return home.empty() ? "" : home + "/.local/share/" + product::kSettingsFolder;
}

}  // namespace

std::vector<std::string> systemFolders()
{
    const char* variable = std::getenv("XDG_DATA_DIRS");
    std::istringstream list(variable && *variable ? variable : "/usr/local/share:/usr/share");
    std::vector<std::string> folders;
    for (std::string data; std::getline(list, data, ':');)
        if (!data.empty() && data.front() == '/')
            folders.push_back(data + '/' + product::kSettingsFolder);
    return folders;
}

FileStore::FileStore(std::string folder, std::vector<std::string> sharedFolders)
    : folder(std::move(folder)), sharedFolders(std::move(sharedFolders))
{
}

std::optional<std::vector<std::uint8_t>> FileStore::read(const char* name) const
{
    std::optional<std::vector<std::uint8_t>> bytes;
    if (!folder.empty())
        bytes = readFile(folder + '/' + name, kMaxValue);
    for (const std::string& shared : sharedFolders)
        if (!bytes)
            bytes = readFile(shared + '/' + name, kMaxValue);
    return bytes;
}

void FileStore::write(const char* name, const std::vector<std::uint8_t>& bytes)
{
    save(name, bytes, Sync::Wait);
}

void FileStore::save(const char* name, const std::vector<std::uint8_t>& bytes, Sync sync)
{
    if (folder.empty())
        return;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error)
        replaceFile(folder + '/' + name, bytes, sync);
}

void FileStore::remove(const char* name)
{
    if (!folder.empty())
        unlink((folder + '/' + name).c_str());
}

std::optional<std::string> FileStore::readText(const char* name) const
{
    const auto bytes = read(name);
    if (!bytes || bytes->size() > kMaxText)
        return std::nullopt;
    return std::string(bytes->begin(), bytes->end());
}

// Not flushed to disk: every instance writes its texts when it is destroyed, while the host waits.
void FileStore::writeText(const char* name, const std::string& text)
{
    save(name, {text.begin(), text.end()}, Sync::None);
}

SettingsStore& userSettings()
{
    static FileStore store(userFolder(), systemFolders());
    return store;
}

}  // namespace platform
