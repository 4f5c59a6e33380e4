// ZKRPresetSystemController3: initialisation, parameters, selection and names.
#include "presets/ZKRPresetSystemController3.h"

#include "platform/Files.h"
#include "presets/PresetTags.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Steinberg {
namespace Vst {

namespace {

std::unique_ptr<char[]> emptyPath()
{
    return std::unique_ptr<char[]>(
        new (std::nothrow) char[ZKRPresetSystemController3::kPathBufferSize]());
}

}  // namespace

ZKRPresetSystemController3::ZKRPresetSystemController3(platform::SettingsStore& store)
    : store(store)
{
}

tresult PLUGIN_API ZKRPresetSystemController3::initialize(FUnknown* context)
{
    const tresult result = EditControllerEx1::initialize(context);
    if (result != kResultOk)
        return result;

    currDir = emptyPath();
    currBank = emptyPath();
    currPreset = emptyPath();
    stateBuffer.reset(new (std::nothrow) uint8[kStateBufferSize]());
    currentPreset = 0;
    presetBank.reset(new (std::nothrow) PresetSlot[kPresetCount]());
    if (!currDir || !currBank || !currPreset || !stateBuffer || !presetBank)
        return kOutOfMemory;

    copyPath(currDir, platform::workingDirectory());
    fillFactoryBank();
    resetImage = presetBank[0];
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        setParamNormalized(id, static_cast<double>(presetBank[0].values[id]));
    return kResultOk;
}

tresult PLUGIN_API ZKRPresetSystemController3::terminate()
{
    storePaths();
    {
        const std::lock_guard<std::mutex> lock(dataMutex);
        currDir.reset();
        currBank.reset();
        currPreset.reset();
        presetBank.reset();
        stateBuffer.reset();
    }
    return EditControllerEx1::terminate();
}

tresult PLUGIN_API ZKRPresetSystemController3::setParamNormalized(ParamID id, ParamValue value)
{
    // A value that is not a number is ignored and others are limited, since a bank with a value
    // outside 0 to 1 cannot be read again.
    if (id >= kPresetParamCount || value != value)
        return kResultOk;
    const std::thread::id caller = std::this_thread::get_id();
    const std::lock_guard<std::mutex> lock(dataMutex);
    ParamValue newValue = std::clamp(value, 0.0, 1.0);
    const auto publisher = std::find(publishers.begin(), publishers.end(), caller);
    if (publisher != publishers.end()) {
        publishers.erase(publisher);
        if (presetBank)
            newValue = static_cast<ParamValue>(presetAt(currentPreset)->values[id]);
    } else if (presetBank) {
        setValue(*presetAt(currentPreset), id, static_cast<float>(newValue));
    }
    setBy[id] = caller;
    return EditControllerEx1::setParamNormalized(id, newValue);
}

ParamValue PLUGIN_API ZKRPresetSystemController3::getParamNormalized(ParamID id)
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    return EditControllerEx1::getParamNormalized(id);
}

std::optional<ParamValue> ZKRPresetSystemController3::newerValue(ParamID id, ParamValue value)
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    if (id >= kPresetParamCount || setBy[id] == std::this_thread::get_id())
        return std::nullopt;
    const ParamValue present = EditControllerEx1::getParamNormalized(id);
    return present == value ? std::nullopt : std::optional<ParamValue>(present);
}

// Between setParamNormalized and performEdit on this thread, another thread may have done both: the
// host would then end with the older value.
tresult ZKRPresetSystemController3::performEdit(ParamID id, ParamValue value)
{
    const tresult result = EditControllerEx1::performEdit(id, value);
    for (auto newer = newerValue(id, value); newer; newer = newerValue(id, *newer))
        EditControllerEx1::performEdit(id, *newer);
    return result;
}

tresult PLUGIN_API ZKRPresetSystemController3::getSelectedName(char* name)
{
    if (!presetBank)
        return kResultFalse;
    getCurrentPresetName(name);
    return kResultOk;
}

tresult PLUGIN_API ZKRPresetSystemController3::setSelectedName(const char* name)
{
    if (!presetBank || !name)
        return kResultFalse;
    setCurrentPresetName(name);
    setDirty(true);
    setParamNormalized(kNameTag, (getCurrentPreset() + 1.0) / kPresetCount);
    return kResultOk;
}

void ZKRPresetSystemController3::startPresetSystem()
{
    if (!presetBank)
        return;
    {
        // Before the user's default bank is loaded: presets are reset to the factory's first one.
        const std::lock_guard<std::mutex> lock(dataMutex);
        resetImage = presetBank[0];
    }
    loadDefaultBank();
    setCurrentPreset(0);
    loadDefaultPreset();
    loadPaths();
}

int32 ZKRPresetSystemController3::getCurrentPreset()
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    return currentPreset;
}

PresetSlot* ZKRPresetSystemController3::presetAt(int32 index)
{
    return presetBank && index >= 0 && index < kPresetCount ? presetBank.get() + index : nullptr;
}

void ZKRPresetSystemController3::setCurrentPreset(int32 index)
{
    takePendingValues();
    {
        const std::lock_guard<std::mutex> lock(dataMutex);
        if (!presetAt(index))
            return;
        currentPreset = index;
    }
    publishPreset();
}

// Two threads may publish at the same time: each reads every value from the preset that is selected
// at that moment, so that both end with the same values.
void ZKRPresetSystemController3::publishPreset()
{
    for (ParamID id = 0; id < kPresetParamCount; ++id) {
        ParamValue value = 0.0;
        {
            const std::lock_guard<std::mutex> lock(dataMutex);
            if (!presetBank)
                return;
            publishers.push_back(std::this_thread::get_id());
            value = static_cast<ParamValue>(presetAt(currentPreset)->values[id]);
        }
        setParamNormalized(id, value);
        {
            const std::lock_guard<std::mutex> lock(dataMutex);
            if (!presetBank)
                return;
            value = static_cast<ParamValue>(presetAt(currentPreset)->values[id]);
        }
        performEdit(id, value);
    }
    setDirty(true);
    // An empty gesture after the values; hosts take it as the end of the change.
    beginEdit(kPower);
    endEdit(kPower);
}

void ZKRPresetSystemController3::takePendingValues()
{
    if (FUnknownPtr<IPendingValues> host{getComponentHandler()})
        host->deliverPendingValues();
}

void ZKRPresetSystemController3::setCurrentPresetName(const char* text)
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    if (presetBank && text)
        setName(*presetAt(currentPreset), text);
}

void ZKRPresetSystemController3::getPresetName(char* destination, int32 index)
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    const PresetSlot* const preset = presetAt(index);
    if (!preset)
        return;
    std::memcpy(destination, preset->name, kPresetNameSize);
    destination[kPresetNameSize] = '\0';
}

void ZKRPresetSystemController3::getCurrentPresetName(char* destination)
{
    getPresetName(destination, getCurrentPreset());
}

void ZKRPresetSystemController3::resetPreset(int32 index)
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    if (PresetSlot* const preset = presetAt(index))
        *preset = resetImage;
}

std::string ZKRPresetSystemController3::getManualPath() const
{
    return store.readText("ManualPath").value_or("");
}

bool ZKRPresetSystemController3::isParameterHidden(ParamID /*id*/)
{
    return false;
}

char* ZKRPresetSystemController3::getCurrDir()
{
    return currDir.get();
}

char* ZKRPresetSystemController3::getCurrBank()
{
    return currBank.get();
}

char* ZKRPresetSystemController3::getCurrPreset()
{
    return currPreset.get();
}

}  // namespace Vst
}  // namespace Steinberg
