#include "shell/PluginFactory.h"

#include "Product.h"
#include "editor/TemplateEditor.h"
#include "params/PitchNamesController.h"
#include "params/ids/ClassIds.h"
#include "shell/PitchNamesProcessor.h"

#include <new>
#include <string>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr const char* kName = "ZKR T46";
constexpr const char* kSdkVersion = "VST 3.6.0";

PClassInfo2 classRecord(const FUID& id, const char* category, int32 flags,
                        const char* subCategories)
{
    TUID bytes;
    id.toTUID(bytes);
    return PClassInfo2(bytes, PClassInfo::kManyInstances, category, kName, flags, subCategories,
                       nullptr, product::kVersion, kSdkVersion);
}

}  // namespace

CPluginFactory* createFactory(CreateFunction makeProcessor, CreateFunction makeController)
{
    const std::string mail = std::string("mailto:") + product::kMailAddress;
    const PFactoryInfo info(product::kMaker, product::kWebAddress, mail.c_str(),
                            PFactoryInfo::kUnicode);
    auto* const factory = new CPluginFactory(info);
    const PClassInfo2 processor =
        classRecord(kProcessorId, kVstAudioEffectClass, kDistributable, "Fx|EQ|Mastering");
    const PClassInfo2 controller = classRecord(kControllerId, kVstComponentControllerClass, 0, "");
    factory->registerClass(&processor, makeProcessor);
    factory->registerClass(&controller, makeController);
    return factory;
}

namespace {

FUnknown* createProcessor(void* /*context*/)
{
    return static_cast<IAudioProcessor*>(new (std::nothrow) PitchNamesProcessor);
}

FUnknown* createController(void* /*context*/)
{
    return static_cast<IEditController*>(
        new (std::nothrow) PitchNamesController(platform::userSettings(), TemplateEditor::create));
}

}  // namespace

IPluginFactory* getFactory()
{
    // The library's own reference keeps the factory until the library is unloaded.
    static const IPtr<CPluginFactory> ownReference =
        owned(gPluginFactory = createFactory(createProcessor, createController));
    ownReference->addRef();
    return ownReference;
}
