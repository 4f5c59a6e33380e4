// CMovieBitmap: shows the frame of a filmstrip that stands for its value.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/imultibitmapcontrol.h"

namespace VSTGUI {

class CMovieBitmap : public CControl, public IMultiBitmapControl {
public:
    // The first constructor takes frames as high as the view.
    CMovieBitmap(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
                 const CPoint& offset = CPoint(0, 0));
    CMovieBitmap(const CRect& size, IControlListener* listener, int32_t tag, int32_t subPixmaps,
                 CCoord heightOfOneImage, CBitmap* background, const CPoint& offset = CPoint(0, 0));

    void draw(CDrawContext* context) override;
    virtual bool sizeToFit() { return fitToFrame(*this); }

    CLASS_METHODS(CMovieBitmap, CControl)

protected:
    ~CMovieBitmap() override = default;

    CPoint offset;
};

}  // namespace VSTGUI
