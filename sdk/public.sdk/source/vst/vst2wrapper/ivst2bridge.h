// Interfaces between the VST 2 wrapper and a controller, beyond the SDK's.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {
namespace Vst {

// Implemented by the controller: the name of the single program that a VST 2 host sees.
class IProgramName : public FUnknown {
public:
    static constexpr int32 kSize = 25;  // bytes, with the terminator
    virtual tresult PLUGIN_API getSelectedName(char* name) = 0;
    virtual tresult PLUGIN_API setSelectedName(const char* name) = 0;
    static const FUID iid;
};
DECLARE_CLASS_IID(IProgramName, 0x1F0A6E53, 0x8C2B4D77, 0x9E61B03D, 0x54C7F218)

// Implemented by the wrapper: gives the controller all pending values that a host has set.
class IPendingValues : public FUnknown {
public:
    virtual void PLUGIN_API deliverPendingValues() = 0;
    static const FUID iid;
};
DECLARE_CLASS_IID(IPendingValues, 0x6B3D91C4, 0x27F84E0A, 0xB5D20C9F, 0xE8134A76)

// Implemented by the controller: while editors are held, they are not notified of parameter
// changes. The last release notifies the editors of its own thread; others catch up at their next
// timer tick. So a thread that holds editors never calls into a view and through it into the host.
// Calls are paired, from any thread.
class IEditorUpdates : public FUnknown {
public:
    virtual void PLUGIN_API holdEditors() = 0;
    virtual void PLUGIN_API releaseEditors() = 0;
    static const FUID iid;
};
DECLARE_CLASS_IID(IEditorUpdates, 0x3C5A7E90, 0x41D64B8F, 0xA27B6D13, 0x0F92C5E8)

}  // namespace Vst
}  // namespace Steinberg
