// The exported functions of the VST 3 library. A host calls ModuleEntry, then GetPluginFactory, and
// at the end ModuleExit once for each ModuleEntry. On Windows exports.def gives the first and the
// last one their names for Windows.
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

// Null if memory runs out.
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

// False if the module was not open.
ZKR_EXPORT bool ModuleExit()
{
    if (openCount > 0) {
        --openCount;
        return true;
    }
    return false;
}

// Null if memory runs out.
ZKR_EXPORT IPluginFactory* PLUGIN_API GetPluginFactory()
{
    try {
        static const IPtr<CPluginFactory> factory = owned(createFactory(
            create<Vst3Processor, IAudioProcessor>, create<Vst3Controller, IEditController>));
        factory->addRef();
        return factory;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
