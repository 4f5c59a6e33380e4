// Win32FileDialog: the system's dialog for choosing files or a folder.
#pragma once

#include "vstgui/platform/filedialog.h"

#include <shobjidl.h>
#include <windows.h>

namespace VSTGUI {

class Win32FileDialog {
public:
    Win32FileDialog(HWND owner, const FileDialogRequest& request);
    Win32FileDialog(const Win32FileDialog&) = delete;
    Win32FileDialog& operator=(const Win32FileDialog&) = delete;

    // Blocks. True when something was chosen; paths in UTF-8.
    bool run(std::vector<std::string>& chosen);
    // Closes the dialog; for a handler called while it is shown.
    void cancel();

private:
    bool runItemDialog(IFileDialog& dialog, std::vector<std::string>& chosen);
    // For systems without the item dialog. Cannot choose folders.
    bool runClassicDialog(std::vector<std::string>& chosen);
    static UINT_PTR CALLBACK classicHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

    // A file type to filter by: description and pattern, for example "*.abc;*.def".
    struct Filter {
        std::wstring description;
        std::wstring pattern;
    };
    std::vector<Filter> filters() const;
    UINT selectedFilter() const;  // 1 for the first
    std::wstring defaultExtension() const;

    HWND owner;
    FileDialogRequest request;
    IFileDialog* itemDialog{nullptr};  // while it is shown
    HWND classicDialog{nullptr};       // while it is shown
    bool cancelled{false};
};

}  // namespace VSTGUI
