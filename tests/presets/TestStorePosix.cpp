// The tests' store in a folder.
#include "FileStore.h"
#include "TestStore.h"

#include <cstdlib>
#include <filesystem>

std::string newPlace()
{
    std::string folder = (std::filesystem::temp_directory_path() / "zkrt46-store-XXXXXX").string();
    return mkdtemp(folder.data()) ? folder : "";
}

std::unique_ptr<platform::SettingsStore> openStore(const std::string& place)
{
    return std::make_unique<platform::FileStore>(place);
}

void discardPlace(const std::string& place)
{
    std::filesystem::remove_all(place);
}

std::size_t countEntries(const std::string& place)
{
    const std::filesystem::directory_iterator entries(place);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}
