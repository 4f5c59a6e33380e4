// Plugin: a host's calls to a VST 2 effect, in this process (NativePlugin) or in a helper process
// (BridgedPlugin). All other functions are built on the few virtual ones.
#pragma once

#include "sdk/vst2/vst2interface.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace host {

// What the host tells the plug-in about itself.
struct HostSettings {
    VstInt32 vstVersion = 2400;  // 0 makes a plug-in refuse to start
    VstInt32 processLevel = kVstProcessLevelRealtime;
    double sampleRate = 44100.0;  // Hz
    VstInt32 blockSize = 512;     // samples
};

// The current values of an effect's public fields.
struct EffectFields {
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;
    VstInt32 numOutputs;
    VstInt32 flags;  // EffectFlags
    VstInt32 initialDelay;
    VstInt32 uniqueID;
    VstInt32 version;
};

// What the plug-in told the host since it was opened or since clearReports.
struct HostReports {
    struct Automation {
        VstInt32 index;
        float value;
    };
    std::vector<Automation> automated;  // in order of arrival
    int beginEdits = 0;
    int endEdits = 0;
    int ioChanges = 0;
    int displayUpdates = 0;
    int windowSizes = 0;  // calls of sizeWindow; the last call's size follows
    VstInt32 windowWidth = 0;
    VstInt32 windowHeight = 0;
};

class Plugin {
public:
    Plugin() = default;
    virtual ~Plugin() = default;
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    // --- Implemented by each subclass ---

    virtual EffectFields fields() = 0;
    // The dispatcher with a null pointer.
    virtual VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                               float opt = 0.0f) = 0;
    // The dispatcher with a pointer to `bytes`, which the plug-in may read or overwrite.
    virtual VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value,
                               std::vector<std::uint8_t>& bytes) = 0;
    // A copy of the chunk; empty when the plug-in has none.
    virtual std::vector<std::uint8_t> chunk(VstInt32 bankOrProgram) = 0;
    // Channels in and out, 1 or 2 each. False when the plug-in refuses.
    virtual bool setSpeakerArrangement(int inputs, int outputs) = 0;
    virtual void setParameter(VstInt32 index, float value) = 0;
    virtual float parameter(VstInt32 index) = 0;
    // numInputs and numOutputs channel pointers. In this process they are passed on as they are,
    // and the plug-in may change its inputs.
    virtual void process(float** inputs, float** outputs, int samples) = 0;
    virtual HostReports reports() = 0;
    virtual void clearReports() = 0;
    // effEditIdle and, on Windows, the message queue.
    virtual void idle() = 0;

    // --- Built on these ---

    // Texts; empty when the plug-in gives none.
    std::string effectName() { return text(effGetEffectName); }
    std::string vendor() { return text(effGetVendorString); }
    std::string product() { return text(effGetProductString); }
    std::string programName() { return text(effGetProgramName); }
    std::string programName(VstInt32 program) { return text(effGetProgramNameIndexed, program); }
    std::string paramName(VstInt32 index) { return text(effGetParamName, index); }
    std::string paramDisplay(VstInt32 index) { return text(effGetParamDisplay, index); }
    std::string paramLabel(VstInt32 index) { return text(effGetParamLabel, index); }
    void setProgramName(const std::string& name) { sendText(effSetProgramName, 0, name); }
    bool stringToParameter(VstInt32 index, const std::string& value);
    VstIntPtr canDo(const std::string& ability) { return sendText(effCanDo, 0, ability); }

    // Steps between a parameter's ends: 1 for a switch, 0 if continuous or not reported.
    int paramSteps(VstInt32 index);
    bool canBeAutomated(VstInt32 index) { return dispatch(effCanBeAutomated, index) != 0; }
    // False, and the structure zeroed, when the plug-in does not know the parameter or pin.
    bool parameterProperties(VstInt32 index, VstParameterProperties& properties);
    bool pinProperties(bool output, VstInt32 pin, VstPinProperties& properties);

    std::vector<std::uint8_t> bankChunk() { return chunk(0); }
    std::vector<std::uint8_t> programChunk() { return chunk(1); }
    VstIntPtr setBankChunk(std::vector<std::uint8_t> bytes);
    VstIntPtr setProgramChunk(std::vector<std::uint8_t> bytes);

    VstInt32 latency() { return fields().initialDelay; }
    VstIntPtr tail() { return dispatch(effGetTailSize); }
    void setSampleRate(double hz) { dispatch(effSetSampleRate, 0, 0, static_cast<float>(hz)); }
    void setBlockSize(int samples) { dispatch(effSetBlockSize, 0, samples); }
    void mainsOn() { dispatch(effMainsChanged, 0, 1); }
    void mainsOff() { dispatch(effMainsChanged, 0, 0); }
    void startProcess() { dispatch(effStartProcess); }
    void stopProcess() { dispatch(effStopProcess); }

private:
    std::string text(VstInt32 opcode, VstInt32 index = 0);
    VstIntPtr sendText(VstInt32 opcode, VstInt32 index, const std::string& value);
};

}  // namespace host
