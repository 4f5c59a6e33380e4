// Win32FileDialog: the shell's item dialog, and the filters for both kinds of dialog.
#include "vstgui/platform/win32/win32filedialog.h"

#include "platform/win32/WideText.h"

#include <memory>
#include <shlobj.h>

namespace VSTGUI {

namespace {

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

// Initialises OLE for the current thread during its lifetime.
class OleScope {
public:
    OleScope() : started(SUCCEEDED(OleInitialize(nullptr))) { }
    ~OleScope()
    {
        if (started)
            OleUninitialize();
    }
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;

    explicit operator bool() const { return started; }

private:
    bool started;
};

Owned<IFileDialog> createItemDialog(FileDialogRequest::Kind kind)
{
    IFileDialog* dialog = nullptr;
    const bool save = kind == FileDialogRequest::Kind::saveFile;
    CoCreateInstance(save ? CLSID_FileSaveDialog : CLSID_FileOpenDialog, nullptr,
                     CLSCTX_INPROC_SERVER, IID_IFileDialog, reinterpret_cast<void**>(&dialog));
    return Owned<IFileDialog>(dialog);
}

void addPath(IShellItem* item, std::vector<std::string>& chosen)
{
    LPWSTR path = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path)))
        return;
    chosen.push_back(platform::fromWide(path));
    CoTaskMemFree(path);
}

void addResults(IFileDialog& dialog, bool several, std::vector<std::string>& chosen)
{
    IShellItem* item = nullptr;
    if (!several) {
        if (SUCCEEDED(dialog.GetResult(&item)))
            addPath(Owned<IShellItem>(item).get(), chosen);
        return;
    }
    IFileOpenDialog* opened = nullptr;
    IShellItemArray* items = nullptr;
    if (FAILED(dialog.QueryInterface(IID_IFileOpenDialog, reinterpret_cast<void**>(&opened))))
        return;
    const Owned<IFileOpenDialog> open(opened);
    if (FAILED(open->GetResults(&items)))
        return;
    const Owned<IShellItemArray> all(items);
    DWORD count = 0;
    all->GetCount(&count);
    for (DWORD i = 0; i < count; ++i) {
        if (SUCCEEDED(all->GetItemAt(i, &item)))
            addPath(Owned<IShellItem>(item).get(), chosen);
    }
}

void setFolder(IFileDialog& dialog, const std::string& directory)
{
    IShellItem* item = nullptr;
    if (directory.empty()
        || FAILED(SHCreateItemFromParsingName(platform::toWide(directory).c_str(), nullptr,
                                              IID_IShellItem, reinterpret_cast<void**>(&item))))
        return;
    dialog.SetFolder(Owned<IShellItem>(item).get());
}

}  // namespace

Win32FileDialog::Win32FileDialog(HWND owner, const FileDialogRequest& request)
    : owner(owner), request(request)
{
}

bool Win32FileDialog::run(std::vector<std::string>& chosen)
{
    chosen.clear();
    const OleScope ole;
    const Owned<IFileDialog> dialog = ole ? createItemDialog(request.kind) : nullptr;
    const bool done = dialog ? runItemDialog(*dialog, chosen) : runClassicDialog(chosen);
    return done && !cancelled && !chosen.empty();
}

bool Win32FileDialog::runItemDialog(IFileDialog& dialog, std::vector<std::string>& chosen)
{
    const bool several = request.allowSeveral && request.kind == FileDialogRequest::Kind::openFile;
    FILEOPENDIALOGOPTIONS options = 0;
    dialog.GetOptions(&options);
    options |= FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR;
    if (several)
        options |= FOS_ALLOWMULTISELECT;
    if (request.kind == FileDialogRequest::Kind::selectDirectory)
        options |= FOS_PICKFOLDERS;
    dialog.SetOptions(options);

    if (!request.title.empty())
        dialog.SetTitle(platform::toWide(request.title).c_str());
    const std::vector<Filter> offered = filters();
    if (!offered.empty() && request.kind != FileDialogRequest::Kind::selectDirectory) {
        std::vector<COMDLG_FILTERSPEC> specs;
        for (const Filter& filter : offered)
            specs.push_back({filter.description.c_str(), filter.pattern.c_str()});
        dialog.SetFileTypes(static_cast<UINT>(specs.size()), specs.data());
        dialog.SetFileTypeIndex(selectedFilter());
        dialog.SetDefaultExtension(defaultExtension().c_str());
    }
    setFolder(dialog, request.initialDirectory);
    if (!request.defaultSaveName.empty())
        dialog.SetFileName(platform::toWide(request.defaultSaveName).c_str());

    itemDialog = &dialog;
    const HRESULT shown = dialog.Show(owner);
    itemDialog = nullptr;
    if (FAILED(shown))
        return false;
    addResults(dialog, several, chosen);
    return true;
}

void Win32FileDialog::cancel()
{
    cancelled = true;
    if (itemDialog)
        itemDialog->Close(HRESULT_FROM_WIN32(ERROR_CANCELLED));
    if (classicDialog)
        PostMessageW(classicDialog, WM_COMMAND, IDCANCEL, 0);
}

std::vector<Win32FileDialog::Filter> Win32FileDialog::filters() const
{
    std::vector<Filter> all;
    std::wstring patterns;
    for (const CFileExtension& extension : request.extensions) {
        const std::wstring pattern = L"*." + platform::toWide(extension.getExtension());
        const std::wstring description = platform::toWide(extension.getDescription());
        all.push_back({description + L" (" + pattern + L")", pattern});
        patterns += (patterns.empty() ? L"" : L";") + pattern;
    }
    if (all.size() > 1)
        all.insert(all.begin(), {patterns, patterns});
    return all;
}

UINT Win32FileDialog::selectedFilter() const
{
    // With several extensions, entry 1 is the filter for all of them.
    const UINT first = request.extensions.size() > 1 ? 2 : 1;
    return static_cast<UINT>(request.selectedExtension) + first;
}

std::wstring Win32FileDialog::defaultExtension() const
{
    const auto index = static_cast<size_t>(request.selectedExtension);
    return index < request.extensions.size()
        ? platform::toWide(request.extensions[index].getExtension())
        : std::wstring();
}

}  // namespace VSTGUI
