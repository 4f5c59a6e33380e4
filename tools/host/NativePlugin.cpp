#include "tools/host/NativePlugin.h"

#include "Product.h"
#include "tools/host/HostError.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <string_view>

#ifdef _WIN32
#include <windows.h>
#endif

namespace host {

namespace {

using EntryPoint = AEffect* (*)(audioMasterCallback);

// The plug-in whose constructor runs on this thread. Its first calls to the host come before the
// effect's `user` field is set.
thread_local NativePlugin* pluginInConstruction = nullptr;

constexpr std::array<std::string_view, 3> kAbilities{"sizeWindow", "startStopProcess",
                                                     "acceptIOChanges"};

// Limits the memory if a plug-in automates without end.
constexpr std::size_t kMaxAutomations = 1u << 20;

[[noreturn]] void refuseVst3(const std::string& path)
{
    throw HostError("'" + path
                    + "' is a VST 3 plug-in; this program takes VST 2 libraries: ZKRT46.so or "
                      "ZKRT46.dll");
}

// Throws for the folder of a VST 3 plug-in, with or without a slash at its end.
const std::string& libraryPath(const std::string& path)
{
    const std::filesystem::path whole = std::filesystem::u8path(path);
    if ((whole.has_filename() ? whole : whole.parent_path()).extension() == ".vst3")
        refuseVst3(path);
    return path;
}

EntryPoint entryPoint(const SharedLibrary& library)
{
    for (const char* name : {"VSTPluginMain", "main"})
        if (void* address = library.find(name))
            return reinterpret_cast<EntryPoint>(address);
    return nullptr;
}

void pumpMessages()
{
#ifdef _WIN32
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
#endif
}

VstSpeakerArrangement arrangement(int channels)
{
    VstSpeakerArrangement speakers{};
    speakers.type = channels == 1 ? kSpeakerArrMono : kSpeakerArrStereo;
    speakers.numChannels = channels;
    if (channels == 1) {
        speakers.speakers[0].type = kSpeakerM;
    } else {
        speakers.speakers[0].type = kSpeakerL;
        speakers.speakers[1].type = kSpeakerR;
    }
    return speakers;
}

}  // namespace

NativePlugin::NativePlugin(const std::string& path, const HostSettings& settings)
    : library(libraryPath(path)), aeffect(nullptr), running(false), vstVersion(settings.vstVersion),
      processLevel(settings.processLevel), sampleRate(settings.sampleRate),
      blockSize(settings.blockSize)
{
    const EntryPoint entry = entryPoint(library);
    if (!entry && library.find("GetPluginFactory"))
        refuseVst3(path);
    if (!entry)
        throw HostError("'" + path
                        + "' is not a VST 2 plug-in: it exports neither VSTPluginMain nor "
                        + "main");

    NativePlugin* outer = pluginInConstruction;
    pluginInConstruction = this;
    aeffect = entry(&NativePlugin::callback);
    if (aeffect && aeffect->magic == kEffectMagic) {
        aeffect->user = this;
        aeffect->dispatcher(aeffect, effOpen, 0, 0, nullptr, 0.0f);
    }
    pluginInConstruction = outer;

    if (!aeffect)
        throw HostError("the plug-in '" + path + "' refused to start");
    if (aeffect->magic != kEffectMagic)
        throw HostError("'" + path + "' is not a VST 2 plug-in: its entry gave no valid effect");
}

NativePlugin::~NativePlugin()
{
    if (running)
        dispatch(effMainsChanged, 0, 0);
    dispatch(effClose);
}

EffectFields NativePlugin::fields()
{
    return {aeffect->numPrograms, aeffect->numParams,    aeffect->numInputs, aeffect->numOutputs,
            aeffect->flags,       aeffect->initialDelay, aeffect->uniqueID,  aeffect->version};
}

VstIntPtr NativePlugin::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, float opt)
{
    // Stored first, since the plug-in may ask for the rate or size during the call.
    if (opcode == effSetSampleRate)
        sampleRate = static_cast<double>(opt);
    if (opcode == effSetBlockSize)
        blockSize = static_cast<VstInt32>(value);
    if (opcode == effMainsChanged)
        running = value != 0;
    return aeffect->dispatcher(aeffect, opcode, index, value, nullptr, opt);
}

