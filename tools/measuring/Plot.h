// Plots, drawn by gnuplot.
#pragma once

#include <string>
#include <vector>

namespace tool {

enum class PictureKind { Csv, Svg, Png };

// By the name's ending; throws ToolError for any other.
PictureKind pictureKindOf(const std::string& path);

// Curves have line styles from 1 to kCurveColours, in colours that the colour-blind can tell apart.
// For two curves that may coincide there are two more of each: a wide pale line, to be drawn first,
// and a thin dashed one.
constexpr int kCurveColours = 9;
constexpr int kBelow = 10;
constexpr int kAbove = 20;

// The script's first lines: terminal of the given kind and size (pixels), fonts, the styles of
// curves, and 100 and 101 for grids.
std::string plotHead(PictureKind kind, int width, int height);

// A text as gnuplot reads it literally.
std::string plotQuoted(const std::string& text);

// Ticks at 20, 50, 100 ... 20k and the range of a frequency axis.
std::string frequencyAxis(double lowestHz, double highestHz);

struct EndLabel {
    std::string text;
    int style;  // its colour
    double y;   // of the curve's end
};

// Labels in the right margin beside the ends of curves, moved apart. The axis goes from `lowest` to
// `highest` and is as high as this number of lines of text.
std::string endLabels(std::vector<EndLabel> labels, double lowest, double highest, int lines);

// The bytes of the picture. Throws ToolError when gnuplot is missing or fails.
std::string drawPlot(const std::string& script);

}  // namespace tool
