// An empty folder that is removed after the test; no two tests on a machine share one.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

class TemporaryFolder {
public:
    // The folder's name ends in `name` (UTF-8), for tests of paths with special characters.
    explicit TemporaryFolder(const std::string& name = "")
    {
        std::random_device random;
        do
            folder = std::filesystem::temp_directory_path()
                / std::filesystem::u8path("zkrt46-" + std::to_string(random()) + name);
        while (!std::filesystem::create_directory(folder));
    }
    // Leaves it first if it is the working folder.
    ~TemporaryFolder()
    {
        std::filesystem::current_path(start);
        std::filesystem::remove_all(folder);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }
    // The path of an entry, UTF-8.
    std::string operator/(const std::string& name) const
    {
        return (folder / std::filesystem::u8path(name)).u8string();
    }
    int count() const
    {
        const std::filesystem::directory_iterator entries(folder);
        return static_cast<int>(std::distance(begin(entries), end(entries)));
    }

private:
    const std::filesystem::path start = std::filesystem::current_path();
    std::filesystem::path folder;
};

inline std::string contentOf(const std::string& path)
{
    std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline void writeContent(const std::string& path, const std::string& content)
{
    std::ofstream(std::filesystem::u8path(path), std::ios::binary) << content;
}
