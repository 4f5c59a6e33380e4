#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/platform/offscreen/offscreenframe.h"

#include <algorithm>

namespace VSTGUI {

namespace {

std::vector<OffscreenHost*>& hosts()
{
    static std::vector<OffscreenHost*> all;
    return all;
}

// Null when the window is no OffscreenHost.
OffscreenHost* find(void* window)
{
    const auto it = std::find(hosts().begin(), hosts().end(), window);
    return it == hosts().end() ? nullptr : *it;
}

IPlatformFrame* createFrame(IPlatformFrameCallback* callback, const CRect& size, void* parent,
                            PlatformType type, IPlatformFrameConfig* config)
{
    OffscreenHost* const host = find(parent);
    if (!host)
        return IPlatformFrame::createNative(callback, size, parent, type, config);
    return host->isOpen() ? nullptr : new OffscreenFrame(*host, callback, size);
}

}  // namespace

OffscreenHost::OffscreenHost()
{
    hosts().push_back(this);
    IPlatformFrame::setFactory(&createFrame);
}

OffscreenHost::~OffscreenHost()
{
    if (frame)
        frame->hostGone();
    auto& all = hosts();
    all.erase(std::find(all.begin(), all.end(), this));
}

CMouseEventResult OffscreenHost::mouseDown(CPoint where, CButtonState buttons)
{
    setPointer(where, buttons);
    const SharedPointer<OffscreenFrame> window(frame);
    return window ? window->getCallback()->platformOnMouseDown(where, buttons)
                  : kMouseEventNotHandled;
}

CMouseEventResult OffscreenHost::mouseMove(CPoint where, CButtonState buttons)
{
    setPointer(where, buttons);
    const SharedPointer<OffscreenFrame> window(frame);
    return window ? window->getCallback()->platformOnMouseMoved(where, buttons)
                  : kMouseEventNotHandled;
}

CMouseEventResult OffscreenHost::mouseUp(CPoint where, CButtonState buttons)
{
    setPointer(where, buttons.getModifierState());
    const SharedPointer<OffscreenFrame> window(frame);
    return window ? window->getCallback()->platformOnMouseUp(where, buttons)
                  : kMouseEventNotHandled;
}

CMouseEventResult OffscreenHost::mouseExit(CPoint where, CButtonState buttons)
{
    setPointer(where, buttons);
    const SharedPointer<OffscreenFrame> window(frame);
    return window ? window->getCallback()->platformOnMouseExited(where, buttons)
                  : kMouseEventNotHandled;
}

void OffscreenHost::mouseCancel()
{
    const SharedPointer<OffscreenFrame> window(frame);
    if (window)
        window->getCallback()->platformOnMouseCancel();
}

bool OffscreenHost::wheel(CPoint where, float distance, CButtonState modifiers,
                          CMouseWheelAxis axis)
{
    setPointer(where, modifiers);
    const SharedPointer<OffscreenFrame> window(frame);
    // IPlatformFrameCallback has left positive.
    const float delivered = axis == kMouseWheelAxisX ? -distance : distance;
    return window && window->getCallback()->platformOnMouseWheel(where, axis, delivered, modifiers);
}

bool OffscreenHost::keyDown(VstKeyCode key)
{
    const SharedPointer<OffscreenFrame> window(frame);
    return window && window->getCallback()->platformOnKeyDown(key);
}

bool OffscreenHost::keyUp(VstKeyCode key)
{
    const SharedPointer<OffscreenFrame> window(frame);
    return window && window->getCallback()->platformOnKeyUp(key);
}

void OffscreenHost::activate(bool state)
{
    const SharedPointer<OffscreenFrame> window(frame);
    if (window)
        window->getCallback()->platformOnActivate(state);
}

void OffscreenHost::setPointer(CPoint where, CButtonState buttons)
{
    pointer = where;
    pointerButtons = buttons;
}

bool OffscreenHost::repaint()
{
    IPlatformSurface* surface = frame ? frame->getSurface() : nullptr;
    if (!surface)
        return false;
    const SharedPointer<OffscreenFrame> window(frame);
    const auto rects = std::exchange(waiting, {});
    for (const CRect& rect : rects) {
        const auto context = owned(new CDrawContext(surface));
        context->setClipRect(rect);
        window->getCallback()->platformDrawRect(context, rect);
    }
    return true;
}

Pixels OffscreenHost::paint()
{
    return repaint() ? frame->getSurface()->readPixels() : Pixels();
}

CPoint OffscreenHost::frameSize() const
{
    CRect size;
    if (frame)
        frame->getSize(size);
    return size.getSize();
}

UTF8StringPtr OffscreenHost::textBoxText() const
{
    return textBox ? textBox->getText() : nullptr;
}

bool OffscreenHost::typeText(UTF8StringPtr text)
{
    const SharedPointer<OffscreenTextEdit> box(textBox);
    if (box)
        box->userTyped(text);
    return box != nullptr;
}

bool OffscreenHost::pressReturnInTextBox()
{
    const SharedPointer<OffscreenTextEdit> box(textBox);
    if (box)
        box->userPressed(VKEY_RETURN);
    return box != nullptr;
}

bool OffscreenHost::pressEscapeInTextBox()
{
    const SharedPointer<OffscreenTextEdit> box(textBox);
    if (box)
        box->userPressed(VKEY_ESCAPE);
    return box != nullptr;
}

}  // namespace VSTGUI
