// IPlatformBitmap: a decoded picture in the form that the platform's surfaces draw fastest.
#pragma once

#include "vstgui/lib/cpoint.h"
#include "vstgui/lib/cresourcedescription.h"

#include <cstddef>

namespace VSTGUI {

class IPlatformBitmap : public CBaseObject {
public:
    virtual CPoint getSize() const = 0;  // whole pixels; a resolution noted in the file is ignored

    // Both are supplied by each platform, give null for anything that is no picture, and leave the
    // reference to the caller. The bytes are not needed afterwards.
    static IPlatformBitmap* createFromPng(const uint8_t* data, size_t length);
    // By number or name, from where the platform keeps pictures outside the code.
    static IPlatformBitmap* createFromResource(const CResourceDescription& description);

    // A registered picture of that number, else the platform's resource. Equal numbers share one
    // picture while somebody holds it.
    static SharedPointer<IPlatformBitmap> load(const CResourceDescription& description);

protected:
    void beforeDelete() override;
};

}  // namespace VSTGUI
