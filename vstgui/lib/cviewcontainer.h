// CViewContainer: a view with children, the last added on top, in coordinates of its own.
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

    // Adopts the caller's reference. False, and nothing taken, for null or a view that has a
    // parent.
    virtual bool addView(CView* view);
    // Below that child; on top when it is none.
    virtual bool addView(CView* view, CView* before);
    virtual bool addView(CView* view, const CRect& mouseableArea, bool mouseEnabled = true);
    // Ends a drag in it first. False for a view that is no child. Without forget, the caller owns
    // the adopted reference again.
    virtual bool removeView(CView* view, bool withForget = true);
    virtual bool removeAll(bool withForget = true);
    uint32_t getNbViews() const { return static_cast<uint32_t>(children.size()); }
    // Null when out of range.
    CView* getView(uint32_t index) const;
    // Searches all levels only when deep.
    bool isChild(CView* view, bool deep = false) const;

    virtual void setBackgroundColor(const CColor& color);
    CColor getBackgroundColor() const { return backgroundColor; }
    virtual void setBackgroundOffset(const CPoint& offset) { backgroundOffset = offset; }
    const CPoint& getBackgroundOffset() const { return backgroundOffset; }
    virtual void setAutosizingEnabled(bool) { }

    // Dirty children come out marked for repainting, and clean.
    virtual void invalidateDirtyViews();
    // The chain of views under a point of the parent's coordinates, this container's side first.
    void collectViewsAt(const CPoint& where, std::vector<SharedPointer<CView>>& chain) const;
    // The child that gets moves and the release; null outside a drag.
    CView* getMouseDownView() const { return mouseDownView; }
    // Views that want the focus and can be reached, in tree order.
    void collectFocusViews(std::vector<CView*>& views) const;

    void drawRect(CDrawContext* context, const CRect& updateRect) override;
    virtual void drawBackgroundRect(CDrawContext* context, const CRect& updateRect);
    bool isDirty() const override;
    void invalid() override;
    // In the children's coordinates.
    void invalidRect(const CRect& rect) override;
    void setViewSize(const CRect& rect, bool invalid = true) override;
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
    // Top to bottom, safe against changes by what is called.
    Children topFirst() const { return Children(children.rbegin(), children.rend()); }

    Children children;
    SharedPointer<CView> mouseDownView;
    CPoint lastMouse;  // content coordinates, and buttons, of the view that holds the mouse
    CButtonState lastButtons;
    CColor backgroundColor{kBlackCColor};
    CPoint backgroundOffset;
};

}  // namespace VSTGUI
