// CInfo: the panel about the product, which covers the editor while it is shown; a click closes it,
// and no other mouse event has an effect or reaches what is below.
#pragma once

#include "vstgui/vstgui.h"

#include <string>

class CInfo : public VSTGUI::CControl {
public:
    CInfo(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag);

    void setLatency(double seconds);
    const std::string& latencyText() const { return latency; }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CInfo, VSTGUI::CControl)

private:
    std::string latency;
};
