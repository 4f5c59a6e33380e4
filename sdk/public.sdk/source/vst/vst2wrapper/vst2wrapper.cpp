// Vst2Wrapper: creation, destruction, the plug-in's properties, and the host services for the
// plug-in.
#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"

#include "platform/Utf8.h"

#include "pluginterfaces/base/ustring.h"
#include "public.sdk/source/common/memorystream.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

constexpr uint32 kControllerTickMs = 50;

template <typename Interface>
IPtr<Interface> query(FUnknown* object)
{
    void* found = nullptr;
    if (!object || object->queryInterface(Interface::iid, &found) != kResultOk)
        return nullptr;
    return IPtr<Interface>(static_cast<Interface*>(found), false);
}

template <typename Interface>
IPtr<Interface> createInstance(IPluginFactory& factory, const TUID classId)
{
    void* made = nullptr;
    if (factory.createInstance(classId, Interface::iid, &made) != kResultOk)
        return nullptr;
    return IPtr<Interface>(static_cast<Interface*>(made), false);
}

std::atomic<Vst2Wrapper::IdleFunction> idleFunction{nullptr};

// Packs "1.0.1.0" into one byte per number, the first one highest.
VstInt32 packVersion(const char* text)
{
    unsigned major = 0, minor = 0, sub = 0, build = 0;
    std::sscanf(text, "%u.%u.%u.%u", &major, &minor, &sub, &build);
    return static_cast<VstInt32>((major & 255) << 24 | (minor & 255) << 16 | (sub & 255) << 8
                                 | (build & 255));
}

// Copies into the host's buffer of `size` bytes; a text that fills it has no terminator.
bool copyText(char* target, const std::string& text, std::size_t size)
{
    if (text.empty())
        return false;
    std::strncpy(target, text.c_str(), size);
    return true;
}

bool equalIgnoringCase(const char* a, const char* b)
{
    while (*a
           && std::tolower(static_cast<unsigned char>(*a))
               == std::tolower(static_cast<unsigned char>(*b))) {
        ++a;
        ++b;
    }
    return *a == *b;
}

}  // namespace

void Vst2Wrapper::setIdleFunction(IdleFunction function)
{
    idleFunction = function;
}

void Vst2Wrapper::idle()
{
    updateController();
    if (const IdleFunction function = idleFunction)
        function();
}

::AudioEffect* Vst2Wrapper::create(IPluginFactory* factory, const TUID vst3ComponentID,
                                   VstInt32 vst2ID, audioMasterCallback audioMaster)
{
    if (!factory)
        return nullptr;
    IPtr<IPluginFactory> reference(factory, false);

    auto processor = Vst::createInstance<IAudioProcessor>(*factory, vst3ComponentID);
    if (!processor)
        return nullptr;

    IPtr<IEditController> controller;
    TUID controllerId;
    if (const auto component = query<IComponent>(processor);
        component && component->getControllerClassId(controllerId) == kResultTrue)
        controller = Vst::createInstance<IEditController>(*factory, controllerId);

    std::unique_ptr<Vst2Wrapper> wrapper(
        new Vst2Wrapper(processor, controller, reference, vst3ComponentID, vst2ID, audioMaster));
    // Both hold a pointer to the wrapper as their context, so they are released before it ends.
    processor = nullptr;
    controller = nullptr;
    return wrapper->init() ? wrapper.release() : nullptr;
}

Vst2Wrapper::Vst2Wrapper(const IPtr<IAudioProcessor>& processor,
                         const IPtr<IEditController>& controller,
                         const IPtr<IPluginFactory>& factory, const TUID vst3ComponentID,
                         VstInt32 vst2ID, audioMasterCallback audioMaster)
    : AudioEffectX(audioMaster, 1, 0), factory(factory), processor(processor),
      component(query<IComponent>(processor)), controller(controller),
      interfaceSupport(new PlugInterfaceSupport, false)
{
    std::memcpy(componentId, vst3ComponentID, sizeof(TUID));
    setup.processMode = kRealtime;
    setup.symbolicSampleSize = kSample32;
    setup.maxSamplesPerBlock = 256;
    setup.sampleRate = 44100.0;
    cEffect.uniqueID = vst2ID;
    cEffect.flags = effFlagsCanReplacing | effFlagsProgramChunks;
    readClassRecord();
}

