// CInfo: the panel with the product's name, version and latency. It covers the whole editor, so the
// views below get no mouse events; a click closes it.
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
