// On systems without resources the bitmaps are a table in the library.
#include "resources/EditorBitmaps.h"

#include "vstgui/platform/bitmapresources.h"

// Generated from bitmaps.txt (cmake/Bitmaps.cmake).
extern "C" const VSTGUI::EmbeddedBitmap zkrEditorBitmaps[];
extern "C" const VSTGUI::EmbeddedBitmap zkrEditorBitmapsEnd[];

void registerEditorBitmaps()
{
    VSTGUI::registerBitmaps(zkrEditorBitmaps,
                            static_cast<size_t>(zkrEditorBitmapsEnd - zkrEditorBitmaps));
}