void Vst2Wrapper::readClassRecord()
{
    PFactoryInfo factoryInfo;
    if (factory->getFactoryInfo(&factoryInfo) == kResultOk)
        vendor = factoryInfo.vendor;

    const auto factory2 = query<IPluginFactory2>(factory);
    if (!factory2)
        return;
    for (int32 i = 0; i < factory2->countClasses(); ++i) {
        PClassInfo2 record;
        if (factory2->getClassInfo2(i, &record) != kResultOk
            || std::memcmp(record.cid, componentId, sizeof(TUID)) != 0)
            continue;
        effectName = record.name;
        subCategories = record.subCategories;
        vendorVersion = packVersion(record.version);
        if (*record.vendor)
            vendor = record.vendor;
        return;
    }
}

bool Vst2Wrapper::init()
{
    auto* const host = static_cast<IHostApplication*>(this);
    if (!component || component->initialize(host) != kResultTrue)
        return false;
    componentInitialised = true;
    if (controller) {
        if (controller->initialize(host) != kResultTrue)
            return false;
        controllerInitialised = true;
        controller->setComponentHandler(this);
        unitInfo = query<IUnitInfo>(controller);
        programName = query<IProgramName>(controller);
        editorUpdates = query<IEditorUpdates>(controller);
        connectHalves(true);

        MemoryStream state;
        if (component->getState(&state) == kResultTrue) {
            state.seek(0, IBStream::kIBSeekSet, nullptr);
            controller->setComponentState(&state);
        }
    }

    cEffect.initialDelay = static_cast<VstInt32>(processor->getLatencySamples());
    if (processor->getTailSamples() == kNoTail)
        cEffect.flags |= effFlagsNoSoundInStop;
    if (!applySetup())
        return false;
    collectParameters();
    sendStartValues();
    setupBuses();
    timer = owned(Timer::create(this, kControllerTickMs));
    if (controller && Vst2EditorWrapper::exists(*controller)) {
        editor =
            std::make_unique<Vst2EditorWrapper>(*controller, [this](int32 width, int32 height) {
                return askHost(audioMasterSizeWindow, width, height) != 0;
            });
        setEditor(editor.get());
    }
    return true;
}

Vst2Wrapper::~Vst2Wrapper()
{
    setEditor(nullptr);
    editor.reset();
    if (timer)
        timer->stop();
    connectHalves(false);
    if (controller) {
        controller->setComponentHandler(nullptr);
        unitInfo = nullptr;
        programName = nullptr;
        editorUpdates = nullptr;
        if (controllerInitialised)
            controller->terminate();
    }
    if (componentInitialised)
        component->terminate();
}

void Vst2Wrapper::connectHalves(bool connect)
{
    const auto processorSide = query<IConnectionPoint>(component);
    const auto controllerSide = query<IConnectionPoint>(controller);
    if (!processorSide || !controllerSide)
        return;
    if (connect) {
        processorSide->connect(controllerSide);
        controllerSide->connect(processorSide);
    } else {
        processorSide->disconnect(controllerSide);
        controllerSide->disconnect(processorSide);
    }
}

tresult PLUGIN_API Vst2Wrapper::queryInterface(const TUID _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, FUnknown::iid, IHostApplication)
    QUERY_INTERFACE(_iid, obj, IHostApplication::iid, IHostApplication)
    QUERY_INTERFACE(_iid, obj, IComponentHandler::iid, IComponentHandler)
    QUERY_INTERFACE(_iid, obj, IComponentHandler2::iid, IComponentHandler2)
    QUERY_INTERFACE(_iid, obj, IPendingValues::iid, IPendingValues)
    QUERY_INTERFACE(_iid, obj, IUnitHandler::iid, IUnitHandler)
    QUERY_INTERFACE(_iid, obj, IVst3ToVst2Wrapper::iid, IVst3ToVst2Wrapper)
    return interfaceSupport->queryInterface(_iid, obj);
}

tresult PLUGIN_API Vst2Wrapper::getName(String128 name)
{
    char product[kVstMaxVendorStrLen + 1] = {};
    if (!askHost(audioMasterGetProductString, 0, 0, product))
        return kResultFalse;
    UString(name, 128).fromAscii(product);
    return kResultTrue;
}

