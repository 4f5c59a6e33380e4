// NativePlugin: a VST 2 effect in a library of this system, loaded into the process.
#pragma once

#include "tools/host/Plugin.h"
#include "tools/host/SharedLibrary.h"

#include <atomic>
#include <mutex>

namespace host {

class NativePlugin : public Plugin {
public:
    // Loads the library, calls VSTPluginMain (or main, where that is missing) and opens the effect.
    // Throws HostError when the file is no library, no VST 2 plug-in, or refuses to start.
    explicit NativePlugin(const std::string& path, const HostSettings& settings = {});
    ~NativePlugin() override;

    // For calls that this class does not offer.
    AEffect* effect() { return aeffect; }

    EffectFields fields() override;
    using Plugin::dispatch;
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       float opt = 0.0f) override;
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value,
                       std::vector<std::uint8_t>& bytes) override;
    std::vector<std::uint8_t> chunk(VstInt32 bankOrProgram) override;
    bool setSpeakerArrangement(int inputs, int outputs) override;
    void setParameter(VstInt32 index, float value) override;
    float parameter(VstInt32 index) override;
    void process(float** inputs, float** outputs, int samples) override;
    HostReports reports() override;
    void clearReports() override;
    void idle() override;

protected:
    // The host's answer to a call of the plug-in. During the constructor this class's version is
    // called, not an override.
    virtual VstIntPtr answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                             float opt);

private:
    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt);

    SharedLibrary library;
    AEffect* aeffect;
    bool running;  // switched on with effMainsChanged

    // Read by the plug-in from any of its threads.
    const VstInt32 vstVersion;
    std::atomic<VstInt32> processLevel;
    std::atomic<double> sampleRate;
    std::atomic<VstInt32> blockSize;

    std::mutex reportsLock;
    HostReports collectedReports;
};

}  // namespace host
