// CFrame: the system's mouse and key events, with mouse capture, hover and focus.
#include "vstgui/lib/cframe.h"

#include "vstgui/lib/controls/ctextedit.h"
#include "vstgui/lib/invalidrectcollector.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace VSTGUI {

namespace {

// For the third press of a triple click, which systems report as a single click.
constexpr uint32_t kRepeatTime = 500;  // ms
constexpr CCoord kRepeatDistance = 4;  // pixels in each direction

bool holds(const std::vector<SharedPointer<CView>>& chain, CView* view)
{
    return std::find(chain.begin(), chain.end(), view) != chain.end();
}

}  // namespace

void CFrame::notePress(const CPoint& where, const CButtonState& buttons)
{
    pressBefore = std::exchange(press, {where, IPlatformFrame::getTicks(), false, false, {}});
    const CPoint distance = where - pressBefore.where;
    press.repeated = buttons.isDoubleClick()
        || (pressBefore.withheld && press.time - pressBefore.time <= kRepeatTime
            && std::fabs(distance.x) <= kRepeatDistance
            && std::fabs(distance.y) <= kRepeatDistance);
}

bool CFrame::mayGetPress(CView* view)
{
    const auto& before = pressBefore.views;
    press.withheld =
        press.repeated && std::find(before.begin(), before.end(), view) == before.end();
    if (!press.withheld)
        press.views.push_back(view);
    return !press.withheld;
}

CMouseEventResult CFrame::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    notePress(where, buttons);
    // A press activates the frame, even if the keyboard is elsewhere, and ends typing.
    active = true;
    focusOnActivate = nullptr;
    // Another button during a drag ends the drag, since its release would be lost.
    if (getMouseDownView())
        onMouseCancel();
    if (dynamic_cast<CTextEdit*>(focusView))
        setFocusView(nullptr);
    return CViewContainer::onMouseDown(where, buttons);
}

CMouseEventResult CFrame::onMouseUp(CPoint& where, const CButtonState& buttons)
{
    const CMouseEventResult result = CViewContainer::onMouseUp(where, buttons);
    updateHover(where, buttons.getModifierState());
    return result;
}

CMouseEventResult CFrame::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    if (!getMouseDownView())
        updateHover(where, buttons);
    const CMouseEventResult result = CViewContainer::onMouseMoved(where, buttons);
    if (result != kMouseEventNotHandled)
        return result;
    const std::vector<SharedPointer<CView>> chain(hovered.rbegin(), hovered.rend());
    for (const auto& view : chain) {
        if (!view->isAttached())
            continue;
        CPoint local(where);
        view->frameToLocal(local);
        if (view->onMouseMoved(local, buttons.getModifierState()) == kMouseEventHandled)
            return kMouseEventHandled;
    }
    return kMouseEventNotHandled;
}

CMouseEventResult CFrame::onMouseExited(CPoint& where, const CButtonState& buttons)
{
    if (!getMouseDownView())
        leaveHoveredViews(where, buttons);
    return kMouseEventHandled;
}

bool CFrame::onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                     const CButtonState& buttons)
{
    if (getMouseDownView())
        return false;
    const bool used = CViewContainer::onWheel(where, axis, distance, buttons);
    updateHover(where, buttons.getModifierState());
    return used;
}

void CFrame::updateHover(const CPoint& where, const CButtonState& buttons)
{
    if (!isAttached())
        return;
    std::vector<SharedPointer<CView>> now;
    collectViewsAt(where, now);
    if (now == hovered)
        return;
    const std::vector<SharedPointer<CView>> before = hovered;
    hovered = now;
    for (auto it = before.rbegin(); it != before.rend(); ++it) {
        CPoint local(where);
        if (!holds(now, *it) && (*it)->isAttached())
            (*it)->onMouseExited((*it)->frameToLocal(local), buttons);
    }
    for (const auto& view : now) {
        CPoint local(where);
        if (!holds(before, view) && holds(hovered, view))
            view->onMouseEntered(view->frameToLocal(local), buttons);
    }
}

void CFrame::leaveHoveredViews(const CPoint& where, const CButtonState& buttons)
{
    const std::vector<SharedPointer<CView>> before = std::move(hovered);
    hovered.clear();
    for (auto it = before.rbegin(); it != before.rend(); ++it) {
        CPoint local(where);
        if ((*it)->isAttached())
            (*it)->onMouseExited((*it)->frameToLocal(local), buttons);
    }
}

int32_t CFrame::dispatchKey(VstKeyCode& keyCode, KeyHandler handler)
{
    std::vector<SharedPointer<CView>> chain;
    for (CView* view = focusView; view && view != this; view = view->getParentView())
        chain.push_back(view);
    for (const auto& view : chain) {
        if (!view->isAttached() || !view->getMouseEnabled())
            continue;
        const int32_t result =
            handler == KeyHandler::down ? view->onKeyDown(keyCode) : view->onKeyUp(keyCode);
        if (result == 1)
            return 1;
    }
    return -1;
}

int32_t CFrame::onKeyDown(VstKeyCode& keyCode)
{
    const CBaseObjectGuard guard(this);
    if (dispatchKey(keyCode, KeyHandler::down) == 1)
        return 1;
    // Tab moves on from a focused view only; otherwise the key is left to the host.
    if (!focusView || keyCode.virt != VKEY_TAB || (keyCode.modifier & ~MODIFIER_SHIFT) != 0)
        return -1;
    advanceNextFocusView(focusView, (keyCode.modifier & MODIFIER_SHIFT) != 0);
    return 1;
}

int32_t CFrame::onKeyUp(VstKeyCode& keyCode)
{
    const CBaseObjectGuard guard(this);
    return dispatchKey(keyCode, KeyHandler::up);
}

bool CFrame::platformDrawRect(CDrawContext* context, const CRect& rect)
{
    const CBaseObjectGuard guard(this);
    drawRect(context, rect);
    return true;
}

CMouseEventResult CFrame::platformOnMouseDown(CPoint& where, const CButtonState& buttons)
{
    const InvalidRectCollector event(this);
    return onMouseDown(where, buttons);
}

CMouseEventResult CFrame::platformOnMouseMoved(CPoint& where, const CButtonState& buttons)
{
    const InvalidRectCollector event(this);
    return onMouseMoved(where, buttons);
}

CMouseEventResult CFrame::platformOnMouseUp(CPoint& where, const CButtonState& buttons)
{
    const InvalidRectCollector event(this);
    return onMouseUp(where, buttons);
}

CMouseEventResult CFrame::platformOnMouseExited(CPoint& where, const CButtonState& buttons)
{
    const InvalidRectCollector event(this);
    return onMouseExited(where, buttons);
}

void CFrame::platformOnMouseCancel()
{
    const InvalidRectCollector event(this);
    onMouseCancel();
}

bool CFrame::platformOnMouseWheel(const CPoint& where, const CMouseWheelAxis& axis,
                                  const float& distance, const CButtonState& buttons)
{
    const InvalidRectCollector event(this);
    return onWheel(where, axis, distance, buttons);
}

bool CFrame::platformOnKeyDown(VstKeyCode& keyCode)
{
    const InvalidRectCollector event(this);
    return onKeyDown(keyCode) == 1;
}

bool CFrame::platformOnKeyUp(VstKeyCode& keyCode)
{
    const InvalidRectCollector event(this);
    return onKeyUp(keyCode) == 1;
}

void CFrame::platformOnActivate(bool state)
{
    const InvalidRectCollector event(this);
    onActivate(state);
}

}  // namespace VSTGUI
