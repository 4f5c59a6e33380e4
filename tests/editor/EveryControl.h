// One of each control, with a place where a press makes it speak.
#pragma once

#include "CAnimCoaxT46CustomKnob.h"
#include "CAnimDriveKnob.h"
#include "CAnimFreqKnob.h"
#include "CBlinkLEDButton.h"
#include "CPowerLED.h"
#include "CPoweredResizeButton.h"
#include "CPoweredVerticalSwitch.h"
#include "CSaveLoadButton.h"
#include "CZKKickButton2.h"
#include "CZKRRockerSwitch.h"
#include "CZKRTextEdit.h"

#include "vstgui/vstgui.h"

#include <functional>
#include <vector>

struct ControlKind {
    const char* name;
    std::function<VSTGUI::CControl*(CControlListener*, VSTGUI::CBitmap*)> make;
    VSTGUI::CPoint press;  // in the coordinates of its parent
};

// All lie within 10..130 by 10..130.
inline std::vector<ControlKind> everyControl()
{
    using namespace VSTGUI;
    const CRect rect(10, 10, 130, 130);
    const CPoint middle(70, 70);
    const CPoint none(0, 0);
    const auto powered = [](auto* control) {
        control->setPower(1);
        return control;
    };
    return {
        {"on/off button", [=](auto* l, auto* b) { return new CZKROnOffButton(rect, l, 0, b); },
         middle},
        {"powered button",
         [=](auto* l, auto* b) { return powered(new CPoweredButton(rect, l, 4, b, true)); },
         middle},
        {"resize button",
         [=](auto* l, auto* b) { return powered(new CPoweredResizeButton(rect, l, 5, b, false)); },
         middle},
        {"blinking button",
         [=](auto* l, auto* b) { return powered(new CBlinkLEDButton(rect, l, 1, b, false)); },
         middle},
        {"vertical switch",
         [=](auto* l, auto* b) {
             return powered(new CPoweredVerticalSwitch(rect, l, 3, 5, 120, 5, b));
         },
         middle},
        {"led", [=](auto* l, auto* b) { return powered(new CPowerLED(rect, l, 0, 2, 20, b)); },
         middle},
        {"band knob",
         [=](auto* l, auto* b) {
             auto* const knob =
                 new CAnimCoaxT46CustomKnob(rect, l, 28, 5, 20, b, none, 25, 12, 25, 18);
             knob->setOuterBitmap(b, 5);
             knob->setOverlayBitmap(b);
             return knob;
         },
         {72, 67}},
        {"band label",
         [=](auto* l, auto* b) {
             auto* const knob =
                 new CAnimCoaxT46CustomKnob(rect, l, 28, 5, 20, b, none, 25, 12, 25, 18);
             return knob;
         },
         {105, 18}},
        {"level knob",
         [=](auto* l, auto* b) { return new CAnimDriveKnob(rect, l, 8, 5, 20, b, none, 15); },
         middle},
        {"dial",
         [=](auto* l, auto* b) {
             auto* const dial = new CAnimFreqKnob(rect, l, 10, 5, 20, b, none, 15);
             dial->setOverlayBitmap(b);
             return dial;
         },
         middle},
        {"kick button", [=](auto* l, auto* b) { return new CZKKickButton(rect, l, 1015, 20, b); },
         middle},
        {"second kick button",
         [=](auto* l, auto* b) { return new CZKKickButton2(rect, l, 60, 20, b); }, middle},
        {"file button", [=](auto* l, auto* b) { return new CSaveLoadButton(rect, l, 1002, 20, b); },
         middle},
        {"rocker", [=](auto* l, auto* b) { return new CZKRRockerSwitch(rect, l, 1001, 20, b); },
         middle},
        {"name field", [=](auto* l, auto* b) { return new CZKRTextEdit(rect, l, 1000, "Name", b); },
         middle},
    };
}
