// AttachedEditor: the controller's interface to an open editor, with the changes that are postponed
// to the editor's thread.
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <map>
#include <mutex>

namespace Steinberg {
namespace Vst {

// Views and the host's window are used on one thread only: the one that opened the editor and runs
// its timer. Hosts set states and parameters on other threads too; the editor shows these changes
// after its next timer tick.
class AttachedEditor {
public:
    // Shows a parameter's new normalised value. An id from 1000 up is a PresetTag, for a change of
    // the presets. On the editor's thread.
    virtual void setParameter(ParamID id, ParamValue value) = 0;
    // Whether the caller runs on the editor's thread.
    virtual bool isOnOwnThread() const = 0;

    // Keeps a change for takeUpPostponed. From any thread, while the editor is attached.
    void postpone(ParamID id, ParamValue value);
    // Drops the postponed change of this id, for a newer one.
    void dropPostponed(ParamID id);
    // Calls setParameter for the postponed changes, in order of id: parameters with their present
    // value, other ids with the last one given. On the editor's thread. An override keeps the editor
    // alive: a change of its size may make the host close and release it.
    virtual void takeUpPostponed();

protected:
    ~AttachedEditor() = default;

    // The controller's value of a parameter.
    virtual ParamValue currentValue(ParamID id) const = 0;

private:
    std::mutex mutex;  // of the map; not held during calls to other objects
    std::map<ParamID, ParamValue> postponed;
};

}  // namespace Vst
}  // namespace Steinberg
