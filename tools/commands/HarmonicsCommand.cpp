// zkrt46 harmonics: the harmonics that the transformers and the amplifier add to a sine.
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/OutputFile.h"
#include "tools/common/Progress.h"
#include "tools/common/ToolError.h"
#include "tools/host/OpenPlugin.h"
#include "tools/measuring/Harmonics.h"
#include "tools/measuring/Plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

namespace tool {

namespace {

constexpr std::size_t kMaxLevels = 1000;
constexpr double kMinLevel = -120.0;  // dBFS
constexpr double kMaxLevel = 20.0;    // dBFS
constexpr double kDecade = 20.0;      // dB

struct HarmonicsOptions {
    std::string plugin;
    PresetChoice choice;
    std::vector<std::string> settings;
    std::string output;
    std::string sweep;
    double level = -6.0;  // dBFS
    HarmonicsPlan plan;
};

// "FROM:TO:STEP" in dBFS, both ends included.
std::vector<double> parseSweep(const std::string& text)
{
    const std::size_t first = text.find(':');
    const std::size_t second = first == std::string::npos ? first : text.find(':', first + 1);
    double from = 0.0, to = 0.0, step = 0.0;
    if (second == std::string::npos || !parseNumber(text.substr(0, first), from)
        || !parseNumber(text.substr(first + 1, second - first - 1), to)
        || !parseNumber(text.substr(second + 1), step) || step <= 0.0)
        throw ToolError("--sweep is FROM:TO:STEP in dB, such as -40:0:2, not '" + text + "'");
    if (from > to)
        std::swap(from, to);
    if (from < kMinLevel || to > kMaxLevel)
        throw ToolError("--sweep goes from -120 to 20 dBFS at most");
    // The small addend keeps rounding from losing the last step.
    const double steps = std::floor((to - from) / step + 1e-9);
    if (steps >= static_cast<double>(kMaxLevels))
        throw ToolError("--sweep has more than " + std::to_string(kMaxLevels) + " levels");
    std::vector<double> levels;
    for (double k = 0.0; k <= steps; k += 1.0)
        levels.push_back(from + k * step);
    return levels;
}

bool channelsAgree(const std::vector<HarmonicsPoint>& points)
{
    return std::all_of(points.begin(), points.end(), [](const HarmonicsPoint& point) {
        const ChannelHarmonics& left = point.channels[0];
        const ChannelHarmonics& right = point.channels[1];
        if (std::fabs(left.fundamentalDb - right.fundamentalDb) > 0.01)
            return false;
        for (std::size_t i = 0; i < left.db.size(); ++i)
            // Weaker harmonics differ by the rounding of the samples.
            if (std::fabs(left.db[i] - right.db[i]) > 0.1 && left.db[i] > -130.0)
                return false;
        return true;
    });
}

std::vector<std::pair<std::size_t, const char*>>
shownChannels(const std::vector<HarmonicsPoint>& points)
{
    if (channelsAgree(points))
        return {{0, "both channels"}};
    return {{0, "left"}, {1, "right"}};
}

std::string asTable(const std::vector<HarmonicsPoint>& points)
{
    char text[160];
    std::string table;
    for (const auto& [channel, name] : shownChannels(points)) {
        std::snprintf(text, sizeof(text),
                      "Harmonics of %.2f Hz, %s: dB relative to the fundamental\n",
                      points.front().hz, name);
        table += text;
        table += "In, dBFS  Out, dBFS";
        for (int harmonic = 2; harmonic <= kMaxHarmonic; ++harmonic) {
            std::snprintf(text, sizeof(text), "  %7s", ("H" + std::to_string(harmonic)).c_str());
            table += text;
        }
        table += "    THD, %\n";
        for (const HarmonicsPoint& point : points) {
            const ChannelHarmonics& result = point.channels[channel];
            std::snprintf(text, sizeof(text), "%8.2f  %9.2f", point.level, result.fundamentalDb);
            table += text;
            for (std::size_t i = 0; i < result.db.size(); ++i) {
                std::snprintf(text, sizeof(text), "  %7.1f", result.db[i]);
                table += result.belowHalfRate[i] ? text : "        -";
            }
            std::snprintf(text, sizeof(text), "  %8.4f\n", 100.0 * result.thd);
            table += text;
        }
    }
    return table;
}

std::string asCsv(const std::vector<HarmonicsPoint>& points)
{
    std::string csv = "level_dbfs,hz,channel,fundamental_dbfs";
    for (int harmonic = 2; harmonic <= kMaxHarmonic; ++harmonic)
        csv += ",h" + std::to_string(harmonic) + "_db";
    csv += ",thd_percent\n";
    char text[160];
    for (const HarmonicsPoint& point : points) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const ChannelHarmonics& result = point.channels[channel];
            std::snprintf(text, sizeof(text), "%.4f,%.6f,%s,%.4f", point.level, point.hz,
                          channel == 0 ? "left" : "right", result.fundamentalDb);
            csv += text;
            for (std::size_t i = 0; i < result.db.size(); ++i) {
                std::snprintf(text, sizeof(text), ",%.4f", result.db[i]);
                csv += result.belowHalfRate[i] ? text : ",";
            }
            std::snprintf(text, sizeof(text), ",%.6f\n", 100.0 * result.thd);
            csv += text;
        }
    }
    return csv;
}

