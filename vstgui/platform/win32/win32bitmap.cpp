// Win32Bitmap: decodes pictures with GDI+, from memory and from the module's resources.
#include "vstgui/platform/win32/win32bitmap.h"

#include "platform/win32/WideText.h"
#include "vstgui/platform/win32/win32gdiplus.h"
#include "vstgui/platform/win32/win32module.h"

#include <limits>
#include <shlwapi.h>

namespace VSTGUI {

using namespace Gdiplus::DllExports;

namespace {

struct ReleaseStream {
    void operator()(IStream* stream) const { stream->Release(); }
};

// Copies the pixels; afterwards neither the decoder nor the encoded data is needed.
IPlatformBitmap* copyPixels(Gdiplus::GpBitmap* image)
{
    UINT width = 0;
    UINT height = 0;
    if (GdipGetImageWidth(image, &width) != Gdiplus::Ok
        || GdipGetImageHeight(image, &height) != Gdiplus::Ok || width == 0 || height == 0)
        return nullptr;

    std::vector<uint32_t> pixels(size_t{width} * height);
    const Gdiplus::Rect whole(0, 0, static_cast<INT>(width), static_cast<INT>(height));
    Gdiplus::BitmapData data{};
    data.Width = width;
    data.Height = height;
    data.Stride = static_cast<INT>(width * sizeof(uint32_t));
    data.PixelFormat = PixelFormat32bppPARGB;
    data.Scan0 = pixels.data();
    if (GdipBitmapLockBits(image, &whole,
                           Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                           PixelFormat32bppPARGB, &data)
        != Gdiplus::Ok)
        return nullptr;
    GdipBitmapUnlockBits(image, &data);
    return new Win32Bitmap(static_cast<int>(width), static_cast<int>(height), std::move(pixels));
}

IPlatformBitmap* createFromBitmapResource(LPCWSTR name)
{
    const GdiplusSession session;
    Gdiplus::GpBitmap* created = nullptr;
    GdipCreateBitmapFromResource(moduleHandle(), name, &created);
    const GdipImage image(created);
    return image ? copyPixels(image.get()) : nullptr;
}

}  // namespace

Win32Bitmap::Win32Bitmap(int width, int height, std::vector<uint32_t> pixels)
    : width(width), height(height), pixels(std::move(pixels))
{
}

CPoint Win32Bitmap::getSize() const
{
    return {static_cast<CCoord>(width), static_cast<CCoord>(height)};
}

const uint32_t* Win32Bitmap::row(int y) const
{
    return pixels.data() + static_cast<ptrdiff_t>(y) * width;
}

IPlatformBitmap* IPlatformBitmap::createFromPng(const uint8_t* data, size_t length)
{
    if (!data || length > std::numeric_limits<UINT>::max())
        return nullptr;
    const GdiplusSession session;
    const std::unique_ptr<IStream, ReleaseStream> stream(
        SHCreateMemStream(data, static_cast<UINT>(length)));
    if (!stream)
        return nullptr;
    Gdiplus::GpBitmap* created = nullptr;
    GdipCreateBitmapFromStream(stream.get(), &created);
    const GdipImage image(created);
    return image ? copyPixels(image.get()) : nullptr;
}

IPlatformBitmap* IPlatformBitmap::createFromResource(const CResourceDescription& description)
{
    std::wstring text;
    LPCWSTR name = nullptr;
    if (description.type == CResourceDescription::kIntegerType) {
        if (description.u.id < 0 || description.u.id > 0xFFFF)
            return nullptr;
        name = MAKEINTRESOURCEW(static_cast<WORD>(description.u.id));
    } else if (description.type == CResourceDescription::kStringType && description.u.name) {
        text = platform::toWide(description.u.name);
        name = text.c_str();
    } else {
        return nullptr;
    }

    const HRSRC resource = FindResourceW(moduleHandle(), name, L"PNG");
    if (!resource)
        return createFromBitmapResource(name);
    const HGLOBAL loaded = LoadResource(moduleHandle(), resource);
    return loaded ? createFromPng(static_cast<const uint8_t*>(LockResource(loaded)),
                                  SizeofResource(moduleHandle(), resource))
                  : nullptr;
}

}  // namespace VSTGUI
