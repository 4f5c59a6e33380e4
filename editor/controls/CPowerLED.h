// CPowerLED: an LED that shows its value; without power, its first frame.
#pragma once

#include "editor/controls/CPoweredControl.h"

#include "vstgui/lib/controls/cmoviebitmap.h"

class CPowerLED : public VSTGUI::CMovieBitmap, public CPoweredControl {
public:
    using VSTGUI::CMovieBitmap::CMovieBitmap;

    void draw(VSTGUI::CDrawContext* context) override;

    CLASS_METHODS(CPowerLED, VSTGUI::CMovieBitmap)

protected:
    ~CPowerLED() override = default;
};
