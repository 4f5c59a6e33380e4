// A small VST 2 effect for testing the host; build flags give it faults. Its name
// contains the host's answers about itself.
#include "sdk/vst2/vst2interface.h"

#include <cstdio>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

audioMasterCallback askHost = nullptr;

VstIntPtr dispatcher(AEffect* effect, VstInt32 opcode, VstInt32, VstIntPtr, void* ptr, float)
{
    if (opcode == effOpen) {
        askHost(effect, audioMasterBeginEdit, 0, 0, nullptr, 0.0f);
        askHost(effect, audioMasterEndEdit, 0, 0, nullptr, 0.0f);
        askHost(effect, audioMasterSizeWindow, 394, 560, nullptr, 0.0f);
    }
    if (opcode == effGetEffectName) {
        char product[64] = "";
        askHost(effect, audioMasterGetProductString, 0, 0, product, 0.0f);
        const auto number = [effect](VstInt32 question) {
            return static_cast<int>(askHost(effect, question, 0, 0, nullptr, 0.0f));
        };
        std::snprintf(static_cast<char*>(ptr), 128, "%s %d %d", product,
                      number(audioMasterGetSampleRate), number(audioMasterGetBlockSize));
    }
    return 0;
}

}  // namespace

// C++ does not allow a function called main of another type, so an asm label gives it its name.
EXPORTED AEffect* entry(audioMasterCallback host) __asm__(TEST_EFFECT_ENTRY);
EXPORTED AEffect* entry(audioMasterCallback host)
{
    if (host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0)
        return nullptr;
    askHost = host;
    // Never freed, since a host that refuses an effect cannot close it.
    static AEffect effects[16];
    static int used = 0;
    if (used == 16)
        return nullptr;
    AEffect* effect = &effects[used++];
    effect->magic = TEST_EFFECT_MAGIC;
    effect->dispatcher = dispatcher;
    effect->process = effect->processReplacing = [](AEffect*, float**, float**, VstInt32) {};
    effect->setParameter = [](AEffect* self, VstInt32 index, float value) {
        askHost(self, audioMasterAutomate, index, 0, nullptr, value);
    };
    effect->getParameter = [](AEffect*, VstInt32) { return 0.0f; };
    effect->numParams = 3;
    effect->numInputs = effect->numOutputs = 2;
    effect->uniqueID = 0x54657374;
    return effect;
}
