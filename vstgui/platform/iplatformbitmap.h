// IPlatformBitmap: a decoded picture in the pixel format of the platform's surfaces.
#pragma once

#include "vstgui/lib/cpoint.h"
#include "vstgui/lib/cresourcedescription.h"

#include <cstddef>

namespace VSTGUI {

class IPlatformBitmap : public CBaseObject {
public:
    virtual CPoint getSize() const = 0;  // whole pixels; the file's resolution (dpi) is ignored

    // Both are implemented by each platform, return null for data that is no picture, and give the
    // reference to the caller. The data is not needed afterwards.
    static IPlatformBitmap* createFromPng(const uint8_t* data, size_t length);
    // By number or name, from the module's or bundle's resources.
    static IPlatformBitmap* createFromResource(const CResourceDescription& description);

    // The registered picture with that number, else the platform's resource. While a picture is in
    // use, further calls with its number return the same object.
    static SharedPointer<IPlatformBitmap> load(const CResourceDescription& description);

protected:
    void beforeDelete() override;
};

}  // namespace VSTGUI
