#include "public.sdk/source/vst/hosting/parameterchanges.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {

IMPLEMENT_FUNKNOWN_METHODS(ParameterValueQueue, IParamValueQueue, IParamValueQueue::iid)

ParameterValueQueue::ParameterValueQueue(ParamID paramID) : paramID(paramID)
{
    FUNKNOWN_CTOR;
    points.reserve(5);
}

tresult PLUGIN_API ParameterValueQueue::getPoint(int32 index, int32& sampleOffset,
                                                 ParamValue& value)
{
    if (index < 0 || index >= getPointCount())
        return kResultFalse;
    const Point& point = points[static_cast<size_t>(index)];
    sampleOffset = point.sampleOffset;
    value = point.value;
    return kResultTrue;
}

tresult PLUGIN_API ParameterValueQueue::addPoint(int32 sampleOffset, ParamValue value, int32& index)
{
    const auto place = std::lower_bound(
        points.begin(), points.end(), sampleOffset,
        [](const Point& point, int32 offset) { return point.sampleOffset < offset; });
    index = static_cast<int32>(place - points.begin());
    if (place != points.end() && place->sampleOffset == sampleOffset)
        place->value = value;
    else
        points.insert(place, {sampleOffset, value});
    return kResultTrue;
}

IMPLEMENT_FUNKNOWN_METHODS(ParameterChanges, IParameterChanges, IParameterChanges::iid)

ParameterChanges::ParameterChanges(int32 maxParameters)
{
    FUNKNOWN_CTOR;
    setMaxParameters(maxParameters);
}

void ParameterChanges::setMaxParameters(int32 maxParameters)
{
    if (maxParameters < 0)
        return;
    const auto wanted = static_cast<size_t>(maxParameters);
    if (wanted < queues.size())
        queues.resize(wanted);
    while (queues.size() < wanted)
        queues.push_back(std::make_unique<ParameterValueQueue>(kNoParamId));
    usedCount = std::min(usedCount, maxParameters);
}

IParamValueQueue* PLUGIN_API ParameterChanges::getParameterData(int32 index)
{
    if (index < 0 || index >= usedCount)
        return nullptr;
    return queues[static_cast<size_t>(index)].get();
}

IParamValueQueue* PLUGIN_API ParameterChanges::addParameterData(const ParamID& id, int32& index)
{
    for (index = 0; index < usedCount; ++index) {
        ParameterValueQueue& queue = *queues[static_cast<size_t>(index)];
        if (queue.getParameterId() == id)
            return &queue;
    }
    if (static_cast<size_t>(usedCount) == queues.size())
        queues.push_back(std::make_unique<ParameterValueQueue>(id));
    ParameterValueQueue& queue = *queues[static_cast<size_t>(usedCount++)];
    queue.setParamID(id);
    queue.clear();
    return &queue;
}

}  // namespace Vst
}  // namespace Steinberg
