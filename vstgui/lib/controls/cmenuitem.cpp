// An entry of a menu.
#include "vstgui/lib/controls/cmenuitem.h"

namespace VSTGUI {

CMenuItem::CMenuItem(UTF8StringPtr t, int32_t f, int32_t number)
    : title(t ? t : ""), flags(f), tag(number)
{
}

}  // namespace VSTGUI
