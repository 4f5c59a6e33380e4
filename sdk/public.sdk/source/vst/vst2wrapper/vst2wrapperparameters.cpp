// Vst2Wrapper: the parameters that a host sees, and the transfer of their values between host,
// controller and processor.
#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"

#include "pluginterfaces/base/ustring.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <numeric>

namespace Steinberg {
namespace Vst {

namespace {

// Writes an SDK text into a host's buffer: at most `length` characters and a terminator.
void writeText(char* target, const String128 text, std::size_t length)
{
    char ascii[129] = {};
    UString(const_cast<TChar*>(text), 128).toAscii(ascii, 128);
    std::snprintf(target, length + 1, "%s", ascii);
}

}  // namespace

void Vst2Wrapper::collectParameters()
{
    const int32 count = controller ? controller->getParameterCount() : 0;
    for (int32 i = 0; i < count; ++i) {
        ExportedParameter parameter{};
        if (controller->getParameterInfo(i, parameter.info) != kResultTrue)
            continue;
        constexpr int32 kNotForHosts =
            ParameterInfo::kIsReadOnly | ParameterInfo::kIsBypass | ParameterInfo::kIsProgramChange;
        const bool exported = (parameter.info.flags & kNotForHosts) == 0;
        parameter.index = exported ? static_cast<VstInt32>(slotByIndex.size()) : -1;
        if (exported)
            slotByIndex.push_back(parameters.size());
        parameters.push_back(parameter);
    }

    const std::size_t slots = parameters.size();
    slotById.resize(slots);
    std::iota(slotById.begin(), slotById.end(), std::size_t{0});
    std::sort(slotById.begin(), slotById.end(), [this](std::size_t a, std::size_t b) {
        return parameters[a].info.id < parameters[b].info.id;
    });

    currentValues = std::make_unique<std::atomic<double>[]>(slots);
    toProcessor = std::make_unique<ParameterTransfer>(slots);
    toController = std::make_unique<ParameterTransfer>(slots);
    fromProcessor = std::make_unique<ParameterTransfer>(slots);
    inputChanges.setMaxParameters(static_cast<int32>(slots));
    outputChanges.setMaxParameters(static_cast<int32>(slots));
    cEffect.numParams = static_cast<VstInt32>(slotByIndex.size());
}

// Sends the controller's initial values to the processor, which has no state of its own.
void Vst2Wrapper::sendStartValues()
{
    readValuesFromController();
    for (const std::size_t slot : slotByIndex)
        toProcessor->set(slot, currentValues[slot].load());
}

// A value that the host sets meanwhile is newer than the one read, and is kept.
void Vst2Wrapper::readValuesFromController()
{
    updateController();
    const std::lock_guard<std::mutex> lock(changesMutex);
    for (std::size_t slot = 0; slot < parameters.size(); ++slot) {
        double before = currentValues[slot].load();
        const double value = controller->getParamNormalized(parameters[slot].info.id);
        if (!toController->hasChange(slot))
            currentValues[slot].compare_exchange_strong(before, value);
    }
}

const Vst2Wrapper::ExportedParameter* Vst2Wrapper::parameterAt(VstInt32 index) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= slotByIndex.size())
        return nullptr;
    return &parameters[slotByIndex[static_cast<std::size_t>(index)]];
}

const Vst2Wrapper::ExportedParameter* Vst2Wrapper::parameterOf(ParamID id) const
{
    const auto found = std::lower_bound(
        slotById.begin(), slotById.end(), id,
        [this](std::size_t slot, ParamID wanted) { return parameters[slot].info.id < wanted; });
    if (found == slotById.end() || parameters[*found].info.id != id)
        return nullptr;
    return &parameters[*found];
}

std::size_t Vst2Wrapper::slotOf(const ExportedParameter& parameter) const
{
    return static_cast<std::size_t>(&parameter - parameters.data());
}

void Vst2Wrapper::setParameter(VstInt32 index, float value)
{
    const ExportedParameter* parameter = parameterAt(index);
    if (!parameter || value != value)
        return;
    const double clamped = std::clamp(static_cast<double>(value), 0.0, 1.0);
    const std::size_t slot = slotOf(*parameter);
    setCurrentValue(slot, clamped);
    toController->set(slot, clamped);
}

// The table is written first, so that a reader of the change finds this value or a newer one.
void Vst2Wrapper::setCurrentValue(std::size_t slot, double value)
{
    currentValues[slot].store(value);
    toProcessor->set(slot, value);
}

float Vst2Wrapper::getParameter(VstInt32 index)
{
    const ExportedParameter* parameter = parameterAt(index);
    return parameter ? static_cast<float>(currentValues[slotOf(*parameter)].load()) : 0.0f;
}

void Vst2Wrapper::getParameterName(VstInt32 index, char* text)
{
    if (const ExportedParameter* parameter = parameterAt(index))
        writeText(text, parameter->info.title, kVstMaxParamNameLen - 1);
}

void Vst2Wrapper::getParameterLabel(VstInt32 index, char* text)
{
    if (const ExportedParameter* parameter = parameterAt(index))
        writeText(text, parameter->info.units, kVstMaxParamStrLen);
}

