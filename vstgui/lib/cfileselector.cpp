#include "vstgui/lib/cfileselector.h"

#include <algorithm>

namespace VSTGUI {

const IdStringPtr CNewFileSelector::kSelectEndMessage = "file selection ended";

namespace {

FileDialogRequest::Kind kindOf(CNewFileSelector::Style style)
{
    switch (style) {
    case CNewFileSelector::kSelectSaveFile:
        return FileDialogRequest::Kind::saveFile;
    case CNewFileSelector::kSelectDirectory:
        return FileDialogRequest::Kind::selectDirectory;
    default:
        return FileDialogRequest::Kind::openFile;
    }
}

std::string copied(UTF8StringPtr text)
{
    return text ? text : "";
}

bool hasExtension(const std::string& path)
{
    const size_t slash = path.find_last_of("/\\");
    const size_t name = slash == std::string::npos ? 0 : slash + 1;
    const size_t dot = path.rfind('.');
    // A leading dot begins no extension.
    return dot != std::string::npos && dot > name;
}

}  // namespace

CNewFileSelector::CNewFileSelector(CFrame* frame, Style style) : frame(frame)
{
    request.kind = kindOf(style);
}

CNewFileSelector* CNewFileSelector::create(CFrame* parent, Style style)
{
    return parent && parent->isOpen() ? new CNewFileSelector(parent, style) : nullptr;
}

void CNewFileSelector::setTitle(UTF8StringPtr title)
{
    request.title = copied(title);
}

void CNewFileSelector::setInitialDirectory(UTF8StringPtr path)
{
    request.initialDirectory = copied(path);
}

void CNewFileSelector::setDefaultSaveName(UTF8StringPtr name)
{
    request.defaultSaveName = copied(name);
}

void CNewFileSelector::addFileExtension(const CFileExtension& extension)
{
    request.extensions.push_back(extension);
}

void CNewFileSelector::setDefaultExtension(const CFileExtension& extension)
{
    if (hasDefaultExtension)
        return;
    hasDefaultExtension = true;
    auto& all = request.extensions;
    auto it = std::find(all.begin(), all.end(), extension);
    if (it == all.end())
        it = all.insert(it, extension);
    request.selectedExtension = static_cast<int32_t>(it - all.begin());
}

bool CNewFileSelector::runModal()
{
    const CBaseObjectGuard guard(this);
    selected.clear();
    const SharedPointer<IPlatformFrame> window = frame->getPlatformFrame();
    if (!window)
        return false;
    frame->onStartLocalEventLoop();
    std::vector<std::string> chosen;
    if (!window->runFileDialog(request, chosen))
        return false;
    if (request.kind == FileDialogRequest::Kind::saveFile && hasDefaultExtension) {
        const auto& extension = request.extensions[static_cast<size_t>(request.selectedExtension)];
        for (std::string& path : chosen) {
            if (!hasExtension(path) && *extension.getExtension())
                path += std::string(".") + extension.getExtension();
        }
    }
    selected = std::move(chosen);
    return !selected.empty();
}

bool CNewFileSelector::run(CBaseObject* delegate)
{
    const CBaseObjectGuard guard(this);
    const bool chosen = runModal();
    if (chosen && delegate)
        delegate->notify(this, kSelectEndMessage);
    return chosen;
}

void CNewFileSelector::cancel()
{
    if (IPlatformFrame* window = frame->getPlatformFrame())
        window->cancelFileDialog();
}

UTF8StringPtr CNewFileSelector::getSelectedFile(uint32_t index) const
{
    return index < selected.size() ? selected[index].c_str() : nullptr;
}

}  // namespace VSTGUI
