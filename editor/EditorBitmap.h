// The editor's bitmaps, decoded once for all editors that are open.
#pragma once

#include "vstgui/lib/cbitmap.h"

// The bitmap of that number. It stays decoded while a BitmapUser exists.
VSTGUI::SharedPointer<VSTGUI::CBitmap> editorBitmap(int32_t number);

// An open editor. User-interface thread only.
class BitmapUser {
public:
    BitmapUser();
    ~BitmapUser();
    BitmapUser(const BitmapUser&) = delete;
    BitmapUser& operator=(const BitmapUser&) = delete;
};
