// StripEditor: base of the window's columns. A column is not a view itself; it adds a container
// with a background and controls to the frame, and writes parameter values into the controls.
#pragma once

#include "vstgui/vstgui.h"

class StripEditor {
public:
    // The listener is told of changes to the strip's controls.
    explicit StripEditor(VSTGUI::IControlListener* listener);
    // Call detach first.
    virtual ~StripEditor() = default;
    StripEditor(const StripEditor&) = delete;
    StripEditor& operator=(const StripEditor&) = delete;

    // Adds the strip to the frame with its top left corner at `origin`. False for null, and when
    // the strip is attached already.
    virtual bool attach(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin);
    // Removes the container from the frame, and with it all controls. No effect when not attached.
    virtual void detach();
    // Shows a parameter's normalised value; parameters without a control here are ignored.
    virtual void setParameter(int32_t id, double value);
    // Shows the power state: 1 on, 0 off.
    virtual void setPower(int32_t state);

protected:
    // Adds a container of that size at `origin`; `background` is a bitmap's number, 0 for none.
    bool attachContainer(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin,
                         const VSTGUI::CPoint& size, int32_t background);

    VSTGUI::CViewContainer* container = nullptr;  // owned by the frame
    VSTGUI::CFrame* frame = nullptr;
    VSTGUI::IControlListener* listener;
    bool attached = false;
};

// Sets a control's value and marks it for redrawing; null is ignored.
template <class Control>
void show(Control* control, double value)
{
    if (!control)
        return;
    control->setValue(static_cast<float>(value));
    control->setDirty();
}

// The same for the power state.
template <class Control>
void showPower(Control* control, int32_t state)
{
    if (!control)
        return;
    control->setPower(state);
    control->setDirty();
}
