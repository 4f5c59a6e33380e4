// On Windows the bitmaps are resources of the library, which the toolkit loads by number.
#include "resources/EditorBitmaps.h"

void registerEditorBitmaps() { }