struct Axis {
    double lowest, highest;  // dB
};

// From 0 to -100 dB, or as far as the harmonics go.
Axis axisFor(const std::vector<HarmonicsPoint>& points)
{
    Axis axis{-100.0, 0.0};
    for (const HarmonicsPoint& point : points) {
        for (const ChannelHarmonics& result : point.channels) {
            for (std::size_t i = 0; i < result.db.size(); ++i) {
                if (!result.belowHalfRate[i])
                    continue;
                axis.lowest = std::min(axis.lowest, kDecade * std::floor(result.db[i] / kDecade));
                axis.highest = std::max(axis.highest, kDecade * std::ceil(result.db[i] / kDecade));
            }
        }
    }
    return axis;
}

// For one level: a bar for each harmonic, the channels side by side if they differ.
std::string barPlot(const std::vector<HarmonicsPoint>& points, PictureKind kind)
{
    const HarmonicsPoint& point = points.front();
    const auto channels = shownChannels(points);
    char text[200];
    std::string script = plotHead(kind, channels.size() == 1 ? 1000 : 1300, 600);
    for (const auto& [channel, name] : channels) {
        script += "$data" + std::to_string(channel) + " << END_OF_DATA\n";
        const double width = 0.7 / static_cast<double>(channels.size());
        for (std::size_t i = 0; i < point.channels[channel].db.size(); ++i) {
            if (!point.channels[channel].belowHalfRate[i])
                continue;
            const double middle = static_cast<double>(i) + 2.0
                + (static_cast<double>(channel) - 0.5 * static_cast<double>(channels.size() - 1))
                    * width;
            std::snprintf(text, sizeof(text), "%g %.1f\n", middle, point.channels[channel].db[i]);
            script += text;
        }
        script += "END_OF_DATA\n";
    }
    std::snprintf(text, sizeof(text), "Harmonics of %.2f Hz at %g dBFS", point.hz, point.level);
    std::string title = text;
    for (const auto& [channel, name] : channels) {
        std::snprintf(text, sizeof(text), ", THD %.4f %%", 100.0 * point.channels[channel].thd);
        title += text + (channels.size() == 1 ? std::string() : std::string(" ") + name);
    }
    script += "set title " + plotQuoted(title) + "\n";
    const Axis axis = axisFor(points);
    std::snprintf(text, sizeof(text), "set yrange [%g:%g]\n", axis.lowest, axis.highest);
    script += "set xlabel 'Harmonic'\nset ylabel 'dB relative to the fundamental'\n"
              "set xrange [1.4:10.6]\nset xtics 2,1,10\nset ytics 20\n"
              "set grid ytics ls 100\nset style fill solid 0.85 noborder\n";
    script += text + std::string(channels.size() == 1 ? "unset key\n" : "");
    // Bars begin at the lower edge and have their value as a label.
    const double halfWidth = 0.33 / static_cast<double>(channels.size());
    std::string command = "plot ";
    for (const auto& [channel, name] : channels) {
        const std::string data = "$data" + std::to_string(channel);
        command += channel ? ", " : "";
        std::snprintf(text, sizeof(text),
                      "%s using 1:2:($1-%g):($1+%g):(%g):2 with boxxyerror ls %zu title ",
                      data.c_str(), halfWidth, halfWidth, axis.lowest, channel + 1);
        command += text + plotQuoted(name) + ", " + data
            + " using 1:2:(sprintf('%.0f', column(2))) with labels offset 0,0.7 font ',11' "
              "notitle";
    }
    return script + command + "\n";
}

