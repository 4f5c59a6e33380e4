#include "vstgui/lib/vstguibase.h"

#include <cstring>

namespace VSTGUI {

void CBaseObject::forget()
{
    if (--nbReference > 0)
        return;
    beforeDelete();
    delete this;
}

CMessageResult CBaseObject::notify(CBaseObject*, IdStringPtr)
{
    return kMessageUnknown;
}

bool CBaseObject::isTypeOf(IdStringPtr name) const
{
    return sameText(name, "CBaseObject");
}

bool sameText(UTF8StringPtr a, UTF8StringPtr b)
{
    return a && b && std::strcmp(a, b) == 0;
}

}  // namespace VSTGUI
