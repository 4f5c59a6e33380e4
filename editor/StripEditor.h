// StripEditor: a column of the window. It is no view itself, but builds a container with a
// background, places its controls there and pushes parameter values into them.
#pragma once

#include "vstgui/vstgui.h"

class StripEditor {
public:
    // The listener hears every control of the strip.
    explicit StripEditor(VSTGUI::IControlListener* listener);
    // Detach first.
    virtual ~StripEditor() = default;
    StripEditor(const StripEditor&) = delete;
    StripEditor& operator=(const StripEditor&) = delete;

    // Shows the strip with its top left corner there. False when it is shown already, and for a
    // null frame.
    virtual bool attach(VSTGUI::CFrame* frame, const VSTGUI::CPoint& origin);
    // Removes the container from the frame, and with it all controls. Nothing when not attached.
    virtual void detach();
    // A normalised value of any parameter; those of other strips are not taken.
    virtual void setParameter(int32_t id, double value);
    // 1: the plug-in is on.
    virtual void setPower(int32_t state);

protected:
    // A container of that size at `origin`, with a bitmap (none: 0) behind its controls.
    bool attachContainer(VSTGUI::CFrame* frame, const VSTGUI::CPoint& origin,
                         const VSTGUI::CPoint& size, int32_t background);

    VSTGUI::CViewContainer* container = nullptr;  // the frame's while attached
    VSTGUI::CFrame* frame = nullptr;
    VSTGUI::IControlListener* listener;
    bool attached = false;
};

// Writes a value into a control, if there is one, and has it redrawn.
template <class Control>
void show(Control* control, double value)
{
    if (!control)
        return;
    control->setValue(static_cast<float>(value));
    control->setDirty();
}

// The same for a power state.
template <class Control>
void showPower(Control* control, int32_t state)
{
    if (!control)
        return;
    control->setPower(state);
    control->setDirty();
}
