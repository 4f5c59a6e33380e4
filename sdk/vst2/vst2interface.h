// The part of the C interface of VST 2.4 that this project uses, for 64-bit systems: the structures
// that host and plug-in share, and the opcodes that each sends to the other. Existing binaries fix
// the layouts; the assertions below check them.
#pragma once

#include <cstddef>
#include <cstdint>

using VstInt16 = std::int16_t;
using VstInt32 = std::int32_t;
using VstIntPtr = std::intptr_t;

struct AEffect;

// The host's callback, passed to the entry point: the plug-in calls it with a HostOpcode.
using audioMasterCallback = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                          VstIntPtr value, void* ptr, float opt);
using AEffectDispatcherProc = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                            VstIntPtr value, void* ptr, float opt);
using AEffectProcessProc = void (*)(AEffect* effect, float** inputs, float** outputs,
                                    VstInt32 sampleFrames);
using AEffectProcessDoubleProc = void (*)(AEffect* effect, double** inputs, double** outputs,
                                          VstInt32 sampleFrames);
using AEffectSetParameterProc = void (*)(AEffect* effect, VstInt32 index, float value);
using AEffectGetParameterProc = float (*)(AEffect* effect, VstInt32 index);

constexpr VstInt32 kEffectMagic = 0x56737450;  // "VstP"

struct AEffect {
    VstInt32 magic;
    AEffectDispatcherProc dispatcher;
    AEffectProcessProc process;  // the accumulating form, obsolete; never null
    AEffectSetParameterProc setParameter;
    AEffectGetParameterProc getParameter;
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;
    VstInt32 numOutputs;
    VstInt32 flags;           // EffectFlags
    VstIntPtr hostReserved1;  // for the host; initially zero
    VstIntPtr hostReserved2;
    VstInt32 initialDelay;  // latency, in samples
    VstInt32 unused1;
    VstInt32 unused2;
    float unused3;
    void* object;  // for the plug-in
    void* user;    // for the host
    VstInt32 uniqueID;
    VstInt32 version;
    AEffectProcessProc processReplacing;
    AEffectProcessDoubleProc processDoubleReplacing;
    char future[56];
};
static_assert(sizeof(AEffect) == 192 && offsetof(AEffect, flags) == 56
                  && offsetof(AEffect, initialDelay) == 80 && offsetof(AEffect, object) == 96
                  && offsetof(AEffect, uniqueID) == 112
                  && offsetof(AEffect, processReplacing) == 120,
              "hosts rely on this layout");

enum EffectFlags : VstInt32 {
    effFlagsHasEditor = 1,
    effFlagsCanReplacing = 16,
    effFlagsProgramChunks = 32,
    effFlagsIsSynth = 256,
    effFlagsNoSoundInStop = 512,
    effFlagsCanDoubleReplacing = 4096,
};

struct ERect {
    VstInt16 top, left, bottom, right;
};

struct VstSpeakerProperties {
    float position[4];
    char name[64];
    VstInt32 type;
    char future[28];
};

struct VstSpeakerArrangement {
    VstInt32 type;  // SpeakerArrangementType
    VstInt32 numChannels;
    VstSpeakerProperties speakers[8];
};
static_assert(sizeof(VstSpeakerArrangement) == 904, "hosts rely on this layout");

enum SpeakerArrangementType : VstInt32 {
    kSpeakerArrUserDefined = -2,
    kSpeakerArrMono = 0,
    kSpeakerArrStereo = 1,
};

enum SpeakerType : VstInt32 {
    kSpeakerM = 0,
    kSpeakerL = 1,
    kSpeakerR = 2,
};

struct VstPinProperties {
    char label[64];
    VstInt32 flags;  // PinFlags
    VstInt32 arrangementType;
    char shortLabel[8];
    char future[48];
};
static_assert(sizeof(VstPinProperties) == 128, "hosts rely on this layout");

enum PinFlags : VstInt32 {
    kVstPinIsActive = 1,
    kVstPinIsStereo = 2,
    kVstPinUseSpeaker = 4,
};

struct VstParameterProperties {
    float stepFloat, smallStepFloat, largeStepFloat;
    char label[64];
    VstInt32 flags;  // ParameterFlags
    VstInt32 minInteger, maxInteger, stepInteger, largeStepInteger;
    char shortLabel[8];
    VstInt16 displayIndex, category, numParametersInCategory, reserved;
    char categoryLabel[24];
    char future[16];
};
static_assert(sizeof(VstParameterProperties) == 152, "hosts rely on this layout");

