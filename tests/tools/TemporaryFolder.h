// An empty folder that goes with the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "zkrt46-test-XXXXXX").string();
        path = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string operator/(const std::string& name) const { return (path / name).string(); }
    int count() const
    {
        const std::filesystem::directory_iterator entries(path);
        return static_cast<int>(std::distance(begin(entries), end(entries)));
    }

private:
    std::filesystem::path path;
};

inline std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline void writeContent(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}
