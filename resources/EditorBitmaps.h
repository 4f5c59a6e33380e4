// The editor's bitmaps, by the numbers that resources/bitmaps.txt gives them.
#pragma once

// Makes them known to the toolkit. Any number of times; before the first bitmap is made.
void registerEditorBitmaps();