tresult PLUGIN_API Vst2Wrapper::createInstance(TUID cid, TUID _iid, void** obj)
{
    *obj = nullptr;
    if (FUnknownPrivate::iidEqual(cid, IMessage::iid)
        && FUnknownPrivate::iidEqual(_iid, IMessage::iid))
        *obj = static_cast<IMessage*>(new HostMessage);
    else if (FUnknownPrivate::iidEqual(cid, IAttributeList::iid)
             && FUnknownPrivate::iidEqual(_iid, IAttributeList::iid)) {
        // By way of a message: HostAttributeList is made in different ways by different SDKs.
        const IPtr<IMessage> message = owned<IMessage>(new HostMessage);
        IAttributeList* const list = message->getAttributes();
        list->addRef();
        *obj = list;
    }
    return *obj ? kResultTrue : kResultFalse;
}

bool Vst2Wrapper::getEffectName(char* text)
{
    return copyText(text, effectName, kVstMaxEffectNameLen);
}

bool Vst2Wrapper::getVendorString(char* text)
{
    return copyText(text, vendor, kVstMaxVendorStrLen);
}

bool Vst2Wrapper::getProductString(char* text)
{
    return copyText(text, effectName, kVstMaxVendorStrLen);
}

VstInt32 Vst2Wrapper::getVendorVersion()
{
    return vendorVersion;
}

PluginCategory Vst2Wrapper::getPlugCategory()
{
    struct Row {
        const char* subCategory;
        PluginCategory category;
    };
    static constexpr Row kRows[] = {
        {"Analyzer", kPlugCategAnalysis},   {"Delay", kPlugCategRoomFx},
        {"Reverb", kPlugCategRoomFx},       {"Dynamics", kPlugCategMastering},
        {"Mastering", kPlugCategMastering}, {"Restoration", kPlugCategRestoration},
        {"Generator", kPlugCategGenerator}, {"Spatial", kPlugCategSpacializer},
        {"Fx", kPlugCategEffect},           {"Instrument", kPlugCategSynth},
    };
    for (const Row& row : kRows)
        if (subCategories.find(row.subCategory) != std::string::npos)
            return row.category;
    return kPlugCategUnknown;
}

VstIntPtr Vst2Wrapper::vendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt)
{
    constexpr VstInt32 kWrapperCall = 0x73744341;     // "stCA"
    constexpr VstInt32 kWrapperCallLow = 0x73744361;  // "stCa"
    constexpr VstIntPtr kComponentId = 0x46554944;    // "FUID"
    constexpr VstIntPtr kWheel = 0x57686565;          // "Whee"
    if (index != kWrapperCall && index != kWrapperCallLow)
        return 0;
    if (value == kWheel)
        return editor && editor->onWheel(opt);
    if (value != kComponentId || !ptr)
        return 0;
    std::memcpy(ptr, componentId, sizeof(TUID));
    return 1;
}

VstInt32 Vst2Wrapper::canDo(const char* text)
{
    static constexpr const char* kRefused[] = {"sendVstEvents", "sendVstMidiEvent",
                                               "receiveVstEvents", "receiveVstMidiEvent", "bypass"};
    for (const char* name : kRefused)
        if (equalIgnoringCase(text, name))
            return -1;
    if (equalIgnoringCase(text, "receiveVstTimeInfo"))
        return 1;
    if (equalIgnoringCase(text, "midiProgramNames")) {
        UnitID unit = kRootUnitId;
        return unitInfo && unitInfo->getUnitByBus(kEvent, kInput, 0, 0, unit) == kResultTrue ? 1
                                                                                             : -1;
    }
    if (equalIgnoringCase(text, "offline"))
        return processing ? 0 : 1;
    return 0;
}

VstInt32 Vst2Wrapper::getGetTailSize()
{
    return static_cast<VstInt32>(std::min<uint32>(processor->getTailSamples(), INT32_MAX));
}

void Vst2Wrapper::getProgramName(char* text)
{
    char name[IProgramName::kSize] = {};
    const bool named = programName && programName->getSelectedName(name) == kResultOk;
    const std::string shown = named ? name : effectName;
    const std::size_t size = platform::fittingSize(shown.c_str(), kVstMaxProgNameLen - 1);
    text[shown.copy(text, size)] = '\0';
}

void Vst2Wrapper::setProgramName(const char* text)
{
    if (programName)
        programName->setSelectedName(text);
}

bool Vst2Wrapper::getProgramNameIndexed(VstInt32 index, char* text)
{
    *text = '\0';
    if (index != 0)
        return false;
    getProgramName(text);
    return true;
}

}  // namespace Vst
}  // namespace Steinberg
