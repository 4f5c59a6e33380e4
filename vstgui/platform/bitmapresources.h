// Pictures that are part of the code, found by their numbers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace VSTGUI {

// One PNG file, kept by reference: the bytes stay where they are.
struct EmbeddedBitmap {
    int32_t number;
    const uint8_t* data;
    size_t length;
};

// Makes pictures available to CBitmap (CResourceDescription (number)); to be called before the
// first such bitmap is made. Numbers that are there already are replaced, so that calling it twice
// does no harm. Numbers that nobody registered are looked for among the platform's resources.
void registerBitmaps(const EmbeddedBitmap* bitmaps, size_t count);

// Null when nobody registered that number.
const EmbeddedBitmap* findRegisteredBitmap(int32_t number);

}  // namespace VSTGUI
