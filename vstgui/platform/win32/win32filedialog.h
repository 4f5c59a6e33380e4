// Win32FileDialog: asks the user for files or a folder.
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
    // From inside a handler that runs meanwhile.
    void cancel();

private:
    bool runItemDialog(IFileDialog& dialog, std::vector<std::string>& chosen);
    // Where the system has no item dialog. Knows no folders.
    bool runClassicDialog(std::vector<std::string>& chosen);
    static UINT_PTR CALLBACK classicHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

    // What the user can filter by: description and pattern, for example "*.abc;*.def".
    struct Filter {
        std::wstring description;
        std::wstring pattern;
    };
    std::vector<Filter> filters() const;
    UINT selectedFilter() const;  // counted from 1
    std::wstring defaultExtension() const;

    HWND owner;
    FileDialogRequest request;
    IFileDialog* itemDialog{nullptr};  // while it is shown
    HWND classicDialog{nullptr};       // likewise
    bool cancelled{false};
};

}  // namespace VSTGUI