enum ParameterFlags : VstInt32 {
    kVstParameterIsSwitch = 1,
    kVstParameterUsesIntegerMinMax = 2,
    kVstParameterCanRamp = 64,
};

enum ProcessPrecision : VstInt32 {
    kVstProcessPrecision32 = 0,
};

enum ProcessLevel : VstInt32 {
    kVstProcessLevelRealtime = 2,
};

enum PluginCategory : VstInt32 {
    kPlugCategUnknown = 0,
    kPlugCategEffect = 1,
    kPlugCategSynth = 2,
    kPlugCategAnalysis = 3,
    kPlugCategMastering = 4,
    kPlugCategSpacializer = 5,
    kPlugCategRoomFx = 6,
    kPlugCategRestoration = 8,
    kPlugCategGenerator = 11,
};

// Smallest sizes of the hosts' text buffers, in bytes. Parameter labels and displays may have a
// terminator in addition.
constexpr std::size_t kVstMaxProgNameLen = 24;
constexpr std::size_t kVstMaxParamStrLen = 8;
constexpr std::size_t kVstMaxParamNameLen = 32;
constexpr std::size_t kVstMaxEffectNameLen = 32;
constexpr std::size_t kVstMaxVendorStrLen = 64;
constexpr std::size_t kVstMaxLabelLen = 64;
constexpr std::size_t kVstMaxShortLabelLen = 8;

// Operations that a host calls through AEffect::dispatcher.
enum EffectOpcode : VstInt32 {
    effOpen = 0,
    effClose = 1,
    effSetProgramName = 4,  // ptr: char*
    effGetProgramName = 5,  // ptr: char[24]
    effGetParamLabel = 6,   // index; ptr: char[8]
    effGetParamDisplay = 7,
    effGetParamName = 8,
    effSetSampleRate = 10,  // opt: Hz
    effSetBlockSize = 11,   // value: frames
    effMainsChanged = 12,   // value: 0 off, 1 on
    effEditGetRect = 13,    // ptr: ERect**
    effEditOpen = 14,       // ptr: the parent window
    effEditClose = 15,
    effEditIdle = 19,
    effIdentify = 22,
    effGetChunk = 23,               // index: 0 bank, 1 program; ptr: void**; returns bytes
    effSetChunk = 24,               // index as above; value: bytes; ptr: void*
    effCanBeAutomated = 26,         // index
    effString2Parameter = 27,       // index; ptr: const char*
    effGetProgramNameIndexed = 29,  // index; ptr: char[24]
    effGetInputProperties = 33,     // index; ptr: VstPinProperties*
    effGetOutputProperties = 34,
    effGetPlugCategory = 35,
    effSetSpeakerArrangement = 42,  // value, ptr: VstSpeakerArrangement* in, out
    effGetEffectName = 45,          // ptr: char[32]
    effGetVendorString = 47,        // ptr: char[64]
    effGetProductString = 48,       // ptr: char[64]
    effGetVendorVersion = 49,
    effVendorSpecific = 50,
    effCanDo = 51,  // ptr: const char*
    effGetTailSize = 52,
    effIdle = 53,
    effGetParameterProperties = 56,  // index; ptr: VstParameterProperties*
    effGetVstVersion = 58,
    effEditKeyDown = 59,  // index: character; value: virtual key; opt: modifiers
    effEditKeyUp = 60,
    effSetEditKnobMode = 61,        // value: 0 circular, 1 relative circular, 2 linear
    effGetSpeakerArrangement = 69,  // value, ptr: VstSpeakerArrangement** in, out
    effStartProcess = 71,
    effStopProcess = 72,
    effSetTotalSampleToProcess = 73,
    effSetProcessPrecision = 77,  // value: ProcessPrecision
};

constexpr VstIntPtr kEffectIdentity = 0x4E764566;  // "NvEf", the answer to effIdentify

// Operations that the plug-in calls through audioMasterCallback.
enum HostOpcode : VstInt32 {
    audioMasterAutomate = 0,  // index, opt
    audioMasterVersion = 1,
    audioMasterIOChanged = 13,
    audioMasterSizeWindow = 15,  // index: width, value: height
    audioMasterGetSampleRate = 16,
    audioMasterGetBlockSize = 17,
    audioMasterGetCurrentProcessLevel = 23,
    audioMasterGetVendorString = 32,   // ptr: char[64]
    audioMasterGetProductString = 33,  // ptr: char[64]
    audioMasterGetVendorVersion = 34,
    audioMasterCanDo = 37,  // ptr: const char*
    audioMasterUpdateDisplay = 42,
    audioMasterBeginEdit = 43,  // index
    audioMasterEndEdit = 44,
};
