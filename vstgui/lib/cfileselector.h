// CNewFileSelector: asks the user for files to open, a file to write or a folder.
#pragma once

#include "vstgui/lib/cframe.h"
#include "vstgui/platform/filedialog.h"

namespace VSTGUI {

class CNewFileSelector : public CBaseObject {
public:
    enum Style { kSelectFile = 0, kSelectSaveFile, kSelectDirectory };

    static const IdStringPtr kSelectEndMessage;

    // The caller owns it. Null without an open frame.
    static CNewFileSelector* create(CFrame* parent = nullptr, Style style = kSelectFile);

    // All are copied; null counts as empty. A directory that does not exist is ignored.
    void setTitle(UTF8StringPtr title);
    void setInitialDirectory(UTF8StringPtr path);
    void setDefaultSaveName(UTF8StringPtr name);
    void setAllowMultiFileSelection(bool state) { request.allowSeveral = state; }
    void addFileExtension(const CFileExtension& extension);
    // Only the first call counts. The extension is preselected, and appended to a name that was
    // typed without one.
    void setDefaultExtension(const CFileExtension& extension);

    // Shows the dialog, and calls delegate->notify (this, kSelectEndMessage) when something was
    // chosen; the delegate may be null. Blocks on Windows, where timers keep running, and returns
    // whether something was chosen. On X11 returns at once: whether a dialog opens. Until it ends,
    // it keeps selector and delegate alive, and the frame gets no input.
    bool run(CBaseObject* delegate);
    // Closes a running dialog; otherwise no effect.
    void cancel();

    uint32_t getNumSelectedFiles() const { return static_cast<uint32_t>(selected.size()); }
    // UTF-8 path, valid as long as the selector; null when out of range.
    UTF8StringPtr getSelectedFile(uint32_t index) const;

    CLASS_METHODS_NOCOPY(CNewFileSelector, CBaseObject)

protected:
    CNewFileSelector(CFrame* frame, Style style);
    ~CNewFileSelector() override = default;

private:
    SharedPointer<CFrame> frame;
    FileDialogRequest request;
    std::vector<std::string> selected;
};

}  // namespace VSTGUI
