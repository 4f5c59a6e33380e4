// The object behind an AEffect: turns a host's C calls into virtual functions, after checking
// indices and pointers.
#pragma once

#include "sdk/vst2/aeffeditor.h"
#include "sdk/vst2/vst2interface.h"

// The basic operations.
class AudioEffect {
public:
    AudioEffect(audioMasterCallback audioMaster, VstInt32 numPrograms, VstInt32 numParams);
    virtual ~AudioEffect() = default;
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    AEffect* getAeffect() { return &cEffect; }

    // Handles an EffectOpcode; unknown ones return 0.
    virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                 float opt);

    virtual void open() { }
    virtual void suspend() { }
    virtual void resume() { }
    virtual void setSampleRate(float /*hz*/) { }
    virtual void setBlockSize(VstInt32 /*frames*/) { }

    // Parameters: index is from 0 to numParams - 1, a value from 0 to 1. Texts are written with a
    // terminator: at most 24 characters for names of programs, 8 for labels and displays, 32 for
    // names of parameters.
    virtual void setParameter(VstInt32 index, float value) = 0;
    virtual float getParameter(VstInt32 index) = 0;
    virtual void getParameterName(VstInt32 index, char* text) = 0;
    virtual void getParameterLabel(VstInt32 index, char* text) = 0;
    virtual void getParameterDisplay(VstInt32 index, char* text) = 0;

    virtual void getProgramName(char* text) = 0;
    virtual void setProgramName(const char* /*text*/) { }

    // The state, as bytes that stay valid until the next call, and their number.
    virtual VstInt32 getChunk(void** data, bool isProgram) = 0;
    virtual VstInt32 setChunk(const void* data, VstInt32 size, bool isProgram) = 0;

    // Replaces the contents of numOutputs channels; frames is never negative.
    virtual void processReplacing(float** inputs, float** outputs, VstInt32 frames) = 0;

protected:
    // Calls the host; 0 without a host.
    VstIntPtr askHost(HostOpcode opcode, VstInt32 index = 0, VstIntPtr value = 0,
                      void* ptr = nullptr, float opt = 0.0f);

    AEffect cEffect{};

private:
    audioMasterCallback audioMaster;
};

// The operations that version 2 of the interface added.
class AudioEffectX : public AudioEffect {
public:
    using AudioEffect::AudioEffect;

    VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                         float opt) override;

    virtual bool canParameterBeAutomated(VstInt32 index) = 0;
    virtual bool string2parameter(VstInt32 index, const char* text) = 0;
    virtual bool getParameterProperties(VstInt32 index, VstParameterProperties* properties) = 0;
    virtual bool getProgramNameIndexed(VstInt32 index, char* text) = 0;

    virtual bool getInputProperties(VstInt32 pin, VstPinProperties* properties) = 0;
    virtual bool getOutputProperties(VstInt32 pin, VstPinProperties* properties) = 0;
    // A null arrangement keeps the present one.
    virtual bool setSpeakerArrangement(const VstSpeakerArrangement* input,
                                       const VstSpeakerArrangement* output) = 0;
    virtual bool getSpeakerArrangement(VstSpeakerArrangement** input,
                                       VstSpeakerArrangement** output) = 0;

    // Texts of at most 32 (name) and 64 characters (vendor, product), without a terminator if they
    // fill the buffer.
    virtual bool getEffectName(char* text) = 0;
    virtual bool getVendorString(char* text) = 0;
    virtual bool getProductString(char* text) = 0;
    virtual VstInt32 getVendorVersion() = 0;
    virtual PluginCategory getPlugCategory() = 0;
    virtual VstIntPtr vendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt) = 0;
    virtual VstInt32 canDo(const char* text) = 0;
    virtual VstInt32 getGetTailSize() = 0;
    virtual bool setProcessPrecision(VstInt32 precision) = 0;
    virtual void startProcess() { }
    virtual void stopProcess() { }
    // User-interface work: the host's idle call, with an open editor or without.
    virtual void idle() { }

protected:
    // Null: the effect has no editor. The caller keeps ownership.
    void setEditor(AEffEditor* newEditor);

private:
    VstIntPtr editorDispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt);

    AEffEditor* editor = nullptr;
};
