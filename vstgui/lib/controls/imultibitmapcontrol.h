// IMultiBitmapControl: a control whose bitmap holds frames stacked from the top.
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
    IMultiBitmapControl(CCoord height, int32_t count) : heightOfOneImage(height), subPixmaps(count)
    {
    }

    // Whole frames of that height in the picture; 0 without a picture or a height.
    static int32_t countFrames(const CBitmap* bitmap, CCoord height);
    // The frame of a value from 0 to 1, in steps centred on the frames' own values.
    int32_t frameAt(float normalized) const;
    // View and mouse area get the bitmap's width and one frame's height. False without a bitmap.
    bool fitToFrame(CControl& control) const;

    CCoord heightOfOneImage;
    int32_t subPixmaps;
};

}  // namespace VSTGUI
