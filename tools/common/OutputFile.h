// A file that appears whole or not at all: written under a temporary name beside its place, made
// durable, and only then renamed.
#pragma once

#include <cstdint>
#include <string>

namespace tool {

class OutputFile {
public:
    // Throws ToolError when nothing can be written there, or when the name belongs to something
    // that is not an ordinary file. A link is followed: the file it points to is replaced.
    explicit OutputFile(const std::string& path);
    // Removes the temporary file unless commit succeeded.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Returns the bytes written. Fewer than `size` means that the disk refused; commit will say so.
    std::int64_t write(const void* data, std::int64_t size);
    std::int64_t read(void* data, std::int64_t size);
    std::int64_t seek(std::int64_t offset, int whence);
    std::int64_t size() const;

    bool failed() const { return failure != 0; }
    // Throws ToolError with the system's reason when any write failed, and removes the file.
    void commit();

private:
    [[noreturn]] void refuse(int reason) const;

    std::string wanted;     // as the user wrote it
    std::string target;     // links resolved
    std::string temporary;  // empty once committed
    int file;
    int failure;  // errno of the first failed write
};

// Writes a whole text or picture at once.
void writeFile(const std::string& path, const std::string& content);

}  // namespace tool