void Vst2Wrapper::getParameterDisplay(VstInt32 index, char* text)
{
    const ExportedParameter* parameter = parameterAt(index);
    if (!parameter)
        return;
    String128 display = {};
    const double value = currentValues[slotOf(*parameter)].load();
    if (controller->getParamStringByValue(parameter->info.id, value, display) == kResultTrue)
        writeText(text, display, kVstMaxParamStrLen);
}

bool Vst2Wrapper::canParameterBeAutomated(VstInt32 index)
{
    const ExportedParameter* parameter = parameterAt(index);
    return parameter && (parameter->info.flags & ParameterInfo::kCanAutomate) != 0;
}

bool Vst2Wrapper::string2parameter(VstInt32 index, const char* text)
{
    const ExportedParameter* parameter = parameterAt(index);
    if (!parameter)
        return false;
    String128 wide = {};
    UString(wide, 128).fromAscii(text);
    // The SDK's conversion may report success without having found a number.
    ParamValue value = std::numeric_limits<ParamValue>::quiet_NaN();
    if (controller->getParamValueByString(parameter->info.id, wide, value) != kResultTrue
        || value != value)
        return false;
    setParameter(index, static_cast<float>(value));
    return true;
}

bool Vst2Wrapper::getParameterProperties(VstInt32 index, VstParameterProperties* properties)
{
    const ExportedParameter* parameter = parameterAt(index);
    if (!parameter)
        return false;
    writeText(properties->label, parameter->info.title, kVstMaxLabelLen - 1);
    writeText(properties->shortLabel, parameter->info.title, kVstMaxShortLabelLen - 1);
    const int32 steps = parameter->info.stepCount;
    if (steps == 0) {
        properties->flags |= kVstParameterCanRamp;
    } else if (steps == 1) {
        properties->flags |= kVstParameterIsSwitch;
    } else {
        properties->flags |= kVstParameterUsesIntegerMinMax;
        properties->minInteger = 0;
        properties->maxInteger = steps;
        properties->stepInteger = 1;
        properties->largeStepInteger = std::max(1, steps / 10);
    }
    return true;
}

tresult PLUGIN_API Vst2Wrapper::beginEdit(ParamID id)
{
    const ExportedParameter* parameter = parameterOf(id);
    if (parameter && parameter->index >= 0 && !isRestoringState())
        askHost(audioMasterBeginEdit, parameter->index);
    return kResultTrue;
}

tresult PLUGIN_API Vst2Wrapper::performEdit(ParamID id, ParamValue valueNormalized)
{
    const ExportedParameter* parameter = parameterOf(id);
    if (!parameter || valueNormalized != valueNormalized)
        return kResultTrue;
    const double value = std::clamp(valueNormalized, 0.0, 1.0);
    setCurrentValue(slotOf(*parameter), value);
    if (parameter->index >= 0 && !isRestoringState())
        askHost(audioMasterAutomate, parameter->index, 0, nullptr, static_cast<float>(value));
    return kResultTrue;
}

tresult PLUGIN_API Vst2Wrapper::endEdit(ParamID id)
{
    const ExportedParameter* parameter = parameterOf(id);
    if (parameter && parameter->index >= 0 && !isRestoringState())
        askHost(audioMasterEndEdit, parameter->index);
    return kResultTrue;
}

tresult PLUGIN_API Vst2Wrapper::restartComponent(int32 flags)
{
    tresult result = kResultFalse;
    if (flags & kIoChanged) {
        {
            const ProcessGate::Setup inside(gate);
            setupBuses();
        }
        askHost(audioMasterIOChanged);
        result = kResultTrue;
    }
    if (flags & (kParamValuesChanged | kParamTitlesChanged)) {
        if (flags & kParamValuesChanged)
            readValuesFromController();
        if (!isRestoringState())  // restoring ends with the same message
            askHost(audioMasterUpdateDisplay);
        result = kResultTrue;
    }
    if (flags & kLatencyChanged) {
        if (updateLatency())
            askHost(audioMasterIOChanged);
        result = kResultTrue;
    }
    return result;
}

tresult PLUGIN_API Vst2Wrapper::setDirty(TBool state)
{
    if (state && !isRestoringState())  // restoring ends with the same message
        askHost(audioMasterUpdateDisplay);
    return kResultTrue;
}

// Updates the controller with changes from host and processor. Editors are notified after the lock
// is released: they may call the host, which may wait for a thread that waits for the lock.
void Vst2Wrapper::updateController()
{
    if (!controller || !fromProcessor)
        return;
    const HeldEditors held(editorUpdates);
    transferChanges();
}

// A recursive call returns at once, since the outer one takes the changes.
void Vst2Wrapper::transferChanges()
{
    const std::thread::id caller = std::this_thread::get_id();
    if (transferring == caller)
        return;
    const std::lock_guard<std::mutex> lock(changesMutex);
    transferring = caller;
    const struct Transferring {
        ~Transferring() { thread = std::thread::id(); }
        std::atomic<std::thread::id>& thread;
    } guard{transferring};
    for (const ParameterTransfer::Change& change : fromProcessor->takeChanges())
        controller->setParamNormalized(parameters[change.slot].info.id, change.value);
    // Uses the current values: the controller may have edited a parameter since the change.
    for (const ParameterTransfer::Change& change : toController->takeChanges())
        controller->setParamNormalized(parameters[change.slot].info.id,
                                       currentValues[change.slot].load());
}

}  // namespace Vst
}  // namespace Steinberg
