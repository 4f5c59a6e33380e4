// Identifiers of interfaces that are declared elsewhere but not defined: the SDK's interfaces of
// views, and those between the VST 2 wrapper and a controller.
#include "public.sdk/source/vst/vst2wrapper/ivst2bridge.h"

#include "pluginterfaces/gui/iplugview.h"

namespace Steinberg {

DEF_CLASS_IID(IPlugView)
DEF_CLASS_IID(IPlugFrame)

#if SMTG_OS_LINUX
namespace Linux {

DEF_CLASS_IID(IEventHandler)
DEF_CLASS_IID(ITimerHandler)
DEF_CLASS_IID(IRunLoop)

}  // namespace Linux
#endif

namespace Vst {

DEF_CLASS_IID(IProgramName)
DEF_CLASS_IID(IEditorUpdates)
DEF_CLASS_IID(IPendingValues)

}  // namespace Vst
}  // namespace Steinberg
