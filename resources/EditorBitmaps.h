// The editor's bitmaps, by the numbers that resources/bitmaps.txt gives them.
#pragma once

// Registers them with the toolkit, before the first bitmap is created; may be called repeatedly.
void registerEditorBitmaps();
