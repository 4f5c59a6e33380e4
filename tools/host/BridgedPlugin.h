// BridgedPlugin: a VST 2 effect in a Windows library, used from Linux. A helper program under Wine
// loads the library; requests and answers go through a pair of pipes. Inputs are sent as copies, so
// the plug-in cannot change the caller's.
#pragma once

#include "platform/posix/ChildProcess.h"
#include "tools/host/BridgeProtocol.h"
#include "tools/host/Plugin.h"

#include <memory>
#include <string>

namespace host {

class BridgedPlugin : public Plugin {
public:
    // Starts the helper and opens the plug-in. Throws HostError when Wine or the helper is missing,
    // or the file is no VST 2 plug-in. The helper, zkrt46-bridge.exe, is named by the environment
    // variable ZKRT46_BRIDGE, or is in the library's folder, in the running program's, or in a
    // folder windows/ beside the latter. Every later call throws when the helper has ended or has
    // not answered for a minute.
    explicit BridgedPlugin(const std::string& path, const HostSettings& settings = {});
    ~BridgedPlugin() override;

    EffectFields fields() override { return lastFields; }
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
    // Opens the editor in a window on Wine's display for as long as it is drawn. Throws HostError
    // when the plug-in has no editor.
    Picture editorPicture();

private:
    using ChildProcess = platform::ChildProcess;

    MessageReader ask(MessageWriter& request, ChildProcess::Seconds limit);
    void receive(void* data, std::size_t size, ChildProcess::Seconds limit);
    [[noreturn]] void helperLost(ChildProcess::Outcome outcome);

    std::string path;
    std::unique_ptr<ChildProcess> helper;
    EffectFields lastFields;  // from the latest answer
};

}  // namespace host
