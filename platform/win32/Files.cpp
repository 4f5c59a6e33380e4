#include "platform/Files.h"

#include "platform/win32/WideText.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cwchar>

namespace platform {

namespace {

class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : handle(handle) { }
    ~FileHandle() { close(); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    explicit operator bool() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle; }
    bool close()
    {
        const HANDLE closing = handle;
        handle = INVALID_HANDLE_VALUE;
        return closing == INVALID_HANDLE_VALUE || CloseHandle(closing) != 0;
    }

private:
    HANDLE handle;
};

// The path with symbolic links resolved; the path itself if the file does not exist.
std::wstring resolved(const std::wstring& path)
{
    const FileHandle file(CreateFileW(path.c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring real(file ? GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0) : 0, L'\0');
    const DWORD length = real.empty()
        ? 0
        : GetFinalPathNameByHandleW(file.get(), real.data(), static_cast<DWORD>(real.size()), 0);
    if (length == 0 || length >= real.size())
        return path;
    real.resize(length);
    return real;
}

// Creates a file beside the target, under a name that no other process or thread uses now. The name
// is short, since the target's may have the largest length that the file system allows.
HANDLE createBeside(const std::wstring& target, std::wstring& path)
{
    static std::atomic<unsigned> count{0};
    constexpr int kAttempts = 100;
    // Without a separator npos + 1 is 0: the working directory.
    const std::wstring folder = target.substr(0, target.find_last_of(L"\\/:") + 1);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        wchar_t name[32];
        std::swprintf(name, 32, L"~zk%lx-%x.tmp", GetCurrentProcessId(), ++count);
        path = folder + name;
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return INVALID_HANDLE_VALUE;
}

bool writeAll(const FileHandle& file, const std::vector<std::uint8_t>& bytes, Sync sync)
{
    DWORD written = 0;
    return WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)
        && written == bytes.size() && (sync == Sync::None || FlushFileBuffers(file.get()));
}

// Retries, since renaming fails while another program has the target open.
bool renameOver(const std::wstring& temporary, const std::wstring& target)
{
    constexpr int kAttempts = 10;
    constexpr DWORD kPause = 20;  // ms
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (attempt > 0)
            Sleep(kPause);
        if (MoveFileExW(temporary.c_str(), target.c_str(),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return true;
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED)
            return false;
    }
    return false;
}

bool setEnd(const FileHandle& file, std::size_t position)
{
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(position);
    return SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(file.get());
}

// For a target that another program has open and shares for writing. Nothing is changed if it
// cannot be opened or the disk is full.
bool writeInPlace(const std::wstring& target, const std::vector<std::uint8_t>& bytes, Sync sync)
{
    const FileHandle file(CreateFileW(target.c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size;
    if (!file || !GetFileSizeEx(file.get(), &size)
        || (size.QuadPart < static_cast<LONGLONG>(bytes.size()) && !setEnd(file, bytes.size())))
        return false;
    const LARGE_INTEGER start{};
    return SetFilePointerEx(file.get(), start, nullptr, FILE_BEGIN) && writeAll(file, bytes, sync)
        && setEnd(file, bytes.size());
}

}  // namespace

const char kPathSeparator = '\\';

std::string workingDirectory()
{
    std::wstring path(GetCurrentDirectoryW(0, nullptr), L'\0');
    path.resize(GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data()));
    return fromWide(path);
}

bool setWorkingDirectory(const std::string& path)
{
    return SetCurrentDirectoryW(toWide(path).c_str()) != 0;
}

std::optional<std::vector<std::uint8_t>> readFile(const std::string& path, std::size_t limit,
                                                  Access access)
{
    const DWORD mode = access == Access::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const FileHandle file(CreateFileW(toWide(path).c_str(), mode,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size;
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &size))
        return std::nullopt;
    std::vector<std::uint8_t> bytes(std::min(static_cast<std::size_t>(size.QuadPart), limit));
    DWORD count = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr))
        return std::nullopt;
    bytes.resize(count);
    return bytes;
}

bool replaceFile(const std::string& path, const std::vector<std::uint8_t>& bytes, Sync sync)
{
    const std::wstring target = resolved(toWide(path));
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES
        && (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0)
        return false;

    std::wstring temporary;
    FileHandle file(createBeside(target, temporary));
    if (!file)
        return writeInPlace(target, bytes, sync);
    const bool written = writeAll(file, bytes, sync) && file.close();
    if (written && renameOver(temporary, target))
        return true;
    const bool replaced = written && writeInPlace(target, bytes, sync);
    file.close();
    DeleteFileW(temporary.c_str());
    return replaced;
}

}  // namespace platform
