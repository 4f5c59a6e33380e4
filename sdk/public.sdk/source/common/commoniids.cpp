// Identifiers of the view interfaces, which the rest of the SDK only declares.
#include "pluginterfaces/gui/iplugview.h"

namespace Steinberg {

DEF_CLASS_IID(IPlugView)
DEF_CLASS_IID(IPlugFrame)

}  // namespace Steinberg
