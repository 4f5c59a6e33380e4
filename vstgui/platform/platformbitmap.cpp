// Finds pictures by number: registered ones first, then the platform's resources. Loaded pictures
// are shared, since filmstrips are large and several strips use the same ones.
#include "vstgui/platform/bitmapresources.h"
#include "vstgui/platform/iplatformbitmap.h"

#include <map>

namespace VSTGUI {

namespace {

std::map<int32_t, EmbeddedBitmap>& registered()
{
    static std::map<int32_t, EmbeddedBitmap> bitmaps;
    return bitmaps;
}

// Without a reference: a picture removes itself when it is deleted.
std::map<int32_t, IPlatformBitmap*>& loaded()
{
    static std::map<int32_t, IPlatformBitmap*> bitmaps;
    return bitmaps;
}

}  // namespace

void registerBitmaps(const EmbeddedBitmap* bitmaps, size_t count)
{
    for (const EmbeddedBitmap* b = bitmaps; b != bitmaps + count; ++b) {
        const EmbeddedBitmap* known = findRegisteredBitmap(b->number);
        if (!known || known->data != b->data)
            loaded().erase(b->number);
        registered()[b->number] = *b;
    }
}

const EmbeddedBitmap* findRegisteredBitmap(int32_t number)
{
    const auto it = registered().find(number);
    return it == registered().end() ? nullptr : &it->second;
}

SharedPointer<IPlatformBitmap> IPlatformBitmap::load(const CResourceDescription& description)
{
    if (description.type == CResourceDescription::kUnknownType)
        return nullptr;
    if (description.type != CResourceDescription::kIntegerType)
        return owned(createFromResource(description));
    const int32_t number = description.u.id;
    if (const auto it = loaded().find(number); it != loaded().end())
        return it->second;
    const EmbeddedBitmap* embedded = findRegisteredBitmap(number);
    auto bitmap = owned(embedded ? createFromPng(embedded->data, embedded->length)
                                 : createFromResource(description));
    if (bitmap)
        loaded()[number] = bitmap;
    return bitmap;
}

void IPlatformBitmap::beforeDelete()
{
    for (auto it = loaded().begin(); it != loaded().end(); ++it) {
        if (it->second == this) {
            loaded().erase(it);
            return;
        }
    }
}

}  // namespace VSTGUI
