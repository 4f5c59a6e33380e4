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
    if (request.hasDefaultExtension)
        return;
    request.hasDefaultExtension = true;
    auto& all = request.extensions;
    auto it = std::find(all.begin(), all.end(), extension);
    if (it == all.end())
        it = all.insert(it, extension);
    request.selectedExtension = static_cast<int32_t>(it - all.begin());
}

bool CNewFileSelector::run(CBaseObject* delegate)
{
    selected.clear();
    const SharedPointer<IPlatformFrame> window = frame->getPlatformFrame();
    if (!window)
        return false;
    frame->onStartLocalEventLoop();
    const auto ended = [self = SharedPointer<CNewFileSelector>(this),
                        target = SharedPointer<CBaseObject>(delegate)](const auto& paths) {
        self->selected.clear();
        for (const std::string& path : paths)
            self->selected.push_back(self->request.completed(path));
        if (!paths.empty() && target)
            target->notify(self, kSelectEndMessage);
    };
    return window->runFileDialog(request, ended);
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
