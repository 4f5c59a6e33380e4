// A small VST 2 effect for testing the host, and, by its build flags, the faults that the product's
// own library never shows. It halves the sound, and repeats to the host what the host told it.
#include "vst2interface.h"

#include <cstdio>
#include <cstring>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

audioMasterCallback askHost = nullptr;
float knob = 0.25f;

VstIntPtr dispatcher(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                     float)
{
    auto* text = static_cast<char*>(ptr);
    switch (opcode) {
    case effOpen:
        askHost(effect, audioMasterBeginEdit, 0, 0, nullptr, 0.0f);
        return 0;
    case effClose:
        return 1;
    case effGetEffectName: {
        char product[64] = "";
        askHost(effect, audioMasterGetProductString, 0, 0, product, 0.0f);
        std::snprintf(
            text, 128, "%s %d %d", product,
            static_cast<int>(askHost(effect, audioMasterGetSampleRate, 0, 0, nullptr, 0.0f)),
            static_cast<int>(askHost(effect, audioMasterGetBlockSize, 0, 0, nullptr, 0.0f)));
        return 1;
    }
    case effGetParamDisplay:
        std::strcpy(text, "longer than eight characters");
        return 0;
    case effString2Parameter:
        return std::strcmp(text, "half") == 0 ? 1 : 0;
    case effCanDo: {
        char ability[] = "startStopProcess";
        return askHost(effect, audioMasterCanDo, 0, 0, ability, 0.0f);
    }
    case effGetParameterProperties: {
        auto* properties = static_cast<VstParameterProperties*>(ptr);
        if (index == 0)
            properties->flags |= kVstParameterIsSwitch;
        if (index == 1) {
            properties->flags |= kVstParameterUsesIntegerMinMax;
            properties->minInteger = -2;
            properties->maxInteger = 7;
        }
        return index <= 1 ? 1 : 0;
    }
    case effGetChunk:
        *static_cast<void**>(ptr) = &knob;
        return index == 0 ? static_cast<VstIntPtr>(sizeof(knob)) : 0;
    case effSetChunk:
        if (value == static_cast<VstIntPtr>(sizeof(knob)))
            std::memcpy(&knob, ptr, sizeof(knob));
        return value;
    case effSetSpeakerArrangement: {
        const auto* in = reinterpret_cast<const VstSpeakerArrangement*>(value);
        const auto* out = static_cast<const VstSpeakerArrangement*>(ptr);
        if (in->type != kSpeakerArrMono || out->type != kSpeakerArrStereo)
            return 0;
        effect->numInputs = in->numChannels;
        effect->numOutputs = out->numChannels;
        askHost(effect, audioMasterIOChanged, 0, 0, nullptr, 0.0f);
        return 1;
    }
    default:
        return 0;
    }
}

void process(AEffect* effect, float** inputs, float** outputs, VstInt32 samples)
{
    for (int channel = 0; channel < effect->numOutputs; ++channel) {
        const float* in = inputs[channel < effect->numInputs ? channel : 0];
        for (VstInt32 i = 0; i < samples; ++i)
            outputs[channel][i] = in ? 0.5f * in[i] : -1.0f;
    }
}

void setParameter(AEffect* effect, VstInt32 index, float value)
{
    knob = value;
    askHost(effect, audioMasterAutomate, index, 0, nullptr, value);
}

float getParameter(AEffect*, VstInt32)
{
    return knob;
}

}  // namespace

// C++ refuses a function called main of another type; a label gives it any name.
EXPORTED AEffect* entry(audioMasterCallback host) __asm__(TEST_EFFECT_ENTRY);
EXPORTED AEffect* entry(audioMasterCallback host)
{
    if (host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0)
        return nullptr;
    askHost = host;
    // Never given back: a host that refuses an effect has no way to close it.
    static AEffect effects[16];
    static int used = 0;
    if (used == 16)
        return nullptr;
    AEffect* effect = &effects[used++];
    effect->magic = TEST_EFFECT_MAGIC;
    effect->dispatcher = dispatcher;
    effect->process = process;
    effect->processReplacing = process;
    effect->setParameter = setParameter;
    effect->getParameter = getParameter;
    effect->numParams = 3;
    effect->numInputs = effect->numOutputs = 2;
    effect->initialDelay = 11;
    effect->uniqueID = 0x54657374;
    return effect;
}
