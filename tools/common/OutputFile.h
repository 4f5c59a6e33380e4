// OutputFile: a file that is written under a temporary name in the same folder, synced to disk, and
// then renamed, so that it is never incomplete. Several may be open in several threads.
#pragma once

#include <cstdint>
#include <string>

namespace tool {

class OutputFile {
public:
    // Throws ToolError when the folder is not writable or the name belongs to a write-protected
    // file or to something other than a regular file. A link is followed: the file it points to is
    // replaced. "-" is the standard output, which gets the content at commit.
    explicit OutputFile(const std::string& path);
    // Removes the temporary file unless commit succeeded.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Returns the bytes written. If fewer than `size`, commit will throw.
    std::int64_t write(const void* data, std::int64_t size);
    std::int64_t read(void* data, std::int64_t size);
    std::int64_t seek(std::int64_t offset, int whence);
    std::int64_t size() const;

    bool failed() const { return failure != 0; }
    // Gives the file its name. Throws ToolError with the system's reason if this or any write
    // failed; the temporary file is then removed.
    void commit();

private:
    void createTemporary();
    [[noreturn]] void refuse(int reason) const;

    std::string path;       // as the user wrote it
    std::string target;     // links resolved
    std::string temporary;  // empty once committed, and for the standard output
    int interruptionSlot;   // see removeOnInterruption
    int file;
    int failure;  // errno of the first failed write
};

// Writes a whole file.
void writeFile(const std::string& path, const std::string& content);

}  // namespace tool
