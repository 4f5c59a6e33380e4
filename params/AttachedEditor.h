// What the controller knows of an open editor, and what waits until the editor's thread takes it
// up.
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <map>
#include <mutex>

namespace Steinberg {
namespace Vst {

// Views and the host's window are touched on one thread only: the one that opened the editor and
// runs its timer. Hosts set states and parameters on others too; the editor follows those with its
// next tick.
class AttachedEditor {
public:
    // A parameter has a new normalised value; or, from id 1000 up, something of the presets has
    // changed that the id names. On the editor's thread.
    virtual void setParameter(ParamID id, ParamValue value) = 0;
    // Whether the caller runs on the editor's thread.
    virtual bool isOnOwnThread() const = 0;

    // Keeps a change for takeUpPostponed. From any thread, while the editor is attached.
    void postpone(ParamID id, ParamValue value);
    // A newer change of the same id has been made: the postponed one is dropped.
    void forgetPostponed(ParamID id);
    // Passes on what was postponed, in order of id: parameters with the value that they have now,
    // other ids with the last one given. On the editor's thread.
    void takeUpPostponed();

protected:
    ~AttachedEditor() = default;

    // What the controller holds for a parameter.
    virtual ParamValue currentValue(ParamID id) const = 0;

private:
    std::mutex mutex;  // of the map; never held while anyone is called
    std::map<ParamID, ParamValue> postponed;
};

}  // namespace Vst
}  // namespace Steinberg
