// CResourceDescription: identifies a picture by number or by name.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

struct CResourceDescription {
    enum Type { kIntegerType = 0, kStringType = 1, kUnknownType = 2 };

    CResourceDescription() : type(kUnknownType) { u.name = nullptr; }
    CResourceDescription(int32_t id) : type(kIntegerType) { u.id = id; }
    // The text is not copied.
    CResourceDescription(UTF8StringPtr name) : type(kStringType) { u.name = name; }

    Type type;
    union {
        int32_t id;
        UTF8StringPtr name;
    } u;
};

}  // namespace VSTGUI
