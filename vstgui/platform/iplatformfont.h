// IPlatformFont: a font of the system at one size.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

class IPlatformFont : public CBaseObject {
public:
    // Pixels.
    virtual CCoord getCapHeight() const = 0;
    virtual CCoord getStringWidth(UTF8StringPtr text) const = 0;

    // Implemented by each platform. Size in pixels, style a sum of CTxtFace. A missing family is
    // replaced by a sans-serif one; null only when there is no font at all. The caller owns it.
    static IPlatformFont* create(UTF8StringPtr family, CCoord size, int32_t style);
};

}  // namespace VSTGUI
