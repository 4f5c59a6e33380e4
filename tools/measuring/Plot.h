// Plots, drawn by gnuplot.
#pragma once

#include <string>
#include <vector>

namespace tool {

enum class PictureKind { Csv, Svg, Png };

// By the name's ending; throws ToolError for any other.
PictureKind pictureKindOf(const std::string& path);

// The script's first lines: terminal of the given kind and size (pixels), fonts, line styles 1 to 8
// in colours that the colour-blind can tell apart, and 100 and 101 for grids.
std::string plotHead(PictureKind kind, int width, int height);

// A text as gnuplot reads it literally.
std::string plotQuoted(const std::string& text);

// Ticks at 20, 50, 100 ... 20k and the range of a frequency axis.
std::string frequencyAxis(double lowestHz, double highestHz);

// The bytes of the picture. Throws ToolError when gnuplot is missing or fails.
std::string drawPlot(const std::string& script);

}  // namespace tool
