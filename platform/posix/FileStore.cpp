// A store in a folder; and where the folder of this user lies.
#include "FileStore.h"

#include "Files.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace platform {

namespace {

// Far more than a bank, which is the largest value.
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
    constexpr const char* kOwn = "/ZKR-soundworks/ZKRT46";
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/')
        return std::string(data) + kOwn;
    const std::string home = homeDirectory();
    return home.empty() ? "" : home + "/.local/share" + kOwn;
}

}  // namespace

FileStore::FileStore(std::string valueFolder) : folder(std::move(valueFolder)) { }

std::optional<std::vector<std::uint8_t>> FileStore::read(const char* name) const
{
    if (folder.empty())
        return std::nullopt;
    return readFile(folder + '/' + name, kMaxValue);
}

void FileStore::write(const char* name, const std::vector<std::uint8_t>& bytes)
{
    if (folder.empty())
        return;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error)
        replaceFile(folder + '/' + name, bytes);
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

void FileStore::writeText(const char* name, const std::string& text)
{
    write(name, {text.begin(), text.end()});
}

SettingsStore& userSettings()
{
    static FileStore store(userFolder());
    return store;
}

}  // namespace platform
