// CViewContainer: mouse and wheel events for its children. Children are kept alive while their
// handlers run, and a handler may change the list of children.
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/cviewcontainer.h"

namespace VSTGUI {

namespace {

bool handled(CMouseEventResult result)
{
    return result != kMouseEventNotHandled && result != kMouseEventNotImplemented;
}

// The listener may handle the click itself, for instance with a menu of its own.
bool takenByListener(CView* view, const CButtonState& buttons)
{
    auto* control = dynamic_cast<CControl*>(view);
    return control && control->getListener()
        && (buttons & (kAlt | kShift | kControl | kApple | kRButton)) != 0
        && control->getListener()->controlModifierClicked(control, buttons) != 0;
}

}  // namespace

CMouseEventResult CViewContainer::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    const CPoint inside = toContent(where);
    const bool wasAttached = isAttached();
    mouseDownView = nullptr;
    for (const auto& child : topFirst()) {
        if (!isChild(child) || !child->isVisible() || !child->getMouseEnabled()
            || !child->hitTest(inside, buttons))
            continue;
        // A container calls mayGetPress for its own children.
        if (getFrame() && !child.cast<CViewContainer>() && !getFrame()->mayGetPress(child))
            return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
        if (takenByListener(child, buttons))
            return kMouseEventHandled;
        if (child->wantsFocus() && getFrame())
            getFrame()->setFocusView(child);
        CPoint local(inside);
        const CMouseEventResult result = child->onMouseDown(local, buttons);
        if (handled(result)) {
            // The handler may have removed the child or this container.
            if (result == kMouseEventHandled && isChild(child) && isAttached() == wasAttached) {
                mouseDownView = child;
                lastMouse = inside;
                lastButtons = buttons;
            }
            return result;
        }
        if (!child->getTransparency())
            return result;
    }
    return kMouseEventNotHandled;
}

CMouseEventResult CViewContainer::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    const SharedPointer<CView> child = mouseDownView;
    if (!child)
        return kMouseEventNotHandled;
    lastMouse = toContent(where);
    lastButtons = buttons;
    CPoint local(lastMouse);
    const CMouseEventResult result = child->onMouseMoved(local, buttons);
    if (result == kMouseEventHandled || result == kMouseEventNotImplemented)
        return kMouseEventHandled;
    if (mouseDownView == child)
        mouseDownView = nullptr;
    return kMouseEventNotHandled;
}

CMouseEventResult CViewContainer::onMouseUp(CPoint& where, const CButtonState& buttons)
{
    // Cleared first, so that a view which removes itself in its handler gets one release only.
    const SharedPointer<CView> child = std::move(mouseDownView);
    if (!child)
        return kMouseEventNotHandled;
    CPoint local(toContent(where));
    child->onMouseUp(local, buttons);
    return kMouseEventHandled;
}

CMouseEventResult CViewContainer::onMouseCancel()
{
    const SharedPointer<CView> child = std::move(mouseDownView);
    if (child && child->onMouseCancel() == kMouseEventNotImplemented) {
        // The release ends its gesture.
        CPoint local(lastMouse);
        child->onMouseUp(local, lastButtons);
    }
    return kMouseEventHandled;
}

bool CViewContainer::onWheel(const CPoint& where, const CMouseWheelAxis& axis,
                             const float& distance, const CButtonState& buttons)
{
    const CPoint inside = toContent(where);
    for (const auto& child : topFirst()) {
        if (!isChild(child) || !child->isVisible() || !child->getMouseEnabled()
            || !child->getMouseableArea().pointInside(inside))
            continue;
        if (child->onWheel(inside, axis, distance, buttons))
            return true;
        if (!child->getTransparency())
            return false;
    }
    return false;
}

}  // namespace VSTGUI
