// On Windows the bitmaps are resources of the library, which the toolkit finds by itself.
#include "EditorBitmaps.h"

void registerEditorBitmaps() { }
