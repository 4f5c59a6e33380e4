#include "tests/support/Png.h"

#include <filesystem>
#include <fstream>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#include <stb/stb_image_write.h>

std::vector<uint8_t> encodePng(const VSTGUI::Pixels& pixels)
{
    std::vector<uint8_t> out;
    stbi_write_png_to_func(
        [](void* context, void* data, int size) {
            const auto* const bytes = static_cast<const uint8_t*>(data);
            static_cast<std::vector<uint8_t>*>(context)->assign(bytes, bytes + size);
        },
        &out, pixels.width, pixels.height, 4, pixels.rgba.data(), 4 * pixels.width);
    return out;
}

bool writePng(const std::string& path, const VSTGUI::Pixels& pixels)
{
    const std::vector<uint8_t> bytes = encodePng(pixels);
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return file.good();
}
