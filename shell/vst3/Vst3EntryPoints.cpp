// The exported functions of the VST 3 form: the host opens the module, takes the factory, and
// closes the module as often as it opened it. exports.def has the names that Windows wants.
#include "shell/Export.h"
#include "shell/PluginFactory.h"
#include "shell/vst3/Vst3Controller.h"
#include "shell/vst3/Vst3Processor.h"

#include <atomic>
#include <new>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

std::atomic<int> openCount{0};

// Null where memory ran out.
template <typename Class, typename Interface>
FUnknown* create(void* /*context*/)
{
    try {
        return static_cast<Interface*>(new Class);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

ZKR_EXPORT bool ModuleEntry(void* /*libraryHandle*/)
{
    ++openCount;
    return true;
}

// False when it was not open.
ZKR_EXPORT bool ModuleExit()
{
    if (openCount > 0) {
        --openCount;
        return true;
    }
    return false;
}

// Null where memory ran out.
ZKR_EXPORT IPluginFactory* PLUGIN_API GetPluginFactory()
{
    try {
        static const IPtr<CPluginFactory> own = owned(createFactory(
            create<Vst3Processor, IAudioProcessor>, create<Vst3Controller, IEditController>));
        own->addRef();
        return own;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
