#include "vstgui/lib/cview.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cframe.h"

namespace VSTGUI {

const IdStringPtr kMsgViewSizeChanged = "view size changed";
bool CView::kDirtyCallAlwaysOnMainThread = false;

CView::CView(const CRect& size) : size(size), mouseableArea(size) { }

CView::CView(const CView& other)
    : CBaseObject(other), size(other.size), mouseableArea(other.mouseableArea),
      viewFlags(other.viewFlags & ~(kAttachedFlag | kSubviewFlag)), alphaValue(other.alphaValue),
      background(other.background)
{
}

CView::~CView() = default;

void CView::draw(CDrawContext* context)
{
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, size);
    setDirty(false);
}

void CView::drawRect(CDrawContext* context, const CRect&)
{
    draw(context);
}

bool CView::isDirty() const
{
    return hasFlag(kDirtyFlag);
}

void CView::setDirty(bool state)
{
    if (kDirtyCallAlwaysOnMainThread) {
        setFlag(kDirtyFlag, false);
        if (state)
            invalidateInParent();
    } else {
        setFlag(kDirtyFlag, state);
    }
}

void CView::invalidRect(const CRect& rect)
{
    if (isAttached() && isVisible() && pParentView)
        pParentView->invalidRect(rect);
}

void CView::invalid()
{
    setDirty(false);
    invalidRect(size);
}

void CView::invalidateInParent()
{
    if (!isAttached() || !isVisible())
        return;
    if (pParentView)
        pParentView->invalidRect(size);
    else
        pParentFrame->invalidRect(size);
}

void CView::setVisible(bool state)
{
    if (hasFlag(kVisibleFlag) == state)
        return;
    if (!state)
        invalid();
    setFlag(kVisibleFlag, state);
    if (state)
        invalid();
}

void CView::setAlphaValue(float alpha)
{
    if (alphaValue == alpha)
        return;
    // Twice, since a view with alpha 0 is invisible and requests no repaint.
    invalidateInParent();
    alphaValue = alpha;
    invalidateInParent();
}

CMouseEventResult CView::onMouseDown(CPoint&, const CButtonState&)
{
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseUp(CPoint&, const CButtonState&)
{
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseMoved(CPoint&, const CButtonState&)
{
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseCancel()
{
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseEntered(CPoint&, const CButtonState&)
{
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseExited(CPoint&, const CButtonState&)
{
    return kMouseEventNotImplemented;
}

bool CView::onWheel(const CPoint&, const float&, const CButtonState&)
{
    return false;
}

bool CView::onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                    const CButtonState& buttons)
{
    return onWheel(where, axis == kMouseWheelAxisX ? -distance : distance, buttons);
}

int32_t CView::onKeyDown(VstKeyCode&)
{
    return -1;
}

int32_t CView::onKeyUp(VstKeyCode&)
{
    return -1;
}

bool CView::hitTest(const CPoint& where, const CButtonState&)
{
    return mouseableArea.pointInside(where);
}

void CView::setMouseEnabled(bool state)
{
    setFlag(kMouseEnabledFlag, state);
}

void CView::setViewSize(const CRect& rect, bool doInvalid)
{
    if (size == rect)
        return;
    if (doInvalid)
        invalidateInParent();
    size = rect;
    if (doInvalid)
        setDirty();
    if (pParentView)
        pParentView->notify(this, kMsgViewSizeChanged);
}

CRect CView::getVisibleViewSize() const
{
    CRect visible(size);
    CPoint shift;
    for (const CView* v = pParentView; v; v = v->pParentView) {
        shift += v->size.getTopLeft();
        visible.offset(v->size.getTopLeft());
        visible.bound(v->size);
    }
    return visible.offsetInverse(shift);
}

CPoint& CView::frameToLocal(CPoint& point) const
{
    return pParentView ? pParentView->frameToLocal(point) : point;
}

CPoint& CView::localToFrame(CPoint& point) const
{
    return pParentView ? pParentView->localToFrame(point) : point;
}

void CView::setBackground(CBitmap* bitmap)
{
    background = bitmap;
    if (getMouseEnabled())
        setDirty();
}

void CView::setTransparency(bool state)
{
    if (getTransparency() == state)
        return;
    setFlag(kTransparencyFlag, state);
    setDirty();
}

bool CView::attached(CView* parent)
{
    if (isAttached())
        return false;
    pParentView = parent;
    pParentFrame = parent->getFrame();
    setFlag(kAttachedFlag, true);
    if (pParentFrame)
        pParentFrame->onViewAdded(this);
    return true;
}

bool CView::removed(CView*)
{
    if (!isAttached())
        return false;
    if (pParentFrame)
        pParentFrame->onViewRemoved(this);
    pParentView = nullptr;
    pParentFrame = nullptr;
    setFlag(kAttachedFlag, false);
    return true;
}

VSTGUIEditorInterface* CView::getEditor() const
{
    return pParentFrame ? pParentFrame->getEditor() : nullptr;
}

}  // namespace VSTGUI
