// CBitmap: a picture, which may hold frames stacked from the top.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/lib/cresourcedescription.h"

namespace VSTGUI {

class CDrawContext;
class IPlatformBitmap;

class CBitmap : public CBaseObject {
public:
    // Loads at once. A missing or damaged picture leaves the object unloaded.
    explicit CBitmap(const CResourceDescription& description);
    CBitmap(const CBitmap& other);
    CBitmap& operator=(const CBitmap& other) = delete;
    ~CBitmap() override;

    bool isLoaded() const;
    // Pixels; 0 when not loaded.
    CCoord getWidth() const;
    CCoord getHeight() const;

    // Draws the part at `offset`, as large as `rect`, into `rect`, blended over what is there and
    // never scaled or tiled. Coordinates are truncated to whole pixels; beyond the picture's edges
    // nothing is drawn.
    virtual void draw(CDrawContext* context, const CRect& rect, const CPoint& offset = CPoint(0, 0),
                      float alpha = 1.f);

    const CResourceDescription& getResourceDescription() const { return description; }
    // Null when not loaded.
    IPlatformBitmap* getPlatformBitmap() const;

    CLASS_METHODS(CBitmap, CBaseObject)

private:
    CResourceDescription description;
    SharedPointer<IPlatformBitmap> platformBitmap;
};

}  // namespace VSTGUI
