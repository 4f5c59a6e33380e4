// IMultiBitmapControl: for controls whose bitmap holds frames stacked from the top.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

class CBitmap;
class CControl;

class IMultiBitmapControl {
public:
    virtual ~IMultiBitmapControl() = default;

    virtual void setHeightOfOneImage(const CCoord& height) { heightOfOneImage = height; }  // pixels
    virtual CCoord getHeightOfOneImage() const { return heightOfOneImage; }
    virtual void setNumSubPixmaps(int32_t count) { subPixmaps = count; }
    virtual int32_t getNumSubPixmaps() const { return subPixmaps; }

protected:
    IMultiBitmapControl(CCoord heightOfOneImage, int32_t subPixmaps)
        : heightOfOneImage(heightOfOneImage), subPixmaps(subPixmaps)
    {
    }

    // The number of whole frames of that height in the bitmap; 0 without a bitmap or a height.
    static int32_t countFrames(const CBitmap* bitmap, CCoord height);
    // The frame for a value from 0 to 1, rounded to the nearest.
    int32_t frameAt(float normalized) const;
    // Sets view and mouseable area to the bitmap's width and one frame's height. False without a
    // bitmap.
    bool fitToFrame(CControl& control) const;

    CCoord heightOfOneImage;
    int32_t subPixmaps;
};

}  // namespace VSTGUI
