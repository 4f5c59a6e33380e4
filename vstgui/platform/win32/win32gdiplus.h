// GDI+ by its flat C functions: counted start-up, and owners for the objects.
#pragma once

#include <algorithm>
#include <memory>
#include <windows.h>

#include <objidl.h>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

namespace VSTGUI {

// GDI+ runs while an object of this class exists. Declare it before the objects that use GDI+, so
// that it is destroyed last. Not to be used in DllMain.
class GdiplusSession {
public:
    GdiplusSession();
    ~GdiplusSession();
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
};

template <auto end>
struct GdipEnd {
    template <class T>
    void operator()(T* object) const
    {
        end(object);
    }
};

// clang-format off
using GdipImage = std::unique_ptr<Gdiplus::GpBitmap, GdipEnd<Gdiplus::DllExports::GdipDisposeImage>>;
using GdipGraphics = std::unique_ptr<Gdiplus::GpGraphics, GdipEnd<Gdiplus::DllExports::GdipDeleteGraphics>>;
using GdipFamily = std::unique_ptr<Gdiplus::GpFontFamily, GdipEnd<Gdiplus::DllExports::GdipDeleteFontFamily>>;
using GdipFont = std::unique_ptr<Gdiplus::GpFont, GdipEnd<Gdiplus::DllExports::GdipDeleteFont>>;
using GdipFormat = std::unique_ptr<Gdiplus::GpStringFormat, GdipEnd<Gdiplus::DllExports::GdipDeleteStringFormat>>;
using GdipPath = std::unique_ptr<Gdiplus::GpPath, GdipEnd<Gdiplus::DllExports::GdipDeletePath>>;
using GdipBrush = std::unique_ptr<Gdiplus::GpBrush, GdipEnd<Gdiplus::DllExports::GdipDeleteBrush>>;
// clang-format on

}  // namespace VSTGUI
