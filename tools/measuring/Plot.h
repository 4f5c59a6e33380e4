// Pictures, drawn by gnuplot.
#pragma once

#include <string>
#include <vector>

namespace tool {

enum class PictureKind { Csv, Svg, Png };

// By the name's ending; throws ToolError for any other.
PictureKind pictureKindOf(const std::string& path);

// The script's first lines: terminal of the wanted kind and size, fonts, grid, and line styles 1 to
// 8 in colours that stay apart also for the colour-blind.
std::string plotHead(PictureKind kind, int width, int height);

// A text as gnuplot reads it literally.
std::string plotQuoted(const std::string& text);

// Ticks at 20, 50, 100 ... 20k and the range of a frequency axis.
std::string frequencyAxis(double lowestHz, double highestHz);

// The finished picture. Throws ToolError when gnuplot is missing or complains.
std::string drawPlot(const std::string& script);

}  // namespace tool
