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

constexpr double kAudibleFromHz = 20.0;
constexpr double kMaxCut = 18.0;  // dB, the deepest cut that sets the range without --range

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
    int style;
    bool dashed;
};

std::vector<Line> linesOf(const std::vector<Curve>& curves, bool midSide)
{
    std::vector<Line> lines;
    int style = 0;
    for (const Curve& curve : curves) {
        style = style % 8 + 1;
        if (channelsAgree(curve)) {
            lines.push_back({curve.name, &curve, 0, style, false});
            continue;
        }
        // The second channel of a single curve gets another colour; with several curves it is
        // dashed.
        const int second = curves.size() == 1 ? style + 1 : style;
        lines.push_back({curve.name + (midSide ? ", mid" : ", left"), &curve, 0, style, false});
        lines.push_back({curve.name + (midSide ? ", side" : ", right"), &curve, 1, second, true});
    }
    return lines;
}

// The range of the magnitude axis, plus and minus: enough for all boosts, and for cuts above 20 Hz
// down to -kMaxCut.
double decibelRange(const std::vector<Line>& lines)
{
    double highest = 0.0;
    double lowest = 0.0;
    for (const Line& line : lines) {
        for (const ResponsePoint& point : line.curve->points) {
            highest = std::max(highest, point.db[line.channel]);
            if (point.hz >= kAudibleFromHz)
                lowest = std::min(lowest, point.db[line.channel]);
        }
    }
    const double needed = std::max(1.05 * highest, std::min(-1.05 * lowest, kMaxCut));
    for (const double range : {3.0, 6.0, 10.0, 12.0, 18.0, 24.0, 36.0, 48.0})
        if (needed <= range)
            return range;
    return std::ceil(needed / 12.0) * 12.0;
}

double decibelTick(double range)
{
    for (const double tick : {0.1, 0.2, 0.5, 1.0, 2.0, 3.0, 6.0, 12.0})
        if (range <= 8.0 * tick)
            return tick;
    return 24.0;
}

std::string plotCommand(const std::vector<Line>& lines, bool phase)
{
    std::string command = "plot ";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        command += (i ? ", " : "") + std::string("$data") + std::to_string(i)
            + " using 1:" + (phase ? "3" : "2") + " with lines ls " + std::to_string(lines[i].style)
            + (lines[i].dashed ? " dt (12,6)" : "")
            + (phase ? " title " + plotQuoted(lines[i].name) : " notitle");
    }
    return command + "\n";
}

std::string asPlot(const std::vector<Curve>& curves, const ResponseOptions& options,
                   PictureKind kind, bool midSide)
{
    const std::vector<Line> lines = linesOf(curves, midSide);
    std::string script = plotHead(kind, 1200, 860);
    char text[160];
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

    const double range = options.range > 0.0 ? options.range : decibelRange(lines);
    const double tick = decibelTick(range);
    std::snprintf(text, sizeof(text), " (%g Hz, sine at %g dBFS)", options.plan.rate,
                  options.plan.level);
    const std::string title =
        (options.title.empty() ? std::string("Measured response") : options.title) + text;
    std::size_t longest = 1;
    for (const Line& line : lines)
        longest = std::max(longest, line.name.size());
    const std::size_t columns = std::clamp<std::size_t>(110 / (longest + 8), 1, 4);
    const std::size_t rows = (lines.size() + columns - 1) / columns;

    // The legend is below both panels, so that they have the full and the same width.
    script += "set lmargin 10\nset rmargin 4\nset multiplot\n"
              "set origin 0,0.42\nset size 1,0.58\nset tmargin 3\nset bmargin 2\nunset key\n"
              "set title "
        + plotQuoted(title) + "\nset ylabel 'Magnitude, dB'\n";
    std::snprintf(text, sizeof(text),
                  "set yrange [%g:%g]\nset ytics %g\nset ytics add ('0' 0)\n"
                  "set format y '%%+g'\n",
                  -range, range, tick);
    script += text + plotCommand(lines, false);
    std::snprintf(text, sizeof(text),
                  "set key at screen 0.5,0.01 center bottom horizontal Left reverse samplen 3 "
                  "maxcols %zu\nset bmargin %g\n",
                  columns, 4.0 + 1.25 * static_cast<double>(rows));
    script += "unset title\nset origin 0,0\nset size 1,0.42\nset tmargin 1\n";
    script += text;
    script += "set xlabel 'Frequency, Hz'\nset ylabel 'Phase, degrees'\n"
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
        ->check(numberRange(8000.0, 768000.0));
    command.add_option("--from", options->plan.fromHz, "Lowest frequency in Hz")
        ->capture_default_str()
        ->check(numberRange(1.0, 100000.0));
    command
        .add_option("--to", options->plan.toHz,
                    "Highest frequency in Hz. Default: 90 % of half the rate")
        ->check(numberRange(1.0, 384000.0));
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
