// Pictures embedded in the code, found by number.
#pragma once

#include <cstddef>
#include <cstdint>

namespace VSTGUI {

// One PNG file. The bytes are not copied.
struct EmbeddedBitmap {
    int32_t number;
    const uint8_t* data;
    size_t length;
};

// Makes pictures available to CBitmap (CResourceDescription (number)). Call it before the first
// such bitmap is made. Numbers registered before are replaced. CBitmap looks up other numbers in
// the platform's resources.
void registerBitmaps(const EmbeddedBitmap* bitmaps, size_t count);

// Null when the number is not registered.
const EmbeddedBitmap* findRegisteredBitmap(int32_t number);

}  // namespace VSTGUI
