// Win32FileDialog: the older common dialogs, for systems without the item dialog.
#include "vstgui/platform/win32/win32filedialog.h"

#include "platform/win32/WideText.h"

#include <commdlg.h>
#include <cwchar>

namespace VSTGUI {

namespace {

// For all names of a multiple selection, 16-bit characters.
constexpr size_t kBufferLength = 32768;

// The buffer holds one path, or a folder and several names, each ended by a null character.
void readSelection(const wchar_t* buffer, size_t nameOffset, std::vector<std::string>& chosen)
{
    const std::wstring first = buffer;
    if (nameOffset <= first.size()) {
        chosen.push_back(platform::fromWide(first));
        return;
    }
    for (const wchar_t* name = buffer + first.size() + 1; *name; name += std::wcslen(name) + 1)
        chosen.push_back(platform::fromWide(first + L"\\" + name));
}

}  // namespace

// Stores the dialog's window, the parent of the page that the hook belongs to.
UINT_PTR CALLBACK Win32FileDialog::classicHook(HWND page, UINT message, WPARAM, LPARAM lParam)
{
    if (message != WM_INITDIALOG)
        return 0;
    const auto* const setup = reinterpret_cast<const OPENFILENAMEW*>(lParam);
    reinterpret_cast<Win32FileDialog*>(setup->lCustData)->classicDialog = GetParent(page);
    return 0;
}

bool Win32FileDialog::runClassicDialog(std::vector<std::string>& chosen)
{
    if (request.kind == FileDialogRequest::Kind::selectDirectory)
        return false;
    std::vector<wchar_t> buffer(kBufferLength, L'\0');
    platform::toWide(request.defaultSaveName).copy(buffer.data(), kBufferLength - 1);
    std::wstring offered;
    for (const Filter& filter : filters())
        offered += filter.description + L'\0' + filter.pattern + L'\0';
    const std::wstring directory = platform::toWide(request.initialDirectory);
    const std::wstring title = platform::toWide(request.title);
    const std::wstring extension = defaultExtension();

    OPENFILENAMEW setup{};
    setup.lStructSize = sizeof setup;
    setup.hwndOwner = owner;
    setup.lpstrFilter = offered.empty() ? nullptr : offered.c_str();
    setup.nFilterIndex = selectedFilter();
    setup.lpstrFile = buffer.data();
    setup.nMaxFile = static_cast<DWORD>(buffer.size());
    setup.lpstrInitialDir = directory.empty() ? nullptr : directory.c_str();
    setup.lpstrTitle = title.empty() ? nullptr : title.c_str();
    setup.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    setup.lCustData = reinterpret_cast<LPARAM>(this);
    setup.lpfnHook = classicHook;
    setup.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_ENABLEHOOK
        | OFN_ENABLESIZING | OFN_PATHMUSTEXIST;

    const bool save = request.kind == FileDialogRequest::Kind::saveFile;
    if (save)
        setup.Flags |= OFN_OVERWRITEPROMPT;
    else
        setup.Flags |= OFN_FILEMUSTEXIST | (request.allowSeveral ? OFN_ALLOWMULTISELECT : 0u);
    const BOOL done = save ? GetSaveFileNameW(&setup) : GetOpenFileNameW(&setup);
    classicDialog = nullptr;
    if (done)
        readSelection(buffer.data(), setup.nFileOffset, chosen);
    return done != 0;
}

}  // namespace VSTGUI
