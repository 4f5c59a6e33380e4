// CViewContainer: a view with children; the last one added is on top. Children have their
// coordinates relative to the container's top left corner.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cdrawdefs.h"
#include "vstgui/lib/cview.h"

#include <vector>

namespace VSTGUI {

class CViewContainer : public CView {
public:
    // Black background.
    explicit CViewContainer(const CRect& size);
    // Copies the children that can be copied.
    CViewContainer(const CViewContainer& other);

    // Takes over the caller's reference. False, and nothing is taken, for null and for a view that
    // has a parent.
    virtual bool addView(CView* view);
    // Below the child `before`; on top when that is no child.
    virtual bool addView(CView* view, CView* before);
    virtual bool addView(CView* view, const CRect& area, bool mouseEnabled = true);
    // Ends a drag in the view first. False for a view that is no child. Without forget, the caller
    // gets the reference back.
    virtual bool removeView(CView* view, bool withForget = true);
    virtual bool removeAll(bool withForget = true);
    uint32_t getNbViews() const { return static_cast<uint32_t>(children.size()); }
    // Null when out of range.
    CView* getView(uint32_t index) const;
    // Deep: also children of children.
    bool isChild(CView* view, bool deep = false) const;

    virtual void setBackgroundColor(const CColor& color);
    virtual void setBackgroundOffset(const CPoint& offset) { backgroundOffset = offset; }

    // Requests a repaint of dirty children and clears their marks.
    virtual void invalidateDirtyViews();
    // The views under a point in the parent's coordinates, outermost first.
    void collectViewsAt(const CPoint& where, std::vector<SharedPointer<CView>>& chain) const;
    // The child that gets mouse moves and the release; null outside a drag.
    CView* getMouseDownView() const { return mouseDownView; }
    // Visible, enabled views that want the focus, in tree order.
    void collectFocusViews(std::vector<CView*>& views) const;

    void drawRect(CDrawContext* context, const CRect& updateRect) override;
    virtual void drawBackgroundRect(CDrawContext* context, const CRect& updateRect);
    bool isDirty() const override;
    void invalid() override;
    // In the children's coordinates.
    void invalidRect(const CRect& rect) override;
    void setViewSize(const CRect& rect, bool doInvalid = true) override;
    void parentSizeChanged() override;
    CPoint& frameToLocal(CPoint& point) const override;
    CPoint& localToFrame(CPoint& point) const override;
    bool attached(CView* parent) override;
    bool removed(CView* parent) override;

    using CView::onWheel;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseCancel() override;
    bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                 const CButtonState& buttons) override;

    CLASS_METHODS(CViewContainer, CView)

protected:
    ~CViewContainer() override;
    void beforeDelete() override;

private:
    using Children = std::vector<SharedPointer<CView>>;

    bool insert(CView* view, Children::iterator position);
    CPoint toContent(const CPoint& where) const { return where - size.getTopLeft(); }
    // A copy, top to bottom, which stays valid when a handler changes the list.
    Children topFirst() const { return Children(children.rbegin(), children.rend()); }

    Children children;
    SharedPointer<CView> mouseDownView;
    CPoint lastMouse;  // of the current drag, content coordinates
    CButtonState lastButtons;
    CColor backgroundColor{kBlackCColor};
    CPoint backgroundOffset;
};

}  // namespace VSTGUI
