// The C functions of an effect: argument checks and dispatch to the virtual functions.
#include "sdk/vst2/audioeffectx.h"

namespace {

AudioEffect* effectOf(AEffect* effect)
{
    return effect ? static_cast<AudioEffect*>(effect->object) : nullptr;
}

// No exception may reach the host's C code: it gets `failed` instead.
template <typename Result, typename Call>
Result guarded(Result failed, Call call)
{
    try {
        return call();
    } catch (...) {
        return failed;
    }
}

VstIntPtr dispatchEffect(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                         void* ptr, float opt)
{
    AudioEffect* object = effectOf(effect);
    if (!object)
        return 0;
    return guarded(VstIntPtr{0}, [&]() -> VstIntPtr {
        if (opcode == effClose) {
            delete object;
            return 1;
        }
        return object->dispatcher(opcode, index, value, ptr, opt);
    });
}

void setEffectParameter(AEffect* effect, VstInt32 index, float value)
{
    AudioEffect* object = effectOf(effect);
    if (object && index >= 0 && index < effect->numParams)
        object->setParameter(index, value);
}

float getEffectParameter(AEffect* effect, VstInt32 index)
{
    AudioEffect* object = effectOf(effect);
    if (!object || index < 0 || index >= effect->numParams)
        return 0.0f;
    return object->getParameter(index);
}

// The obsolete accumulating form: the pointer must not be null, but no host calls it.
void processAccumulating(AEffect*, float**, float**, VstInt32) { }

void processEffect(AEffect* effect, float** inputs, float** outputs, VstInt32 frames)
{
    if (AudioEffect* object = effectOf(effect))
        object->processReplacing(inputs, outputs, frames < 0 ? 0 : frames);
}

}  // namespace

AudioEffect::AudioEffect(audioMasterCallback audioMaster, VstInt32 numPrograms, VstInt32 numParams)
    : audioMaster(audioMaster)
{
    cEffect.magic = kEffectMagic;
    cEffect.dispatcher = dispatchEffect;
    cEffect.process = processAccumulating;
    cEffect.setParameter = setEffectParameter;
    cEffect.getParameter = getEffectParameter;
    cEffect.numPrograms = numPrograms;
    cEffect.numParams = numParams;
    cEffect.unused3 = 1.0f;
    cEffect.object = this;
    cEffect.version = 1;
    cEffect.processReplacing = processEffect;
}

VstIntPtr AudioEffect::askHost(HostOpcode opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt)
{
    return audioMaster ? audioMaster(&cEffect, opcode, index, value, ptr, opt) : 0;
}

VstIntPtr AudioEffect::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                  float opt)
{
    auto* text = static_cast<char*>(ptr);
    const bool isParameter = index >= 0 && index < cEffect.numParams;

    switch (opcode) {
    case effOpen:
        open();
        return 0;
    case effSetProgramName:
        if (text)
            setProgramName(text);
        return 0;
    case effGetProgramName:
        if (text)
            getProgramName(text);
        return 0;
    case effGetParamLabel:
    case effGetParamDisplay:
    case effGetParamName:
        if (!text)
            return 0;
        *text = '\0';
        if (!isParameter)
            return 0;
        if (opcode == effGetParamLabel)
            getParameterLabel(index, text);
        else if (opcode == effGetParamDisplay)
            getParameterDisplay(index, text);
        else
            getParameterName(index, text);
        return 0;
    case effSetSampleRate:
        setSampleRate(opt);
        return 0;
    case effSetBlockSize:
        if (value > 0 && value <= INT32_MAX)
            setBlockSize(static_cast<VstInt32>(value));
        return 0;
    case effMainsChanged:
        if (value)
            resume();
        else
            suspend();
        return 0;
    case effIdentify:
        return kEffectIdentity;
    case effGetChunk:
        return ptr ? getChunk(static_cast<void**>(ptr), index != 0) : 0;
    case effSetChunk:
        if (!ptr || value < 0 || value > INT32_MAX)
            return 0;
        return setChunk(ptr, static_cast<VstInt32>(value), index != 0);
    default:
        return 0;
    }
}

VstIntPtr AudioEffectX::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt)
{
    auto* text = static_cast<char*>(ptr);
    const bool isParameter = index >= 0 && index < cEffect.numParams;

    switch (opcode) {
    case effCanBeAutomated:
        return isParameter && canParameterBeAutomated(index);
    case effString2Parameter:
        return isParameter && text && string2parameter(index, text);
    case effGetParameterProperties:
        return isParameter && ptr
            && getParameterProperties(index, static_cast<VstParameterProperties*>(ptr));
    case effGetProgramNameIndexed:
        return text && getProgramNameIndexed(index, text);
    case effGetInputProperties:
        return ptr && getInputProperties(index, static_cast<VstPinProperties*>(ptr));
    case effGetOutputProperties:
        return ptr && getOutputProperties(index, static_cast<VstPinProperties*>(ptr));
    case effSetSpeakerArrangement:
        return setSpeakerArrangement(reinterpret_cast<const VstSpeakerArrangement*>(value),
                                     static_cast<const VstSpeakerArrangement*>(ptr));
    case effGetSpeakerArrangement:
        return value && ptr
            && getSpeakerArrangement(reinterpret_cast<VstSpeakerArrangement**>(value),
                                     static_cast<VstSpeakerArrangement**>(ptr));
    case effGetPlugCategory:
        return getPlugCategory();
    case effGetEffectName:
        return text && getEffectName(text);
    case effGetVendorString:
        return text && getVendorString(text);
    case effGetProductString:
        return text && getProductString(text);
    case effGetVendorVersion:
        return getVendorVersion();
    case effVendorSpecific:
        return vendorSpecific(index, value, ptr, opt);
    case effCanDo:
        return text ? canDo(text) : 0;
    case effGetTailSize:
        return getGetTailSize();
    case effGetVstVersion:
        return 2400;
    case effStartProcess:
        startProcess();
        return 0;
    case effStopProcess:
        stopProcess();
        return 0;
    case effSetTotalSampleToProcess:
        return value;
    case effSetProcessPrecision:
        return setProcessPrecision(static_cast<VstInt32>(value));
    case effEditIdle:
    case effIdle:
        idle();
        return 0;
    case effEditGetRect:
    case effEditOpen:
    case effEditClose:
    case effEditKeyDown:
    case effEditKeyUp:
    case effSetEditKnobMode:
        return editor ? editorDispatcher(opcode, index, value, ptr, opt) : 0;
    default:
        return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
    }
}

void AudioEffectX::setEditor(AEffEditor* newEditor)
{
    editor = newEditor;
    if (editor)
        cEffect.flags |= effFlagsHasEditor;
    else
        cEffect.flags &= ~effFlagsHasEditor;
}

VstIntPtr AudioEffectX::editorDispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                         void* ptr, float opt)
{
    const auto key = static_cast<VstInt32>(value & 0xFF);
    // Values outside the range of modifier flags may not fit an integer.
    const VstInt32 modifiers = opt >= 0.0f && opt < 256.0f ? static_cast<VstInt32>(opt) : 0;
    switch (opcode) {
    case effEditGetRect:
        return ptr && editor->getRect(static_cast<ERect**>(ptr));
    case effEditOpen:
        return ptr && editor->open(ptr);
    case effEditClose:
        editor->close();
        return 0;
    case effEditKeyDown:
        return editor->onKeyDown(index, key, modifiers);
    case effEditKeyUp:
        return editor->onKeyUp(index, key, modifiers);
    default:  // effSetEditKnobMode
        return editor->setKnobMode(static_cast<VstInt32>(value));
    }
}
