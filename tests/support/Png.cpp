#include "Png.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>

namespace {

void putBigEndian(std::vector<uint8_t>& out, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<uint8_t>(value >> shift));
}

uint32_t crc32(const uint8_t* data, size_t length)
{
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1u) ? 0xEDB88320u : 0u);
    }
    return ~crc;
}

uint32_t adler32(const std::vector<uint8_t>& data)
{
    uint32_t a = 1;
    uint32_t b = 0;
    for (uint8_t byte : data) {
        a = (a + byte) % 65521u;
        b = (b + a) % 65521u;
    }
    return (b << 16) | a;
}

void putChunk(std::vector<uint8_t>& out, const char* type, const std::vector<uint8_t>& data)
{
    putBigEndian(out, static_cast<uint32_t>(data.size()));
    const size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data.begin(), data.end());
    putBigEndian(out, crc32(out.data() + start, out.size() - start));
}

// A zlib stream of stored blocks.
std::vector<uint8_t> stored(const std::vector<uint8_t>& data)
{
    constexpr size_t kLargestBlock = 65535;
    std::vector<uint8_t> out{0x78, 0x01};
    size_t position = 0;
    do {
        const size_t length = std::min(kLargestBlock, data.size() - position);
        out.push_back(position + length == data.size() ? 1 : 0);
        for (const size_t word : {length, kLargestBlock - length}) {
            out.push_back(static_cast<uint8_t>(word & 0xFF));
            out.push_back(static_cast<uint8_t>(word >> 8));
        }
        const auto first = data.begin() + static_cast<std::ptrdiff_t>(position);
        out.insert(out.end(), first, first + static_cast<std::ptrdiff_t>(length));
        position += length;
    } while (position < data.size());
    putBigEndian(out, adler32(data));
    return out;
}

}  // namespace

std::vector<uint8_t> encodePng(const VSTGUI::Pixels& pixels)
{
    std::vector<uint8_t> header;
    putBigEndian(header, static_cast<uint32_t>(pixels.width));
    putBigEndian(header, static_cast<uint32_t>(pixels.height));
    header.insert(header.end(), {8, 6, 0, 0, 0});  // 8 bits, red green blue alpha

    std::vector<uint8_t> rows;
    const size_t stride = static_cast<size_t>(pixels.width) * 4;
    for (size_t y = 0; y < static_cast<size_t>(pixels.height); ++y) {
        rows.push_back(0);  // no filter
        const auto row = pixels.rgba.begin() + static_cast<std::ptrdiff_t>(y * stride);
        rows.insert(rows.end(), row, row + static_cast<std::ptrdiff_t>(stride));
    }

    std::vector<uint8_t> out{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    putChunk(out, "IHDR", header);
    putChunk(out, "IDAT", stored(rows));
    putChunk(out, "IEND", {});
    return out;
}

bool writePng(const std::string& path, const VSTGUI::Pixels& pixels)
{
    const std::vector<uint8_t> png = encodePng(pixels);
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
    file.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
    return static_cast<bool>(file.flush());
}
