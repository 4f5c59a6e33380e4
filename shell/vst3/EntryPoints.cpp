// The exported functions of the VST 3 form: the host opens the module, takes the factory, and
// closes the module as often as it opened it. exports.def has the names that Windows wants.
#include "Export.h"
#include "HostedController.h"
#include "HostedProcessor.h"
#include "PluginFactory.h"

#include <atomic>
#include <new>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

std::atomic<int> openCount{0};

FUnknown* createProcessor(void* /*context*/)
{
    return static_cast<IAudioProcessor*>(new (std::nothrow) HostedProcessor);
}

FUnknown* createController(void* /*context*/)
{
    return static_cast<IEditController*>(new (std::nothrow) HostedController);
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

ZKR_EXPORT IPluginFactory* PLUGIN_API GetPluginFactory()
{
    static const IPtr<CPluginFactory> own = owned(createFactory(createProcessor, createController));
    own->addRef();
    return own;
}
