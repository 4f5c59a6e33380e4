// Vst2Wrapper: presents a VST 3 component and its controller to a host as a VST 2 effect.
//
// Threads: `processReplacing` runs on the host's audio thread, the editor's calls and `idle` on its
// user-interface thread; parameters, states, names and the setup (rate, block size, arrangement,
// mains) may come on any thread at any time. Host, processor and controller set parameters in one
// table of latest values and read the changes from it independently, so that all end with the same
// values. A setup waits for the block that is being processed; a block during a setup is silent.
#pragma once

#include "base/source/timer.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivsthostapplication.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "pluginterfaces/vst/ivstunits.h"
#include "public.sdk/source/main/pluginfactory.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"
#include "public.sdk/source/vst/hosting/pluginterfacesupport.h"
#include "public.sdk/source/vst/vst2wrapper/ivst2bridge.h"
#include "public.sdk/source/vst/vst2wrapper/parametertransfer.h"
#include "public.sdk/source/vst/vst2wrapper/processgate.h"

#include "public.sdk/source/vst/vst2wrapper/vst2editor.h"
#include "sdk/vst2/audioeffectx.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Steinberg {
namespace Vst {

class Vst2Wrapper : public IHostApplication,
                    public IComponentHandler,
                    public IComponentHandler2,
                    public IPendingValues,
                    public IUnitHandler,
                    public ITimerCallback,
                    public ::AudioEffectX,
                    public IVst3ToVst2Wrapper {
public:
    // Creates the effect with a new object of the class `vst3ComponentID` and its controller. Takes
    // over one reference to `factory`. Null if creation or initialisation fails.
    static ::AudioEffect* create(IPluginFactory* factory, const TUID vst3ComponentID,
                                 VstInt32 vst2ID, audioMasterCallback audioMaster);
    ~Vst2Wrapper() override;

    // Called in every idle call of a host, for any effect: on Linux it processes the events and
    // timers of editors, for which VST 2 hosts have no event loop. Null: nothing to do.
    using IdleFunction = void (*)();
    static void setIdleFunction(IdleFunction function);

    // AudioEffect
    void suspend() override;
    void resume() override;
    void setSampleRate(float hz) override;
    void setBlockSize(VstInt32 frames) override;
    void setParameter(VstInt32 index, float value) override;
    float getParameter(VstInt32 index) override;
    void getParameterName(VstInt32 index, char* text) override;
    void getParameterLabel(VstInt32 index, char* text) override;
    void getParameterDisplay(VstInt32 index, char* text) override;
    // There is one program, with the controller's program name, else the effect's name.
    void getProgramName(char* text) override;
    void setProgramName(const char* text) override;
    VstInt32 getChunk(void** data, bool isProgram) override;
    VstInt32 setChunk(const void* data, VstInt32 size, bool isProgram) override;
    void processReplacing(float** inputs, float** outputs, VstInt32 frames) override;

    // AudioEffectX
    bool canParameterBeAutomated(VstInt32 index) override;
    bool string2parameter(VstInt32 index, const char* text) override;
    bool getParameterProperties(VstInt32 index, VstParameterProperties* properties) override;
    bool getProgramNameIndexed(VstInt32 index, char* text) override;
    bool getInputProperties(VstInt32 pin, VstPinProperties* properties) override;
    bool getOutputProperties(VstInt32 pin, VstPinProperties* properties) override;
    bool setSpeakerArrangement(const VstSpeakerArrangement* input,
                               const VstSpeakerArrangement* output) override;
    bool getSpeakerArrangement(VstSpeakerArrangement** input,
                               VstSpeakerArrangement** output) override;
    bool getEffectName(char* text) override;
    bool getVendorString(char* text) override;
    bool getProductString(char* text) override;
    VstInt32 getVendorVersion() override;
    PluginCategory getPlugCategory() override;
    VstIntPtr vendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt) override;
    VstInt32 canDo(const char* text) override;
    VstInt32 getGetTailSize() override;
    bool setProcessPrecision(VstInt32 precision) override;
    void startProcess() override;
    void stopProcess() override;
    void idle() override;

    // IHostApplication
    tresult PLUGIN_API getName(String128 name) override;
    tresult PLUGIN_API createInstance(TUID cid, TUID _iid, void** obj) override;

    // IComponentHandler
    tresult PLUGIN_API beginEdit(ParamID id) override;
    tresult PLUGIN_API performEdit(ParamID id, ParamValue valueNormalized) override;
    tresult PLUGIN_API endEdit(ParamID id) override;
    tresult PLUGIN_API restartComponent(int32 flags) override;

    // IComponentHandler2: a changed state updates the host's display.
    tresult PLUGIN_API setDirty(TBool state) override;
    tresult PLUGIN_API requestOpenEditor(FIDString) override { return kNotImplemented; }
    tresult PLUGIN_API startGroupEdit() override { return kNotImplemented; }
    tresult PLUGIN_API finishGroupEdit() override { return kNotImplemented; }

    // IPendingValues
    void PLUGIN_API deliverPendingValues() override { updateController(); }

