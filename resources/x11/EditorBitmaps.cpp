// Where the system knows no resources, the bitmaps are a table in the library.
#include "EditorBitmaps.h"

#include "vstgui/platform/bitmapresources.h"

// Written by the build from the list of bitmaps.
extern "C" const VSTGUI::EmbeddedBitmap zkrEditorBitmaps[];
extern "C" const VSTGUI::EmbeddedBitmap zkrEditorBitmapsEnd[];

void registerEditorBitmaps()
{
    VSTGUI::registerBitmaps(zkrEditorBitmaps,
                            static_cast<size_t>(zkrEditorBitmapsEnd - zkrEditorBitmaps));
}
