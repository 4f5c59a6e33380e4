#include "vstgui/lib/crect.h"

#include <algorithm>

namespace VSTGUI {

CRect& CRect::bound(const CRect& r)
{
    setEdges(std::max(left, r.left), std::max(top, r.top), std::min(right, r.right),
             std::min(bottom, r.bottom));
    right = std::max(left, right);
    bottom = std::max(top, bottom);
    return *this;
}

CRect& CRect::unite(const CRect& r)
{
    return setEdges(std::min(left, r.left), std::min(top, r.top), std::max(right, r.right),
                    std::max(bottom, r.bottom));
}

CRect& CRect::normalize()
{
    return setEdges(std::min(left, right), std::min(top, bottom), std::max(left, right),
                    std::max(top, bottom));
}

CRect& CRect::centerInside(const CRect& r)
{
    return moveTo(r.left + (r.getWidth() - getWidth()) / 2.,
                  r.top + (r.getHeight() - getHeight()) / 2.);
}

CRect& CRect::makeIntegral()
{
    return setEdges(std::floor(left + 0.5), std::floor(top + 0.5), std::floor(right + 0.5),
                    std::floor(bottom + 0.5));
}

}  // namespace VSTGUI
