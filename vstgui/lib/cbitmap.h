// CBitmap: a picture, perhaps with frames stacked from the top.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/lib/cresourcedescription.h"

namespace VSTGUI {

class CDrawContext;
class IPlatformBitmap;

class CBitmap : public CBaseObject {
public:
    // Loads at once. A picture that is missing or damaged leaves an unloaded object.
    explicit CBitmap(const CResourceDescription& description);
    CBitmap(const CBitmap& other);
    CBitmap& operator=(const CBitmap& other) = delete;
    ~CBitmap() override;

    bool isLoaded() const;
    // Pixels; 0 when not loaded.
    CCoord getWidth() const;
    CCoord getHeight() const;

    // Copies the part at offset, as large as rect, to rect: over what is there, never scaled, never
    // tiled. Coordinates are cut to whole pixels; beyond the picture's edges nothing is drawn.
    virtual void draw(CDrawContext* context, const CRect& rect, const CPoint& offset = CPoint(0, 0),
                      float alpha = 1.f);

    const CResourceDescription& getResourceDescription() const { return resource; }
    // Null when not loaded.
    IPlatformBitmap* getPlatformBitmap() const;

    CLASS_METHODS(CBitmap, CBaseObject)

private:
    CResourceDescription resource;
    SharedPointer<IPlatformBitmap> platformBitmap;
};

}  // namespace VSTGUI