    // IUnitHandler
    tresult PLUGIN_API notifyUnitSelection(UnitID) override { return kResultTrue; }
    tresult PLUGIN_API notifyProgramListChange(ProgramListID, int32) override
    {
        return kResultTrue;
    }

    // ITimerCallback
    void onTimer(Timer*) override { updateController(); }

    // Owned by the host, so references are not counted.
    tresult PLUGIN_API queryInterface(const TUID _iid, void** obj) override;
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

private:
    // A parameter of the controller; its index in the table is its slot in the transfers.
    struct ExportedParameter {
        ParameterInfo info;
        VstInt32 index;  // its VST 2 index, or -1 for one that hosts do not see
    };

    // Holds the editors' notifications during its lifetime. Null: nothing to hold.
    class HeldEditors {
    public:
        explicit HeldEditors(IEditorUpdates* editors) : editors(editors)
        {
            if (editors)
                editors->holdEditors();
        }
        ~HeldEditors()
        {
            if (editors)
                editors->releaseEditors();
        }
        HeldEditors(const HeldEditors&) = delete;
        HeldEditors& operator=(const HeldEditors&) = delete;

    private:
        IEditorUpdates* editors;
    };

    // The channel pointers of one direction, bus by bus, in the form of IAudioProcessor.
    struct BusBuffers {
        std::vector<AudioBusBuffers> buses;
        std::vector<Sample32*> channels;

        // Adopts the buses of a component in that direction and activates the main ones.
        void prepare(IComponent& owner, BusDirection direction);
    };

    Vst2Wrapper(const IPtr<IAudioProcessor>& processor, const IPtr<IEditController>& controller,
                const IPtr<IPluginFactory>& factory, const TUID vst3ComponentID, VstInt32 vst2ID,
                audioMasterCallback audioMaster);

    bool init();
    void readClassRecord();
    void collectParameters();
    void sendStartValues();
    void connectHalves(bool connect);

    void setupBuses();
    bool applySetup();
    void activate();
    void deactivate();
    void setProcessing(bool state);
    bool updateLatency();
    template <typename Change>
    bool changeSetup(Change change);
    void processBlock(float** inputs, float** outputs, int32 frames);

    bool pinProperties(BusDirection direction, VstInt32 pin, VstPinProperties* properties);
    bool fillArrangement(BusDirection direction, VstSpeakerArrangement& arrangement);

    const ExportedParameter* parameterAt(VstInt32 index) const;
    const ExportedParameter* parameterOf(ParamID id) const;
    std::size_t slotOf(const ExportedParameter& parameter) const;
    void setCurrentValue(std::size_t slot, double value);
    void readValuesFromController();
    void updateController();
    void transferChanges();
    bool isRestoringState() const { return restoring == std::this_thread::get_id(); }
    void restoreState(char* bytes, int64 componentSize, int64 controllerSize);

    void processSlice(Sample32** inputs, Sample32** outputs, int32 offset, int32 frames);

    IPtr<IPluginFactory> factory;
    IPtr<IAudioProcessor> processor;
    IPtr<IComponent> component;
    IPtr<IEditController> controller;
    IPtr<IUnitInfo> unitInfo;
    IPtr<IProgramName> programName;
    IPtr<IEditorUpdates> editorUpdates;
    IPtr<PlugInterfaceSupport> interfaceSupport;
    IPtr<Timer> timer;
    std::unique_ptr<Vst2EditorWrapper> editor;
    TUID componentId;

    bool componentInitialised = false;
    bool controllerInitialised = false;
    // Guarded by the gate: everything that a setup changes and a block uses.
    ProcessGate gate;
    bool active = false;
    bool suspended = false;  // by the host, since the last activation
    std::atomic<bool> processing{false};
    std::atomic<VstInt32> outputCount{0};  // for a block that is not admitted

    std::mutex stateMutex;                                      // held while a state is read or set
    std::atomic<std::thread::id> restoring{std::thread::id()};  // the thread that sets a state
    std::mutex changesMutex;                                    // for the controller's transfers
    std::atomic<std::thread::id> transferring{std::thread::id()};  // holds changesMutex

    ProcessSetup setup;
    std::string effectName, vendor, subCategories;
    VstInt32 vendorVersion = 0;

    std::vector<ExportedParameter> parameters;  // by slot
    std::vector<std::size_t> slotByIndex;       // by VST 2 index
    std::vector<std::size_t> slotById;          // slots in ascending order of id

    // The value of each parameter, by slot: reported to the host, and sent to the processor and the
    // controller when the transfers report a change.
    std::unique_ptr<std::atomic<double>[]> currentValues;

    std::unique_ptr<ParameterTransfer> toProcessor;    // from any thread to the audio thread
    std::unique_ptr<ParameterTransfer> toController;   // from the host's threads
    std::unique_ptr<ParameterTransfer> fromProcessor;  // from the audio thread
    ParameterChanges inputChanges, outputChanges;

    BusBuffers inputBuses, outputBuses;
    std::vector<std::vector<Sample32>> scratch;  // replaces channels that a host leaves out
    std::vector<char> chunk;
    VstSpeakerArrangement inputArrangement{}, outputArrangement{};
};

}  // namespace Vst
}  // namespace Steinberg
