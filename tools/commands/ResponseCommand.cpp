// zkrt46 response: measures magnitude and phase, as a picture or as numbers.
#include "tools/banks/PresetName.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ToolError.h"
#include "tools/host/OpenPlugin.h"
#include "tools/measuring/Plot.h"
#include "tools/measuring/Response.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <sstream>

namespace tool {

namespace {

constexpr double kLeastRange = 3.0;     // dB, up and down
constexpr double kDeepest = -100.0;     // dB; what is below is silence, and sets no range
constexpr std::size_t kLabelSize = 26;  // characters of a name beside its curve

struct ResponseOptions {
    std::string plugin;
    PresetChoice choice;
    std::vector<std::string> settings;
    std::vector<std::string> curves;
    std::string output;
    std::string view = "auto";
    std::string title;
    double range = 0.0;  // dB; 0: chosen by the curves
    ResponsePlan plan;
};

struct Curve {
    std::string name;
    std::vector<Assignment> settings;
    std::vector<ResponsePoint> points;
};

// "Name: TITLE=VALUE TITLE=VALUE ..."; without a colon the settings are the name.
Curve parseCurve(const std::string& text, ParameterText& parameters)
{
    const std::size_t colon = text.find(':');
    Curve curve;
    curve.name = trimmed(text.substr(0, colon));
    std::istringstream words(colon == std::string::npos ? text : text.substr(colon + 1));
    std::string word;
    while (words >> word)
        append(curve.settings, parameters.parse(word));
    return curve;
}

std::vector<Curve> wantedCurves(const ResponseOptions& options, ParameterText& parameters)
{
    Displays displays(options.plugin);
    const auto preset = startingPreset(options.choice, parameters.fields(), displays);
    std::vector<Assignment> common = assignmentsOf(preset);
    append(common, parseSettings(options.settings, parameters));
    std::vector<Curve> curves;
    for (const std::string& text : options.curves)
        curves.push_back(parseCurve(text, parameters));
    if (curves.empty()) {
        std::string name = options.choice.made() ? printable(nameOf(*preset)) : "";
        for (const std::string& setting : options.settings)
            name += (name.empty() ? "" : " ") + setting;
        curves.push_back({name.empty() ? "as it starts" : name, {}, {}});
    }
    for (Curve& curve : curves)
        curve.settings.insert(curve.settings.begin(), common.begin(), common.end());
    return curves;
}

// Mid and side if any curve is processed in Mid/Side, unless --view decides.
bool showsMidSide(const std::string& view, const std::vector<Curve>& curves,
                  ParameterText& parameters)
{
    if (view != "auto")
        return view == "ms";
    for (int index = 0; index < parameters.count(); ++index) {
        if (parameters.title(index) != "MS")
            continue;
        for (const Curve& curve : curves) {
            float value = parameters.initialValue(index);
            for (const Assignment& assignment : curve.settings)
                if (assignment.index == index)
                    value = assignment.value;
            if (value >= 0.5f)
                return true;
        }
    }
    return false;
}

bool channelsAgree(const Curve& curve)
{
    return std::all_of(curve.points.begin(), curve.points.end(), [](const ResponsePoint& point) {
        return std::fabs(point.db[0] - point.db[1]) < 0.01
            && std::fabs(point.degrees[0] - point.degrees[1]) < 0.1;
    });
}

std::string asCsv(const std::vector<Curve>& curves, bool midSide)
{
    const char* channels[]{midSide ? "mid" : "left", midSide ? "side" : "right"};
    std::string text = "hz";
    for (const Curve& curve : curves) {
        std::string name = curve.name;
        std::replace(name.begin(), name.end(), '"', '\'');
        for (const char* channel : channels)
            for (const char* unit : {"dB", "degrees"})
                text += ",\"" + name + ", " + channel + ", " + unit + "\"";
    }
    text += "\n";
    char number[64];
    for (std::size_t i = 0; i < curves.front().points.size(); ++i) {
        std::snprintf(number, sizeof(number), "%.6f", curves.front().points[i].hz);
        text += number;
        for (const Curve& curve : curves) {
            for (std::size_t channel = 0; channel < 2; ++channel) {
                std::snprintf(number, sizeof(number), ",%.5f,%.4f", curve.points[i].db[channel],
                              curve.points[i].degrees[channel]);
                text += number;
            }
        }
        text += "\n";
    }
    return text;
}

// A line of the plot: a curve, or one of its channels if they differ.
struct Line {
    std::string name;
    const Curve* curve;
    std::size_t channel;
    int colour;
    int style;
};

std::vector<Line> linesOf(const std::vector<Curve>& curves, bool midSide)
{
    std::vector<Line> lines;
    int colour = 0;
    for (const Curve& curve : curves) {
        colour = colour % kCurveColours + 1;
        if (channelsAgree(curve)) {
            lines.push_back({curve.name, &curve, 0, colour, colour});
            continue;
        }
        // The second channel of a single curve gets another colour.
        const int second = curves.size() == 1 ? colour + 1 : colour;
        lines.push_back(
            {curve.name + (midSide ? ", mid" : ", left"), &curve, 0, colour, kBelow + colour});
        lines.push_back(
            {curve.name + (midSide ? ", side" : ", right"), &curve, 1, second, kAbove + second});
    }
    return lines;
}

struct Axis {
    double lowest, highest, tick;  // dB
};

double tickFor(double range, double ticks)
{
    for (const double tick : {0.1, 0.2, 0.5, 1.0, 2.0, 3.0, 6.0, 12.0})
        if (range <= ticks * tick)
            return tick;
    return 24.0;
}

// All of every curve, at whole ticks.
Axis axisFor(const std::vector<Line>& lines)
{
    double highest = kLeastRange;
    double lowest = -kLeastRange;
    for (const Line& line : lines) {
        for (const ResponsePoint& point : line.curve->points) {
            const double db = point.db[line.channel];
            highest = std::max(highest, 1.05 * db);
            lowest = std::min(lowest, 1.05 * std::max(db, kDeepest / 1.05));
        }
    }
    const double tick = tickFor(highest - lowest, 12.0);
    return {tick * std::floor(lowest / tick), tick * std::ceil(highest / tick), tick};
}

// The line's name for the place beside its end; the legend has it in full.
std::string shortName(const Line& line)
{
    const std::string& name = line.curve->name;
    const std::string channel = line.name.substr(name.size());
    const std::size_t kept = kLabelSize - channel.size();
    std::string text;
    std::size_t characters = 0;
    for (const char c : name) {
        // Bytes after the first of a character in UTF-8 are 10xxxxxx.
        characters += (static_cast<unsigned char>(c) & 0xC0u) == 0x80u ? 0 : 1;
        if (characters == kept)
            return text + "\u2026" + channel;
        text += c;
    }
    return line.name;
}

std::string plotCommand(const std::vector<Line>& lines, bool phase)
{
    std::string below, above;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string& command = lines[i].style == kBelow + lines[i].colour ? below : above;
        command += ", $data" + std::to_string(i) + " using 1:" + (phase ? "3" : "2")
            + " with lines ls " + std::to_string(lines[i].style) + " notitle";
    }
    // The legend, in the order of the curves.
    for (const Line& line : phase ? lines : std::vector<Line>())
        above +=
            ", NaN with lines ls " + std::to_string(line.style) + " title " + plotQuoted(line.name);
    return "plot " + (below + above).substr(2) + "\n";
}

std::string asPlot(const std::vector<Curve>& curves, const ResponseOptions& options,
                   PictureKind kind, bool midSide)
{
    const std::vector<Line> lines = linesOf(curves, midSide);
    std::size_t longest = 1;
    std::vector<EndLabel> labels;
    for (const Line& line : lines) {
        longest = std::max(longest, line.name.size());
        labels.push_back(
            {shortName(line), line.colour, line.curve->points.back().db[line.channel]});
    }
    const std::size_t columns = std::clamp<std::size_t>(80 / (longest + 8), 1, 4);
    const std::size_t rows = (lines.size() + columns - 1) / columns;
    const int height = 830 + 24 * static_cast<int>(rows);  // pixels

    std::string script = plotHead(kind, 1200, height);
    char text[200];
    for (std::size_t i = 0; i < lines.size(); ++i) {
        script += "$data" + std::to_string(i) + " << END_OF_DATA\n";
        for (const ResponsePoint& point : lines[i].curve->points) {
            std::snprintf(text, sizeof(text), "%.6f %.5f %.4f\n", point.hz,
                          point.db[lines[i].channel], point.degrees[lines[i].channel]);
            script += text;
        }
        script += "END_OF_DATA\n";
    }
    const std::vector<ResponsePoint>& points = curves.front().points;
    script += frequencyAxis(points.front().hz, points.back().hz);

    const Axis axis = options.range > 0.0
        ? Axis{-options.range, options.range, tickFor(options.range, 8.0)}
        : axisFor(lines);
    std::snprintf(text, sizeof(text), " (%g Hz, sine at %g dBFS)", options.plan.rate,
                  options.plan.level);
    const std::string title =
        (options.title.empty() ? std::string("Measured response") : options.title) + text;
    // Two panels of the same width, and below them the legend.
    const auto panel = [&](int top, int bottom) {
        std::snprintf(
            text, sizeof(text), "set tmargin at screen %.5f\nset bmargin at screen %.5f\n",
            1.0 - static_cast<double>(top) / height, 1.0 - static_cast<double>(bottom) / height);
        return std::string(text);
    };
    script += "set lmargin 10\nset rmargin " + std::to_string(std::min(longest, kLabelSize) + 3)
        + "\nset multiplot\n" + panel(56, 461) + "unset key\nset title " + plotQuoted(title)
        + "\nset ylabel 'Magnitude, dB'\n";
    std::snprintf(text, sizeof(text),
                  "set yrange [%g:%g]\nset ytics %g\nset ytics add ('0' 0)\n"
                  "set format y '%%+g'\n",
                  axis.lowest, axis.highest, axis.tick);
    script += text + endLabels(labels, axis.lowest, axis.highest, 24) + plotCommand(lines, false);
    script += "unset label\nunset title\n" + panel(517, 757)
        + "set key at screen 0.5,0.01 center bottom horizontal Left reverse samplen 3 maxcols "
        + std::to_string(columns)
        + "\nset xlabel 'Frequency, Hz'\nset ylabel 'Phase, degrees'\n"
          "set yrange [*:*]\nset ytics autofreq\nset format y '%g'\n";
    return script + plotCommand(lines, true) + "unset multiplot\n";
}

int runResponse(ResponseOptions& options)
{
    ResponsePlan& plan = options.plan;
    if (plan.toHz == 0.0)
        plan.toHz = 0.45 * plan.rate;
    if (plan.toHz > 0.499 * plan.rate)
        throw ToolError("--to lies above half the rate");
    if (plan.fromHz >= plan.toHz)
        throw ToolError("--from must lie below --to");
    const PictureKind kind =
        options.output.empty() ? PictureKind::Csv : pictureKindOf(options.output);

    ParameterText parameters = openParameterText(options.plugin);
    std::vector<Curve> curves = wantedCurves(options, parameters);
    plan.midSide = showsMidSide(options.view, curves, parameters);
    std::optional<OutputFile> file;
    if (!options.output.empty())
        file.emplace(options.output);
    {
        Progress progress("measuring");
        double done = 0.0;
        for (Curve& curve : curves) {
            const std::unique_ptr<host::Plugin> plugin = host::openPlugin(options.plugin);
            curve.points = measureResponse(*plugin, curve.settings, plan, [&](double fraction) {
                progress.show((done + fraction) / static_cast<double>(curves.size()));
            });
            done += 1.0;
        }
    }
    const std::string result = kind == PictureKind::Csv
        ? asCsv(curves, plan.midSide)
        : drawPlot(asPlot(curves, options, kind, plan.midSide));
    if (!file) {
        std::fputs(result.c_str(), stdout);
        return 0;
    }
    file->write(result.data(), static_cast<std::int64_t>(result.size()));
    file->commit();
    return 0;
}

}  // namespace

void addResponseCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<ResponseOptions>();
    CLI::App& command =
        *app.add_subcommand("response", "Measure the frequency response and draw it");
    addPluginOption(command, options->plugin);
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    command
        .add_option(
            "--curve", options->curves,
            "\"NAME: TITLE=VALUE TITLE=VALUE ...\": a curve with settings of its own on top "
            "of the preset and of --set; may be repeated")
        ->allow_extra_args(false)
        ->type_name("TEXT");
    command
        .add_option("-o,--output", options->output,
                    "A picture (.svg, .png) or a table (.csv). Default: the table on the screen")
        ->type_name("FILE");
    command
        .add_option("--level", options->plan.level,
                    "Peak of the sine in dBFS, which matters since the chain is not linear")
        ->capture_default_str()
        ->check(numberRange(-120.0, 20.0));
    command.add_option("--rate", options->plan.rate, "Sample rate in Hz")
        ->capture_default_str()
        ->check(numberRange(8000.0, 400000.0));
    command.add_option("--from", options->plan.fromHz, "Lowest frequency in Hz")
        ->capture_default_str()
        ->check(numberRange(1.0, 100000.0));
    command
        .add_option("--to", options->plan.toHz,
                    "Highest frequency in Hz. Default: 90 % of half the rate")
        ->check(numberRange(1.0, 200000.0));
    command.add_option("--points", options->plan.points, "Frequencies to measure")
        ->capture_default_str()
        ->check(CLI::Range(2, 10000));
    command
        .add_option("--view", options->view,
                    "lr: left and right; ms: mid and side; auto: ms where MS=MidSide")
        ->capture_default_str()
        ->check(CLI::IsMember({"auto", "lr", "ms"}));
    command.add_option("--range", options->range, "Height of the picture in dB, up and down")
        ->check(numberRange(0.1, 200.0));
    command.add_option("--title", options->title, "The picture's title");
    command.callback([options, &action] { action = [options] { return runResponse(*options); }; });
}

}  // namespace tool
