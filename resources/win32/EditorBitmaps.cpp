// On Windows the bitmaps are resources of the library, which the toolkit loads by number.
#include "EditorBitmaps.h"

void registerEditorBitmaps() { }
