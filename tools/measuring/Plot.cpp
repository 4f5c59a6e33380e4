#include "tools/measuring/Plot.h"

#include "platform/posix/ChildProcess.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>

#include <strings.h>

namespace tool {

namespace {

using platform::ChildProcess;

constexpr ChildProcess::Seconds kDrawingLimit{60.0};

constexpr const char* kColours[]{"#0072B2", "#D55E00", "#009E73", "#CC79A7", "#000000",
                                 "#E69F00", "#56B4E9", "#8B6508", "#7030A0"};
static_assert(std::size(kColours) == kCurveColours);

// A colour between this one and white.
std::string pale(const std::string& colour)
{
    std::string mixed = "#";
    for (std::size_t at = 1; at < colour.size(); at += 2) {
        const int part = std::stoi(colour.substr(at, 2), nullptr, 16);
        char digits[4];
        std::snprintf(digits, sizeof(digits), "%02X", part + (255 - part) * 6 / 10);
        mixed += digits;
    }
    return mixed;
}

}  // namespace

PictureKind pictureKindOf(const std::string& path)
{
    const std::string ending = std::filesystem::path(path).extension().string();
    if (strcasecmp(ending.c_str(), ".csv") == 0)
        return PictureKind::Csv;
    if (strcasecmp(ending.c_str(), ".svg") == 0)
        return PictureKind::Svg;
    if (strcasecmp(ending.c_str(), ".png") == 0)
        return PictureKind::Png;
    throw ToolError("cannot tell what to write to '" + path
                    + "': its name must end in .svg, .png or .csv");
}

std::string plotHead(PictureKind kind, int width, int height)
{
    const std::string size = std::to_string(width) + "," + std::to_string(height);
    std::string script;
    if (kind == PictureKind::Svg)
        script = "set terminal svg noenhanced size " + size
            + " font 'Helvetica,Arial,sans-serif,15' background rgb 'white'\n";
    else
        script = "set terminal pngcairo noenhanced size " + size + " font 'Sans,12'\n";
    script += "set encoding utf8\n"
              "set border 3 lc rgb '#404040'\n"
              "set tics nomirror out scale 0.6\n"
              "set style line 100 lc rgb '#C8C8C8' lw 1\n"
              "set style line 101 lc rgb '#E8E8E8' lw 1\n"
              "set key outside right top Left reverse samplen 2 spacing 1.2\n";
    int number = 0;
    for (const char* colour : kColours) {
        const auto style = [&](int first, const std::string& look) {
            script +=
                "set style line " + std::to_string(first + number) + " lc rgb '" + look + "\n";
        };
        ++number;
        style(0, colour + std::string("' lw 2"));
        style(kBelow, pale(colour) + "' lw 7");
        style(kAbove, colour + std::string("' lw 1.6 dt (10,5)"));
    }
    return script;
}

std::string plotQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\n' || c == '\r')
            continue;
        quoted += c == '\'' ? std::string("''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string frequencyAxis(double lowestHz, double highestHz)
{
    // Slightly wider, so that ticks at the ends are drawn.
    const double fromHz = lowestHz * 0.998;
    const double toHz = highestHz * 1.01;
    char range[80];
    std::snprintf(range, sizeof(range), "set xrange [%.6g:%.6g]\n", fromHz, toHz);
    std::string ticks;
    for (double decade = 1.0; decade <= 100000.0; decade *= 10.0) {
        for (int digit = 1; digit <= 9; ++digit) {
            const double hz = decade * digit;
            if (hz < fromHz || hz > toHz)
                continue;
            const bool major = digit == 1 || digit == 2 || digit == 5;
            char text[80];
            char label[32];
            std::snprintf(label, sizeof(label), hz >= 1000.0 ? "%gk" : "%g",
                          hz >= 1000.0 ? hz / 1000.0 : hz);
            std::snprintf(text, sizeof(text), "%s'%s' %g %d", ticks.empty() ? "" : ", ",
                          major ? label : "", hz, major ? 0 : 1);
            ticks += text;
        }
    }
    return "set logscale x\n" + std::string(range) + "set xtics (" + ticks + ")\n"
        + "set mxtics 1\nset grid xtics mxtics ytics ls 100, ls 101\n";
}

std::string endLabels(std::vector<EndLabel> labels, double lowest, double highest, int lines)
{
    std::stable_sort(labels.begin(), labels.end(),
                     [](const EndLabel& a, const EndLabel& b) { return a.y > b.y; });
    const double gap = (highest - lowest) / lines;
    double limit = highest;
    for (EndLabel& label : labels) {
        label.y = std::clamp(label.y, lowest, std::max(limit, lowest));
        limit = label.y - gap;
    }
    limit = lowest;
    for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
        label->y = std::max(label->y, limit);
        limit = label->y + gap;
    }
    std::string script = "unset label\n";
    for (const EndLabel& label : labels) {
        char place[80];
        std::snprintf(place, sizeof(place), " at graph 1.008, first %.4f left tc ls %d\n", label.y,
                      label.style);
        script += "set label " + plotQuoted(label.text) + place;
    }
    return script;
}

std::string drawPlot(const std::string& script)
{
    // Without the user's own settings.
    ChildProcess gnuplot(ChildProcess::Role::Helper, {"gnuplot", "--default-settings"});
    if (!gnuplot.started())
        throw ToolError("drawing needs gnuplot: " + gnuplot.startError()
                        + " (a .csv file needs no gnuplot)");
    std::string picture;
    const auto outcome = gnuplot.converse(script, picture, kDrawingLimit);
    const int code = gnuplot.wait(kDrawingLimit);
    if (outcome != ChildProcess::Outcome::Done || code != 0 || picture.empty())
        throw ToolError("gnuplot could not draw the picture: " + gnuplot.lastWords());
    return picture;
}

}  // namespace tool
