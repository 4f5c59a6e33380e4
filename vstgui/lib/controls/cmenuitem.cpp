#include "vstgui/lib/controls/cmenuitem.h"

namespace VSTGUI {

CMenuItem::CMenuItem(UTF8StringPtr title, int32_t flags, int32_t tag)
    : title(title ? title : ""), flags(flags), tag(tag)
{
}

}  // namespace VSTGUI
