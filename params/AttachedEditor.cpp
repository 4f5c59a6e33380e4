#include "params/AttachedEditor.h"

#include "params/ids/ParameterIds.h"

#include <utility>

namespace Steinberg {
namespace Vst {

void AttachedEditor::postpone(ParamID id, ParamValue value)
{
    const std::lock_guard<std::mutex> lock(mutex);
    postponed[id] = value;
}

void AttachedEditor::dropPostponed(ParamID id)
{
    const std::lock_guard<std::mutex> lock(mutex);
    postponed.erase(id);
}

void AttachedEditor::takeUpPostponed()
{
    std::map<ParamID, ParamValue> changes;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        changes = std::exchange(postponed, {});
    }
    for (const auto& [id, value] : changes)
        setParameter(id, id < kPresetParamCount ? currentValue(id) : value);
}

}  // namespace Vst
}  // namespace Steinberg
