// Lists of parameter changes as a host passes them to a processor; their memory is reused.
#pragma once

#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {

// The points of one parameter in one block, ordered by sample offset. Adds up to five points
// without allocating.
class ParameterValueQueue : public IParamValueQueue {
public:
    explicit ParameterValueQueue(ParamID paramID);
    virtual ~ParameterValueQueue() = default;

    ParamID PLUGIN_API getParameterId() override { return paramID; }
    int32 PLUGIN_API getPointCount() override { return static_cast<int32>(points.size()); }
    tresult PLUGIN_API getPoint(int32 index, int32& sampleOffset, ParamValue& value) override;
    // Replaces an existing point at the same offset; `index` gets the point's position.
    tresult PLUGIN_API addPoint(int32 sampleOffset, ParamValue value, int32& index) override;

    void setParamID(ParamID id) { paramID = id; }
    void clear() { points.clear(); }

    DECLARE_FUNKNOWN_METHODS

private:
    struct Point {
        int32 sampleOffset;
        ParamValue value;
    };

    ParamID paramID;
    std::vector<Point> points;
};

// One queue for each parameter that changes. Takes up to `maxParameters` parameters without
// allocating.
class ParameterChanges : public IParameterChanges {
public:
    explicit ParameterChanges(int32 maxParameters = 0);
    virtual ~ParameterChanges() = default;

    // Preallocates this many queues; a negative number is ignored.
    void setMaxParameters(int32 maxParameters);
    void clearQueue() { usedCount = 0; }

    int32 PLUGIN_API getParameterCount() override { return usedCount; }
    IParamValueQueue* PLUGIN_API getParameterData(int32 index) override;
    // The queue of `id`, added if missing; never null.
    IParamValueQueue* PLUGIN_API addParameterData(const ParamID& id, int32& index) override;

    DECLARE_FUNKNOWN_METHODS

private:
    std::vector<std::unique_ptr<ParameterValueQueue>> queues;
    int32 usedCount = 0;
};

}  // namespace Vst
}  // namespace Steinberg
