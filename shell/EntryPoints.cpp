#include "shell/EntryPoints.h"

#include "params/ids/ClassIds.h"
#include "params/ids/PluginId.h"
#include "shell/PluginFactory.h"

#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"

bool InitDll()
{
    return true;
}

bool ExitDll()
{
    return true;
}

AEffect* VSTPluginMain(audioMasterCallback audioMaster)
{
    using Steinberg::Vst::Vst2Wrapper;
    try {
        if (!audioMaster || audioMaster(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0)
            return nullptr;
        if (!InitDll())
            return nullptr;
        Steinberg::TUID processorId;
        Steinberg::Vst::kProcessorId.toTUID(processorId);
        AudioEffect* effect = Vst2Wrapper::create(getFactory(), processorId, kVst2Id, audioMaster);
        return effect ? effect->getAeffect() : nullptr;
    } catch (...) {
        return nullptr;
    }
}
