// What the controller knows of an open editor.
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

namespace Steinberg {
namespace Vst {

class AttachedEditor {
public:
    // A parameter has a new normalised value; or, from id 1000 up, something of the presets has
    // changed that the id names.
    virtual void setParameter(ParamID id, ParamValue value) = 0;

protected:
    ~AttachedEditor() = default;
};

}  // namespace Vst
}  // namespace Steinberg
