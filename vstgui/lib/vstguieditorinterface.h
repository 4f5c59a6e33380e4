// VSTGUIEditorInterface: what a frame needs from the editor that owns it.
#pragma once

#include "vstgui/lib/crect.h"

namespace VSTGUI {

class CFrame;

class VSTGUIEditorInterface {
public:
    virtual void doIdleStuff() { }
    // A CKnobMode, or -1 for the toolkit's default.
    virtual int32_t getKnobMode() const { return -1; }
    virtual void beginEdit(int32_t /*tag*/) { }
    virtual void endEdit(int32_t /*tag*/) { }
    // False keeps the old size.
    virtual bool beforeSizeChange(const CRect& /*newSize*/, const CRect& /*oldSize*/)
    {
        return true;
    }
    virtual CFrame* getFrame() const { return frame; }

protected:
    VSTGUIEditorInterface() = default;
    virtual ~VSTGUIEditorInterface() = default;

    // Set by the editor, and null again once the editor has closed the frame.
    CFrame* frame{nullptr};
};

}  // namespace VSTGUI
