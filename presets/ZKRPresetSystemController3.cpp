// ZKRPresetSystemController3: life, selection and names.
#include "ZKRPresetSystemController3.h"

#include "Files.h"
#include "PresetTags.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Steinberg {
namespace Vst {

namespace {

std::unique_ptr<char[]> makePath()
{
    return std::unique_ptr<char[]>(
        new (std::nothrow) char[ZKRPresetSystemController3::kPathBufferSize]());
}

}  // namespace

ZKRPresetSystemController3::ZKRPresetSystemController3(platform::SettingsStore& settings)
    : store(settings)
{
}

tresult PLUGIN_API ZKRPresetSystemController3::initialize(FUnknown* initialContext)
{
    const tresult result = EditControllerEx1::initialize(initialContext);
    if (result != kResultOk)
        return result;

    currDir = makePath();
    currBank = makePath();
    currPreset = makePath();
    stateBuffer.reset(new (std::nothrow) uint8[kStateBufferSize]());
    currentPreset = 0;
    presetBank.reset(new (std::nothrow) PresetSlot[kPresetCount]());
    if (!currDir || !currBank || !currPreset || !stateBuffer || !presetBank)
        return kOutOfMemory;

    const std::string here = platform::workingDirectory();
    if (here.size() < kPathBufferSize)
        std::strcpy(currDir.get(), here.c_str());
    fillFactoryBank();
    resetImage = presetBank[0];
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        setParamNormalized(id, static_cast<double>(presetBank[0].values[id]));
    return kResultOk;
}

tresult PLUGIN_API ZKRPresetSystemController3::terminate()
{
    storePaths();
    currDir.reset();
    currBank.reset();
    currPreset.reset();
    presetBank.reset();
    stateBuffer.reset();
    return EditControllerEx1::terminate();
}

tresult PLUGIN_API ZKRPresetSystemController3::setParamNormalized(ParamID id, ParamValue value)
{
    // A value out of range would make the whole bank unreadable the next time.
    if (id >= kPresetParamCount || value != value)
        return kResultOk;
    const ParamValue held = std::clamp(value, 0.0, 1.0);
    if (presetBank)
        setValue(*presetAt(currentPreset), id, static_cast<float>(held));
    return EditControllerEx1::setParamNormalized(id, held);
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
    setParamNormalized(kNameTag, (currentPreset + 1.0) / kPresetCount);
    return kResultOk;
}

void ZKRPresetSystemController3::startPresetSystem()
{
    if (!presetBank)
        return;
    // Taken before the user's default bank arrives: what presets are reset to is the factory's.
    resetImage = presetBank[0];
    loadDefaultBank();
    setCurrentPreset(0);
    loadDefaultPreset();
    loadPaths();
}

int32 ZKRPresetSystemController3::getCurrentPreset()
{
    return currentPreset;
}

PresetSlot* ZKRPresetSystemController3::presetAt(int32 index)
{
    return presetBank && index >= 0 && index < kPresetCount ? presetBank.get() + index : nullptr;
}

void ZKRPresetSystemController3::setCurrentPreset(int32 index)
{
    const PresetSlot* const selected = presetAt(index);
    if (!selected)
        return;
    takePendingValues();
    currentPreset = index;
    for (ParamID id = 0; id < kPresetParamCount; ++id) {
        const double value = static_cast<double>(selected->values[id]);
        setParamNormalized(id, value);
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
    if (presetBank && text)
        setName(*presetAt(currentPreset), text);
}

void ZKRPresetSystemController3::getPresetName(char* destination, int32 index)
{
    const PresetSlot* const preset = presetAt(index);
    if (!preset)
        return;
    std::memcpy(destination, preset->name, kPresetNameSize);
    destination[kPresetNameSize] = '\0';
}

void ZKRPresetSystemController3::getCurrentPresetName(char* destination)
{
    getPresetName(destination, currentPreset);
}

void ZKRPresetSystemController3::resetPreset(int32 index)
{
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
