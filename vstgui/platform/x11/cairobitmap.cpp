// CairoBitmap: reads PNG files with cairo, from memory or from the resources of the library's
// bundle.
#include "vstgui/platform/x11/cairobitmap.h"

#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace VSTGUI {

namespace {

struct Cursor {
    const uint8_t* data;
    size_t left;
};

cairo_status_t readFrom(void* closure, unsigned char* to, unsigned int length)
{
    auto& cursor = *static_cast<Cursor*>(closure);
    if (length > cursor.left)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(to, cursor.data, length);
    cursor.data += length;
    cursor.left -= length;
    return CAIRO_STATUS_SUCCESS;
}

// For BUNDLE/Contents/ARCHITECTURE/library.so this is BUNDLE/Contents/Resources.
std::filesystem::path resourceFolder()
{
    Dl_info library{};
    if (!dladdr(reinterpret_cast<const void*>(&resourceFolder), &library) || !library.dli_fname)
        return {};
    const std::filesystem::path file(library.dli_fname);
    return file.parent_path().parent_path() / "Resources";
}

}  // namespace

IPlatformBitmap* IPlatformBitmap::createFromPng(const uint8_t* data, size_t length)
{
    if (!data)
        return nullptr;
    Cursor cursor{data, length};
    CairoHandle<cairo_surface_t> image(
        cairo_image_surface_create_from_png_stream(readFrom, &cursor));
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    return new CairoBitmap(std::move(image));
}

IPlatformBitmap* IPlatformBitmap::createFromResource(const CResourceDescription& description)
{
    char name[32];
    std::snprintf(name, sizeof name, "bmp%05d.png", description.u.id);
    const bool byNumber = description.type == CResourceDescription::kIntegerType;
    const UTF8StringPtr wanted = byNumber ? name : description.u.name;
    const std::filesystem::path folder = resourceFolder();
    if (!wanted || folder.empty())
        return nullptr;
    std::ifstream file(folder / wanted, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    return createFromPng(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace VSTGUI
