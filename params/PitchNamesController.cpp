// PitchNamesController: initialisation, state, editors and units.
#include "params/PitchNamesController.h"

#include "params/ParameterTable.h"
#include "presets/FactoryBank.h"

#include "pluginterfaces/base/ibstream.h"
#include "pluginterfaces/gui/iplugview.h"

#include <algorithm>
#include <iterator>

namespace Steinberg {
namespace Vst {

PitchNamesController::PitchNamesController(platform::SettingsStore& store, ViewFactory makeView)
    : ZKRPresetSystemController3(store), makeView(makeView)
{
}

tresult PLUGIN_API PitchNamesController::initialize(FUnknown* context)
{
    const tresult result = ZKRPresetSystemController3::initialize(context);
    if (result != kResultOk)
        return result;
    constexpr UnitID kOwnUnit = 1;
    addUnit(new Unit(STR16("Unit1"), kOwnUnit, kRootUnitId, kNoProgramListId));
    addParameters(parameters);
    startPresetSystem();
    return kResultOk;
}

tresult PLUGIN_API PitchNamesController::terminate()
{
    {
        const std::lock_guard<std::mutex> lock(editorsMutex);
        editors.clear();
    }
    return ZKRPresetSystemController3::terminate();
}

tresult PLUGIN_API PitchNamesController::getState(IBStream* state)
{
    std::vector<uint8> image;
    const int32 size = serializeBank(image);
    const std::lock_guard<std::mutex> lock(stateMutex);
    if (!stateBuffer)
        return kInternalError;
    std::fill_n(stateBuffer.get(), kStateBufferSize, uint8{0});
    uint8* const imageStart =
        std::copy(kStatePrefix.begin(), kStatePrefix.end(), stateBuffer.get());
    if (size == 0)
        return kResultOk;
    std::copy(image.begin(), image.end(), imageStart);
    if (state) {
        int64 position = 0;
        int32 written = 0;
        state->seek(0, IBStream::kIBSeekSet, &position);
        state->write(stateBuffer.get(), static_cast<int32>(kStatePrefix.size()) + size, &written);
    }
    return kResultOk;
}

tresult PLUGIN_API PitchNamesController::setState(IBStream* state)
{
    if (!state)
        return kResultFalse;
    std::vector<uint8> bytes;
    {
        const std::lock_guard<std::mutex> lock(stateMutex);
        if (!stateBuffer)
            return kInternalError;
        int64 position = 0;
        int32 count = 0;
        state->seek(0, IBStream::kIBSeekSet, &position);
        const tresult result = state->read(stateBuffer.get(), kStateBufferSize, &count);
        if (result != kResultOk)
            return result;
        bytes.assign(stateBuffer.get(), stateBuffer.get() + kStateBufferSize);
    }
    constexpr std::size_t kRecordsAt = kStatePrefix.size() + kFileHeaderSize;
    deserializeBank({bytes.data() + kRecordsAt, bytes.size() - kRecordsAt},
                    readHeader(bytes.data() + kStatePrefix.size()), false);
    return kResultOk;
}

template <typename Condition>
std::vector<AttachedEditor*> PitchNamesController::editorsWhere(Condition condition)
{
    std::vector<AttachedEditor*> chosen;
    const std::lock_guard<std::mutex> lock(editorsMutex);
    std::copy_if(editors.begin(), editors.end(), std::back_inserter(chosen), condition);
    return chosen;
}

bool PitchNamesController::isAttached(AttachedEditor* editor)
{
    const std::lock_guard<std::mutex> lock(editorsMutex);
    return std::find(editors.begin(), editors.end(), editor) != editors.end();
}

tresult PLUGIN_API PitchNamesController::setParamNormalized(ParamID id, ParamValue value)
{
    const tresult result = ZKRPresetSystemController3::setParamNormalized(id, value);
    ParamValue current = value;
    const auto notified = editorsWhere([&](AttachedEditor* editor) {
        // The parameter's value, limited to 0..1. Read with the editors locked, so that a value
        // that another thread sets later also reaches the editors later.
        if (id < kPresetParamCount)
            current = getParamNormalized(id);
        const bool now = holds == 0 && editor->isOnOwnThread();
        now ? editor->dropPostponed(id) : editor->postpone(id, current);
        return now;
    });
    // The call to one editor may attach or remove another one.
    for (AttachedEditor* editor : notified)
        if (isAttached(editor))
            editor->setParameter(id, current);
    return result;
}

void PLUGIN_API PitchNamesController::holdEditors()
{
    const std::lock_guard<std::mutex> lock(editorsMutex);
    ++holds;
}

void PLUGIN_API PitchNamesController::releaseEditors()
{
    {
        const std::lock_guard<std::mutex> lock(editorsMutex);
        if (--holds > 0)
            return;
    }
    for (AttachedEditor* editor :
         editorsWhere([](AttachedEditor* editor) { return editor->isOnOwnThread(); }))
        if (isAttached(editor))
            editor->takeUpPostponed();
}

IPlugView* PLUGIN_API PitchNamesController::createView(FIDString name)
{
    return makeView && name && FIDStringsEqual(name, ViewType::kEditor) ? makeView(*this) : nullptr;
}

void PitchNamesController::editorAttached(EditorView* view)
{
    const std::lock_guard<std::mutex> lock(editorsMutex);
    if (auto* const editor = dynamic_cast<AttachedEditor*>(view))
        editors.push_back(editor);
}

void PitchNamesController::editorRemoved(EditorView* view)
{
    const std::lock_guard<std::mutex> lock(editorsMutex);
    const auto found =
        std::find(editors.begin(), editors.end(), dynamic_cast<AttachedEditor*>(view));
    if (found != editors.end())
        editors.erase(found);
}

tresult PLUGIN_API PitchNamesController::getUnitByBus(MediaType /*type*/, BusDirection /*dir*/,
                                                      int32 /*busIndex*/, int32 /*channel*/,
                                                      UnitID& unitId)
{
    unitId = kRootUnitId;
    return kResultOk;
}

void PitchNamesController::fillFactoryBank()
{
    if (presetBank)
        std::copy(factoryBank().begin(), factoryBank().end(), presetBank.get());
}

}  // namespace Vst
}  // namespace Steinberg
