// CChannelLabel: the row of channel names below the strips. A click toggles Mid/Side.
#pragma once

#include "vstgui/vstgui.h"

class CChannelLabel : public VSTGUI::CMovieBitmap {
public:
    // The bitmap has six rows of 32 pixels: the stereo labels of the three window widths, then the
    // same for Mid/Side.
    CChannelLabel(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                  VSTGUI::CBitmap* background);

    // From 0.5 up: Mid/Side.
    void setValue(float newValue) override;
    // 0 to 3, as from layoutModeOf; others are ignored. The label is as wide as the strips shown.
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
