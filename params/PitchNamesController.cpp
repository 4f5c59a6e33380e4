// PitchNamesController: start-up, state, editors and units.
#include "PitchNamesController.h"

#include "FactoryBank.h"
#include "ParameterTable.h"

#include "pluginterfaces/base/ibstream.h"
#include "pluginterfaces/gui/iplugview.h"

#include <algorithm>
#include <iterator>

namespace Steinberg {
namespace Vst {

namespace {

// In front of the image in a state: a version, little-endian, and the magic once more.
constexpr uint8 kStateStart[] = {0x00, 0x00, 0x00, 0x02, 0x36, 0x34, 0x74, 0x5A};

}  // namespace

PitchNamesController::PitchNamesController(platform::SettingsStore& settings,
                                           ViewFactory viewFactory)
    : ZKRPresetSystemController3(settings), makeView(viewFactory)
{
}

tresult PLUGIN_API PitchNamesController::initialize(FUnknown* initialContext)
{
    const tresult result = ZKRPresetSystemController3::initialize(initialContext);
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
    editors.clear();
    return ZKRPresetSystemController3::terminate();
}

tresult PLUGIN_API PitchNamesController::getState(IBStream* state)
{
    if (!stateBuffer)
        return kInternalError;
    std::fill_n(stateBuffer.get(), kStateBufferSize, uint8{0});
    std::copy(std::begin(kStateStart), std::end(kStateStart), stateBuffer.get());
    std::vector<uint8> image;
    const int32 size = serializeBank(image);
    if (size == 0)
        return kResultOk;
    std::copy(image.begin(), image.end(), stateBuffer.get() + kStatePrefix);
    if (state) {
        int64 position = 0;
        int32 written = 0;
        state->seek(0, IBStream::kIBSeekSet, &position);
        state->write(stateBuffer.get(), kStatePrefix + size, &written);
    }
    return kResultOk;
}

tresult PLUGIN_API PitchNamesController::setState(IBStream* state)
{
    if (!state)
        return kResultFalse;
    if (!stateBuffer)
        return kInternalError;
    int64 position = 0;
    int32 count = 0;
    state->seek(0, IBStream::kIBSeekSet, &position);
    const tresult result = state->read(stateBuffer.get(), kStateBufferSize, &count);
    if (result == kResultOk) {
        constexpr std::size_t kRecordsAt = kStatePrefix + kFileHeaderSize;
        deserializeBank({stateBuffer.get() + kRecordsAt, kStateBufferSize - kRecordsAt},
                        readHeader(stateBuffer.get() + kStatePrefix), false);
    }
    return result;
}

tresult PLUGIN_API PitchNamesController::setParamNormalized(ParamID id, ParamValue value)
{
    const tresult result = ZKRPresetSystemController3::setParamNormalized(id, value);
    // What the parameter took, which is between 0 and 1.
    const ParamValue taken = id < kPresetParamCount ? getParamNormalized(id) : value;
    // An editor may be attached or removed by what it is told.
    const std::vector<AttachedEditor*> told = editors;
    for (AttachedEditor* editor : told)
        if (std::find(editors.begin(), editors.end(), editor) != editors.end())
            editor->setParameter(id, taken);
    return result;
}

IPlugView* PLUGIN_API PitchNamesController::createView(FIDString name)
{
    return makeView && name && FIDStringsEqual(name, ViewType::kEditor) ? makeView(*this) : nullptr;
}

void PitchNamesController::editorAttached(EditorView* view)
{
    if (auto* const editor = dynamic_cast<AttachedEditor*>(view))
        editors.push_back(editor);
}

void PitchNamesController::editorRemoved(EditorView* view)
{
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
