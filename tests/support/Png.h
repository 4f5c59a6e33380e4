// Pictures as PNG.
#pragma once

#include "vstgui/platform/pixels.h"

#include <string>
#include <vector>

std::vector<uint8_t> encodePng(const VSTGUI::Pixels& pixels);
// Path in UTF-8. False when the file cannot be written.
bool writePng(const std::string& path, const VSTGUI::Pixels& pixels);
