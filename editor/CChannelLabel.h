// CChannelLabel: tells, under the strips, which channels they belong to; a click flips Mid/Side.
#pragma once

#include "vstgui/vstgui.h"

class CChannelLabel : public VSTGUI::CMovieBitmap {
public:
    // The bitmap has six rows: the stereo labels of the layouts, then those of Mid/Side.
    CChannelLabel(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                  VSTGUI::CBitmap* background);

    // From 0.5 up: Mid/Side.
    void setValue(float value) override;
    // 0 to 3; others are ignored. The label ends at the last strip that the layout shows.
    void setLayoutMode(int32_t mode);

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CChannelLabel, VSTGUI::CMovieBitmap)

private:
    VSTGUI::CPoint sourceOffset;
    int32_t layoutMode = 0;
    int32_t midSide = 0;
};
