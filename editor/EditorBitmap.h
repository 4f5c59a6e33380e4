// The editor's bitmaps, decoded once for all editors that are open.
#pragma once

#include "vstgui/lib/cbitmap.h"

// The bitmap with that number, decoded at its first use and kept while a BitmapUser exists.
VSTGUI::SharedPointer<VSTGUI::CBitmap> editorBitmap(int32_t number);

// Each open editor holds one; the last to go frees the bitmaps. User-interface thread only.
class BitmapUser {
public:
    BitmapUser();
    ~BitmapUser();
    BitmapUser(const BitmapUser&) = delete;
    BitmapUser& operator=(const BitmapUser&) = delete;
};
