// CRect: a rectangle in pixels. The left and top edges belong to it, right and bottom do not.
#pragma once

#include "vstgui/lib/cpoint.h"

namespace VSTGUI {

struct CRect {
    // Edges are kept as given, even if right is less than left.
    CRect(CCoord left = 0., CCoord top = 0., CCoord right = 0., CCoord bottom = 0.)
        : left(left), top(top), right(right), bottom(bottom)
    {
    }
    CRect(const CPoint& origin, const CPoint& size)
        : CRect(origin.x, origin.y, origin.x + size.x, origin.y + size.y)
    {
    }
    // Swaps edges that are in the wrong order.
    CRect& operator()(CCoord l, CCoord t, CCoord r, CCoord b)
    {
        return *this = CRect(l, t, r, b).normalize();
    }

    bool operator==(const CRect& r) const
    {
        return left == r.left && top == r.top && right == r.right && bottom == r.bottom;
    }
    bool operator!=(const CRect& r) const { return !(*this == r); }

    CCoord getWidth() const { return right - left; }
    CCoord getHeight() const { return bottom - top; }
    CPoint getSize() const { return {getWidth(), getHeight()}; }
    CRect& setWidth(CCoord width) { return setEdges(left, top, left + width, bottom); }
    CRect& setHeight(CCoord height) { return setEdges(left, top, right, top + height); }
    CRect& setSize(const CPoint& s) { return setEdges(left, top, left + s.x, top + s.y); }

    CPoint getTopLeft() const { return {left, top}; }
    CPoint getTopRight() const { return {right, top}; }
    CPoint getBottomLeft() const { return {left, bottom}; }
    CPoint getBottomRight() const { return {right, bottom}; }
    CPoint getCenter() const { return {left + getWidth() / 2., top + getHeight() / 2.}; }
    // Each moves that corner alone.
    CRect& setTopLeft(const CPoint& p) { return setEdges(p.x, p.y, right, bottom); }
    CRect& setTopRight(const CPoint& p) { return setEdges(left, p.y, p.x, bottom); }
    CRect& setBottomLeft(const CPoint& p) { return setEdges(p.x, top, right, p.y); }
    CRect& setBottomRight(const CPoint& p) { return setEdges(left, top, p.x, p.y); }

    CRect& offset(CCoord x, CCoord y) { return setEdges(left + x, top + y, right + x, bottom + y); }
    CRect& offset(const CPoint& p) { return offset(p.x, p.y); }
    CRect& offsetInverse(const CPoint& p) { return offset(-p.x, -p.y); }
    CRect& moveTo(CCoord x, CCoord y) { return offset(x - left, y - top); }
    CRect& moveTo(const CPoint& p) { return moveTo(p.x, p.y); }
    CRect& originize() { return moveTo(0., 0.); }
    // May leave right less than left, or bottom less than top.
    CRect& inset(CCoord x, CCoord y) { return setEdges(left + x, top + y, right - x, bottom - y); }
    CRect& inset(const CPoint& p) { return inset(p.x, p.y); }
    CRect& extend(CCoord x, CCoord y) { return inset(-x, -y); }
    CRect& extend(const CPoint& p) { return inset(-p.x, -p.y); }

    bool pointInside(const CPoint& p) const
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    bool isEmpty() const { return right <= left || bottom <= top; }
    // True also when the rectangles only touch.
    bool rectOverlap(const CRect& r) const
    {
        return right >= r.left && left <= r.right && bottom >= r.top && top <= r.bottom;
    }

    // Intersects with r; without overlap the result is empty.
    CRect& bound(const CRect& r);
    CRect& unite(const CRect& r);
    CRect& normalize();
    CRect& centerInside(const CRect& r);
    // Rounds the edges; halves go up.
    CRect& makeIntegral();

    CCoord left;
    CCoord top;
    CCoord right;
    CCoord bottom;

private:
    CRect& setEdges(CCoord l, CCoord t, CCoord r, CCoord b)
    {
        left = l;
        top = t;
        right = r;
        bottom = b;
        return *this;
    }
};

}  // namespace VSTGUI
