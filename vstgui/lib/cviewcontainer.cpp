// CViewContainer: its children and their painting.
#include "vstgui/lib/cviewcontainer.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cdrawcontext.h"

#include <algorithm>

namespace VSTGUI {

CViewContainer::CViewContainer(const CRect& size) : CView(size) { }

CViewContainer::CViewContainer(const CViewContainer& other)
    : CView(other), backgroundColor(other.backgroundColor), backgroundOffset(other.backgroundOffset)
{
    for (CView* child : other.children) {
        if (CBaseObject* copy = child->newCopy())
            insert(static_cast<CView*>(copy), children.end());
    }
}

CViewContainer::~CViewContainer() = default;

void CViewContainer::beforeDelete()
{
    CViewContainer::removeAll(true);
    CView::beforeDelete();
}

bool CViewContainer::insert(CView* view, Children::iterator position)
{
    if (!view || view->isSubview())
        return false;
    children.insert(position, SharedPointer<CView>(view));
    view->setSubviewState(true);
    if (isAttached()) {
        view->attached(this);
        view->invalid();
    }
    return true;
}

bool CViewContainer::addView(CView* view)
{
    return insert(view, children.end());
}

bool CViewContainer::addView(CView* view, CView* before)
{
    return insert(view, std::find(children.begin(), children.end(), before));
}

bool CViewContainer::addView(CView* view, const CRect& area, bool mouseEnabled)
{
    if (!addView(view))
        return false;
    view->setMouseableArea(area);
    view->setMouseEnabled(mouseEnabled);
    return true;
}

bool CViewContainer::removeView(CView* view, bool withForget)
{
    if (!isChild(view))
        return false;
    const SharedPointer<CView> guard(view);
    view->invalid();
    if (mouseDownView == view)
        onMouseCancel();
    const auto it = std::find(children.begin(), children.end(), view);
    if (it == children.end())
        return true;  // removed by its handler when the drag ended
    children.erase(it);
    view->removed(this);
    view->setSubviewState(false);
    if (withForget)
        view->forget();
    return true;
}

bool CViewContainer::removeAll(bool withForget)
{
    if (mouseDownView)
        onMouseCancel();
    while (!children.empty()) {
        const SharedPointer<CView> view = children.front();
        children.erase(children.begin());
        view->removed(this);
        view->setSubviewState(false);
        if (withForget)
            view->forget();
    }
    return true;
}

CView* CViewContainer::getView(uint32_t index) const
{
    return index < children.size() ? children[index] : nullptr;
}

bool CViewContainer::isChild(CView* view, bool deep) const
{
    return std::any_of(children.begin(), children.end(), [&](CView* child) {
        if (child == view)
            return true;
        const auto* container = deep ? dynamic_cast<CViewContainer*>(child) : nullptr;
        return container && container->isChild(view, true);
    });
}

void CViewContainer::setBackgroundColor(const CColor& color)
{
    if (backgroundColor == color)
        return;
    backgroundColor = color;
    setDirty();
}

void CViewContainer::invalidateDirtyViews()
{
    if (CView::isDirty()) {
        CView::setDirty(false);
        invalid();
        return;
    }
    for (const auto& child : Children(children)) {
        if (!child->isVisible())
            continue;
        if (auto* container = child.cast<CViewContainer>())
            container->invalidateDirtyViews();
        else if (child->isDirty())
            child->invalid();
    }
}

void CViewContainer::collectViewsAt(const CPoint& where,
                                    std::vector<SharedPointer<CView>>& chain) const
{
    const CPoint inside = toContent(where);
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        CView* child = *it;
        if (!child->isVisible() || !child->getMouseEnabled()
            || !child->getMouseableArea().pointInside(inside))
            continue;
        chain.push_back(child);
        if (const auto* container = dynamic_cast<CViewContainer*>(child))
            container->collectViewsAt(inside, chain);
        return;
    }
}

void CViewContainer::collectFocusViews(std::vector<CView*>& views) const
{
    for (CView* child : children) {
        if (!child->isVisible() || !child->getMouseEnabled())
            continue;
        if (child->wantsFocus())
            views.push_back(child);
        if (const auto* container = dynamic_cast<CViewContainer*>(child))
            container->collectFocusViews(views);
    }
}

void CViewContainer::drawRect(CDrawContext* context, const CRect& updateRect)
{
    {
        const CDrawContext::Origin origin(*context, size.getTopLeft());
        CRect clip;
        context->getClipRect(clip);
        CRect area(updateRect);
        area.bound(size).offsetInverse(size.getTopLeft()).bound(clip);
        context->setClipRect(area);
        drawBackgroundRect(context, area);

        const float alpha = context->getGlobalAlpha();
        for (const auto& child : Children(children)) {
            CRect part(child->getViewSize());
            if (!child->isVisible() || part.bound(area).isEmpty())
                continue;
            context->setClipRect(part);
            context->setGlobalAlpha(alpha * child->getAlphaValue());
            child->drawRect(context, part);
            context->setGlobalAlpha(alpha);
        }
        context->setClipRect(clip);
    }
    setDirty(false);
}

void CViewContainer::drawBackgroundRect(CDrawContext* context, const CRect& updateRect)
{
    if (CBitmap* bitmap = getDrawBackground()) {
        bitmap->draw(context, CRect(0, 0, getWidth(), getHeight()), backgroundOffset);
    } else if (!getTransparency() || backgroundColor.alpha != 255) {
        context->setFillColor(backgroundColor);
        context->drawRect(updateRect, kDrawFilled);
    }
}

bool CViewContainer::isDirty() const
{
    const CRect content(CPoint(), size.getSize());
    return CView::isDirty() || std::any_of(children.begin(), children.end(), [&](CView* child) {
               return child->isVisible() && child->isDirty()
                   && child->getViewSize().rectOverlap(content);
           });
}

void CViewContainer::invalid()
{
    CView::invalidRect(size);
}

void CViewContainer::invalidRect(const CRect& rect)
{
    CRect inParent(rect);
    inParent.offset(size.getTopLeft()).bound(size);
    if (!inParent.isEmpty())
        CView::invalidRect(inParent);
}

void CViewContainer::setViewSize(const CRect& rect, bool doInvalid)
{
    if (rect == size)
        return;
    CView::setViewSize(rect, doInvalid);
    parentSizeChanged();
}

void CViewContainer::parentSizeChanged()
{
    for (const auto& child : Children(children))
        child->parentSizeChanged();
}

CPoint& CViewContainer::frameToLocal(CPoint& point) const
{
    return CView::frameToLocal(point).offsetInverse(size.getTopLeft());
}

CPoint& CViewContainer::localToFrame(CPoint& point) const
{
    return CView::localToFrame(point.offset(size.getTopLeft()));
}

bool CViewContainer::attached(CView* parent)
{
    if (!CView::attached(parent))
        return false;
    for (const auto& child : Children(children))
        child->attached(this);
    return true;
}

bool CViewContainer::removed(CView* parent)
{
    if (!isAttached())
        return false;
    if (mouseDownView)
        onMouseCancel();
    for (const auto& child : Children(children))
        child->removed(this);
    return CView::removed(parent);
}

}  // namespace VSTGUI
