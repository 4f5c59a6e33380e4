// OffscreenFrame: the frame's window on an OffscreenHost, which draws into memory.
#pragma once

#include "vstgui/platform/iplatformoptionmenu.h"
#include "vstgui/platform/iplatformsurface.h"
#include "vstgui/platform/iplatformtextedit.h"
#include "vstgui/platform/offscreen/offscreenhost.h"

namespace VSTGUI {

class OffscreenTextEdit : public IPlatformTextEdit {
public:
    OffscreenTextEdit(OffscreenFrame& frame, IPlatformTextEditCallback* textEdit);

    UTF8StringPtr getText() override { return text.c_str(); }
    bool setText(UTF8StringPtr newText) override;
    bool updateSize() override { return true; }

    void userTyped(UTF8StringPtr newText);
    void userPressed(unsigned char virtualKey);

protected:
    ~OffscreenTextEdit() override;

private:
    SharedPointer<OffscreenFrame> frame;
    std::string text;
};

class OffscreenFrame : public IPlatformFrame {
public:
    OffscreenFrame(OffscreenHost& host, IPlatformFrameCallback* callback, const CRect& size);

    IPlatformFrameCallback* getCallback() const { return callback; }
    // Null once the host is destroyed or the frame closed.
    OffscreenHost* getHost() const { return host; }
    void hostGone() { host = nullptr; }
    IPlatformSurface* getSurface();

    bool getGlobalPosition(CPoint& position) const override;
    bool setSize(const CRect& newSize) override;
    bool getSize(CRect& rect) const override;
    bool getCurrentMousePosition(CPoint& where) const override;
    bool getCurrentMouseButtons(CButtonState& buttons) const override;
    bool setMouseCursor(CCursorType) override { return true; }
    bool invalidRect(const CRect& rect) override;
    void* getPlatformRepresentation() const override { return host; }
    IPlatformTextEdit* createPlatformTextEdit(IPlatformTextEditCallback* textEdit) override;
    IPlatformOptionMenu* createPlatformOptionMenu() override;
    bool runFileDialog(const FileDialogRequest& request, const FilesChosen& done) override;
    void cancelFileDialog() override { }
    void showMessage(const std::string& text, const std::string& caption) override;
    void close() override;

protected:
    ~OffscreenFrame() override;

private:
    OffscreenHost* host;
    IPlatformFrameCallback* callback;
    CRect size;
    SharedPointer<IPlatformSurface> surface;
};

}  // namespace VSTGUI
