// CPoint: a position or a size, in pixels.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <cmath>

namespace VSTGUI {

struct CRect;

struct CPoint {
    CPoint(CCoord x = 0., CCoord y = 0.) : x(x), y(y) { }

    CPoint& operator()(CCoord newX, CCoord newY)
    {
        x = newX;
        y = newY;
        return *this;
    }

    bool operator==(const CPoint& p) const { return x == p.x && y == p.y; }
    bool operator!=(const CPoint& p) const { return !(*this == p); }
    CPoint& operator+=(const CPoint& p) { return offset(p.x, p.y); }
    CPoint& operator-=(const CPoint& p) { return offset(-p.x, -p.y); }
    CPoint operator+(const CPoint& p) const { return {x + p.x, y + p.y}; }
    CPoint operator-(const CPoint& p) const { return {x - p.x, y - p.y}; }
    CPoint operator-() const { return {-x, -y}; }

    CPoint& offset(CCoord dx, CCoord dy) { return (*this)(x + dx, y + dy); }
    CPoint& offset(const CPoint& p) { return offset(p.x, p.y); }
    CPoint& offsetInverse(const CPoint& p) { return offset(-p.x, -p.y); }
    // Rounds; halves go up.
    CPoint& makeIntegral() { return (*this)(std::floor(x + 0.5), std::floor(y + 0.5)); }

    CCoord x;
    CCoord y;
};

}  // namespace VSTGUI
