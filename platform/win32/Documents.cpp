// Documents and messages on Windows.
#include "Documents.h"

#include "WideText.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {

OpenResult openDocument(void* window, const std::string& path)
{
    // Success is any number above 32.
    constexpr INT_PTR kLastError = 32;
    const auto result = reinterpret_cast<INT_PTR>(ShellExecuteW(
        static_cast<HWND>(window), L"open", toWide(path).c_str(), nullptr, nullptr, SW_SHOW));
    if (result > kLastError)
        return OpenResult::Opened;
    return result == SE_ERR_NOASSOC ? OpenResult::NoViewer : OpenResult::Failed;
}

void showMessage(void* window, const std::string& text, const std::string& caption)
{
    MessageBoxW(static_cast<HWND>(window), toWide(text).c_str(), toWide(caption).c_str(), MB_OK);
}

}  // namespace platform
