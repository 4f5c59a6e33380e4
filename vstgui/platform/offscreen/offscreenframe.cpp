#include "vstgui/platform/offscreen/offscreenframe.h"

namespace VSTGUI {

namespace {

class OffscreenOptionMenu : public IPlatformOptionMenu {
public:
    explicit OffscreenOptionMenu(OffscreenFrame* frame) : frame(frame) { }

    PlatformOptionMenuResult popup(COptionMenu* menu) override
    {
        const OffscreenHost* host = frame->getHost();
        const auto answer = host ? host->onMenu : nullptr;
        const int32_t index = answer ? answer(*menu) : -1;
        // The answer may have closed the frame.
        if (index < 0 || !frame->getHost())
            return {};
        return {menu, index};
    }

private:
    SharedPointer<OffscreenFrame> frame;
};

}  // namespace

OffscreenFrame::OffscreenFrame(OffscreenHost& host, IPlatformFrameCallback* callback,
                               const CRect& size)
    : host(&host), callback(callback), size(size)
{
    host.frame = this;
}

OffscreenFrame::~OffscreenFrame()
{
    OffscreenFrame::close();
}

IPlatformSurface* OffscreenFrame::getSurface()
{
    if (!surface)
        surface = owned(IPlatformSurface::create(size.getWidth(), size.getHeight()));
    return surface;
}

bool OffscreenFrame::getGlobalPosition(CPoint& position) const
{
    position = CPoint();
    return true;
}

bool OffscreenFrame::setSize(const CRect& newSize)
{
    size = newSize;
    surface = nullptr;
    return invalidRect(size);
}

bool OffscreenFrame::getSize(CRect& rect) const
{
    rect = size;
    return true;
}

bool OffscreenFrame::getCurrentMousePosition(CPoint& where) const
{
    if (host)
        where = host->pointer;
    return host != nullptr;
}

bool OffscreenFrame::getCurrentMouseButtons(CButtonState& buttons) const
{
    if (host)
        buttons |= host->pointerButtons();
    return host != nullptr;
}

bool OffscreenFrame::invalidRect(const CRect& rect)
{
    CRect pixels(std::floor(rect.left), std::floor(rect.top), std::ceil(rect.right),
                 std::ceil(rect.bottom));
    if (!host || pixels.bound(size).isEmpty())
        return false;
    host->waiting.push_back(pixels);
    return true;
}

IPlatformTextEdit* OffscreenFrame::createPlatformTextEdit(IPlatformTextEditCallback* textEdit)
{
    return host ? new OffscreenTextEdit(*this, textEdit) : nullptr;
}

IPlatformOptionMenu* OffscreenFrame::createPlatformOptionMenu()
{
    return new OffscreenOptionMenu(this);
}

bool OffscreenFrame::runFileDialog(const FileDialogRequest& request, const FilesChosen& done)
{
    const CBaseObjectGuard guard(this);
    const auto answer = host ? host->onFileDialog : nullptr;
    const auto chosen = answer ? answer(request) : std::vector<std::string>();
    if (!host)
        return false;
    done(chosen);
    return !chosen.empty();
}

void OffscreenFrame::showMessage(const std::string& text, const std::string& caption)
{
    const CBaseObjectGuard guard(this);
    if (const auto seen = host ? host->onMessage : nullptr)
        seen(text, caption);
}

void OffscreenFrame::close()
{
    if (!host)
        return;
    host->frame = nullptr;
    host->waiting.clear();
    host = nullptr;
}

OffscreenTextEdit::OffscreenTextEdit(OffscreenFrame& frame, IPlatformTextEditCallback* textEdit)
    : IPlatformTextEdit(textEdit), frame(&frame), text(textEdit->platformGetText())
{
    frame.getHost()->textBox = this;
}

OffscreenTextEdit::~OffscreenTextEdit()
{
    OffscreenHost* host = frame->getHost();
    if (host && host->textBox == this)
        host->textBox = nullptr;
}

bool OffscreenTextEdit::setText(UTF8StringPtr newText)
{
    text = newText ? newText : "";
    return true;
}

void OffscreenTextEdit::userTyped(UTF8StringPtr newText)
{
    setText(newText);
    textEdit->platformTextDidChange();
}

void OffscreenTextEdit::userPressed(unsigned char virtualKey)
{
    const CBaseObjectGuard guard(this);
    textEdit->platformOnKeyDown(VstKeyCode{0, virtualKey, 0});
}

}  // namespace VSTGUI