VstIntPtr NativePlugin::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                 std::vector<std::uint8_t>& bytes)
{
    return aeffect->dispatcher(aeffect, opcode, index, value, bytes.data(), 0.0f);
}

std::vector<std::uint8_t> NativePlugin::chunk(VstInt32 bankOrProgram)
{
    void* data = nullptr;
    const VstIntPtr size = aeffect->dispatcher(aeffect, effGetChunk, bankOrProgram, 0, &data, 0.0f);
    if (!data || size <= 0)
        return {};
    const auto* first = static_cast<const std::uint8_t*>(data);
    return std::vector<std::uint8_t>(first, first + size);
}

bool NativePlugin::setSpeakerArrangement(int inputs, int outputs)
{
    VstSpeakerArrangement in = arrangement(inputs);
    VstSpeakerArrangement out = arrangement(outputs);
    return aeffect->dispatcher(aeffect, effSetSpeakerArrangement, 0,
                               reinterpret_cast<VstIntPtr>(&in), &out, 0.0f)
        != 0;
}

void NativePlugin::setParameter(VstInt32 index, float value)
{
    aeffect->setParameter(aeffect, index, value);
}

float NativePlugin::parameter(VstInt32 index)
{
    return aeffect->getParameter(aeffect, index);
}

void NativePlugin::process(float** inputs, float** outputs, int samples)
{
    aeffect->processReplacing(aeffect, inputs, outputs, samples);
}

HostReports NativePlugin::reports()
{
    const std::lock_guard<std::mutex> guard(reportsLock);
    return collectedReports;
}

void NativePlugin::clearReports()
{
    const std::lock_guard<std::mutex> guard(reportsLock);
    collectedReports = {};
}

void NativePlugin::idle()
{
    pumpMessages();
    dispatch(effEditIdle);
}

VstIntPtr NativePlugin::callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                 void* ptr, float opt)
{
    auto* self =
        effect && effect->user ? static_cast<NativePlugin*>(effect->user) : pluginInConstruction;
    return self ? self->answer(opcode, index, value, ptr, opt) : 0;
}

VstIntPtr NativePlugin::answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt)
{
    switch (opcode) {
    case audioMasterVersion:
        return vstVersion;
    case audioMasterGetSampleRate:
        return static_cast<VstIntPtr>(sampleRate.load());
    case audioMasterGetBlockSize:
        return blockSize;
    case audioMasterGetCurrentProcessLevel:
        return processLevel;
    case audioMasterGetVendorString:
        std::strcpy(static_cast<char*>(ptr), product::kMaker);
        return 1;
    case audioMasterGetProductString:
        std::strcpy(static_cast<char*>(ptr), "zkrt46 host");
        return 1;
    case audioMasterGetVendorVersion:
        return 1;
    case audioMasterCanDo:
        for (const std::string_view ability : kAbilities)
            if (ptr && ability == static_cast<const char*>(ptr))
                return 1;
        return 0;
    default:
        break;
    }

    const std::lock_guard<std::mutex> guard(reportsLock);
    switch (opcode) {
    case audioMasterAutomate:
        if (collectedReports.automated.size() < kMaxAutomations)
            collectedReports.automated.push_back({index, opt});
        return 0;
    case audioMasterIOChanged:
        ++collectedReports.ioChanges;
        return 1;
    case audioMasterUpdateDisplay:
        ++collectedReports.displayUpdates;
        return 1;
    case audioMasterBeginEdit:
        ++collectedReports.beginEdits;
        return 1;
    case audioMasterEndEdit:
        ++collectedReports.endEdits;
        return 1;
    case audioMasterSizeWindow:
        ++collectedReports.windowSizes;
        collectedReports.windowWidth = index;
        collectedReports.windowHeight = static_cast<VstInt32>(value);
        return 1;
    default:
        return 0;  // also audioMasterGetTime: there is no time information
    }
}

}  // namespace host