// For several levels: a line for each harmonic, in one panel per channel if the channels differ.
std::string sweepPlot(const std::vector<HarmonicsPoint>& points, PictureKind kind)
{
    const auto channels = shownChannels(points);
    char text[200];
    std::string script = plotHead(kind, channels.size() == 1 ? 1000 : 1600, 640);
    for (const auto& [channel, name] : channels) {
        script += "$data" + std::to_string(channel) + " << END_OF_DATA\n";
        for (const HarmonicsPoint& point : points) {
            std::snprintf(text, sizeof(text), "%g", point.level);
            script += text;
            const ChannelHarmonics& result = point.channels[channel];
            for (std::size_t i = 0; i < result.db.size(); ++i) {
                std::snprintf(text, sizeof(text), " %.3f", result.db[i]);
                script += result.belowHalfRate[i] ? text : " NaN";
            }
            script += "\n";
        }
        script += "END_OF_DATA\n";
    }
    std::snprintf(text, sizeof(text), "set multiplot layout 1,%zu\n", channels.size());
    script += text;
    script += "set xlabel 'Level of the tone, dBFS'\nset ylabel 'dB relative to the fundamental'\n"
              "set ytics 20\nset grid xtics ytics ls 100\nset datafile missing NaN\n"
              "unset key\nset rmargin 6\n";
    const Axis axis = axisFor(points);
    std::snprintf(text, sizeof(text), "set yrange [%g:%g]\n", axis.lowest, axis.highest);
    script += text;
    std::snprintf(text, sizeof(text), "set xrange [%g:%g]\n", points.front().level,
                  points.back().level);
    script += text;
    for (const auto& [channel, name] : channels) {
        std::snprintf(text, sizeof(text), "Harmonics of %.2f Hz, %s", points.front().hz, name);
        script += "set title " + plotQuoted(text) + "\n";
        std::vector<EndLabel> labels;
        std::string curves;
        const ChannelHarmonics& last = points.back().channels[channel];
        for (int harmonic = 2; harmonic <= kMaxHarmonic; ++harmonic) {
            const auto place = static_cast<std::size_t>(harmonic - 2);
            if (!last.belowHalfRate[place])
                continue;
            const int style = static_cast<int>(place) + 1;
            labels.push_back({"H" + std::to_string(harmonic), style, last.db[place]});
            std::snprintf(text, sizeof(text),
                          "%s$data%zu using 1:%d with linespoints ls %d pt 7 ps 0.4",
                          curves.empty() ? "" : ", ", channel, harmonic, style);
            curves += text;
        }
        script += endLabels(labels, axis.lowest, axis.highest, 28) + "plot " + curves + "\n";
    }
    return script + "unset multiplot\n";
}

std::string drawn(const std::vector<HarmonicsPoint>& points, PictureKind kind)
{
    if (kind == PictureKind::Csv)
        return asCsv(points);
    return drawPlot(points.size() == 1 ? barPlot(points, kind) : sweepPlot(points, kind));
}

int runHarmonics(HarmonicsOptions& options)
{
    HarmonicsPlan& plan = options.plan;
    plan.levels =
        options.sweep.empty() ? std::vector<double>{options.level} : parseSweep(options.sweep);
    if (2.0 * plan.hz >= 0.5 * plan.rate)
        throw ToolError("no harmonic of the tone lies below half the rate");
    const PictureKind kind =
        options.output.empty() ? PictureKind::Csv : pictureKindOf(options.output);

    ParameterText parameters = openParameterText(options.plugin);
    Displays displays(options.plugin);
    std::vector<Assignment> settings =
        assignmentsOf(startingPreset(options.choice, parameters.fields(), displays));
    append(settings, parseSettings(options.settings, parameters));
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(options.plugin);
    std::optional<OutputFile> file;
    if (!options.output.empty())
        file.emplace(options.output);
    const std::vector<HarmonicsPoint> points = [&] {
        Progress progress("measuring");
        return measureHarmonics(*plugin, settings, plan,
                                [&](double fraction) { progress.show(fraction); });
    }();
    if (!file) {
        std::fputs(asTable(points).c_str(), stdout);
        return 0;
    }
    const std::string result = drawn(points, kind);
    file->write(result.data(), static_cast<std::int64_t>(result.size()));
    file->commit();
    return 0;
}

}  // namespace

void addHarmonicsCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<HarmonicsOptions>();
    CLI::App& command =
        *app.add_subcommand("harmonics", "Measure the harmonics added to a pure tone");
    addPluginOption(command, options->plugin);
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    command.add_option("--freq", options->plan.hz, "The tone in Hz")
        ->capture_default_str()
        ->check(numberRange(5.0, 100000.0));
    CLI::Option* level = command.add_option("--level", options->level, "Its peak in dBFS")
                             ->capture_default_str()
                             ->check(numberRange(kMinLevel, kMaxLevel));
    command.add_option("--sweep", options->sweep, "Several levels in dBFS, such as -40:0:2")
        ->type_name("FROM:TO:STEP")
        ->excludes(level);
    command.add_option("--rate", options->plan.rate, "Sample rate in Hz")
        ->capture_default_str()
        ->check(numberRange(8000.0, 400000.0));
    command
        .add_option("-o,--output", options->output,
                    "A picture (.svg, .png) or a table (.csv). Default: a table on the screen")
        ->type_name("FILE");
    command.callback([options, &action] { action = [options] { return runHarmonics(*options); }; });
}

}  // namespace tool
