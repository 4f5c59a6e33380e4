#include "tools/commands/RenderReports.h"

#include "tools/common/ToolError.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;
using State = RenderOutcome::State;

double decibels(double linear)
{
    return 20.0 * std::log10(linear);
}

std::string number(double value)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.2f", value);
    return text;
}

const char* channelWord(int channels)
{
    return channels == 1 ? "mono" : "stereo";
}

const char* ditherName(Dither dither)
{
    switch (dither) {
    case Dither::None:
        return "none";
    case Dither::Triangular:
        return "tpdf";
    case Dither::Shaped:
        return "shaped";
    }
    return "";
}

std::string sampleText(const AudioFormat& format)
{
    if (format.samples == SampleFormat::Float32)
        return "32-bit float";
    return std::to_string(bitsOf(format.samples)) + " bits, "
        + (format.dither == Dither::None ? "no" : ditherName(format.dither)) + " dither";
}

void printLevels(std::FILE* stream, const char* label, const Levels& levels)
{
    if (const auto& loudness = levels.loudness)
        std::fprintf(stream, "  %-6s %7s LUFS %6s LU %7s LUFS %7s dBTP", label,
                     number(loudness->integrated).c_str(), number(loudness->range).c_str(),
                     number(loudness->shortTermMaximum).c_str(),
                     number(decibels(loudness->truePeak)).c_str());
    else
        std::fprintf(stream, "  %-6s", label);
    std::fprintf(stream, " %7s dBFS %7s dBFS\n", number(decibels(levels.peak)).c_str(),
                 number(decibels(levels.rms)).c_str());
}

const char* stateName(State state)
{
    switch (state) {
    case State::Rendered:
        return "rendered";
    case State::Skipped:
        return "skipped";
    case State::Failed:
        return "failed";
    }
    return "";
}

// JSON has no infinity: the loudness and peak of silence are null.
Json finite(double value)
{
    return std::isfinite(value) ? Json(std::round(value * 1e4) / 1e4) : Json();
}

Json levelsTree(const Levels& levels)
{
    Json tree;
    if (levels.loudness) {
        tree["integrated_lufs"] = finite(levels.loudness->integrated);
        tree["range_lu"] = finite(levels.loudness->range);
        tree["short_term_max_lufs"] = finite(levels.loudness->shortTermMaximum);
        tree["true_peak_dbtp"] = finite(decibels(levels.loudness->truePeak));
    }
    tree["peak_dbfs"] = finite(decibels(levels.peak));
    tree["rms_dbfs"] = finite(decibels(levels.rms));
    return tree;
}

Json outcomeTree(const RenderJob& job, const RenderOutcome& outcome)
{
    Json tree;
    tree["input"] = job.input;
    tree["output"] = job.output;
    tree["state"] = stateName(outcome.state);
    if (outcome.state == State::Failed)
        tree["error"] = outcome.error;
    if (outcome.state != State::Rendered)
        return tree;
    const RenderReport& report = outcome.report;
    tree["rate_hz"] = report.format.rate;
    tree["channels"] = report.format.channels;
    tree["frames"] = report.outputFrames;
    tree["bits"] = bitsOf(report.format.samples);
    tree["float"] = report.format.samples == SampleFormat::Float32;
    tree["dither"] = ditherName(report.format.dither);
    tree["latency_samples"] = report.latency;
    tree["gain_db"] = report.gain ? finite(*report.gain) : Json();
    tree["before"] = levelsTree(report.before);
    tree["after"] = levelsTree(report.after);
    Json remarks = Json::array();
    for (const std::string& text : remarksOf(report))
        remarks.push_back(text);
    tree["remarks"] = remarks;
    tree["seconds"] = finite(report.elapsedSeconds);
    return tree;
}

std::string csvField(const Json& value)
{
    if (value.is_null())
        return "";
    if (value.is_array()) {
        std::string joined;
        for (const Json& item : value)
            joined += (joined.empty() ? "" : "; ") + item.get<std::string>();
        return csvField(joined);
    }
    if (!value.is_string())
        return value.dump();
    std::string quoted = "\"";
    for (const char c : value.get<std::string>())
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + "\"";
}

// One line for each file; the members of "before" and "after" become columns of their own.
std::string csvText(const Json& files)
{
    std::vector<std::string> columns;
    std::vector<std::vector<std::pair<std::string, Json>>> rows;
    for (const Json& file : files) {
        auto& row = rows.emplace_back();
        for (const auto& [key, value] : file.items()) {
            if (!value.is_object()) {
                row.emplace_back(key, value);
                continue;
            }
            for (const auto& [inner, level] : value.items())
                row.emplace_back(key + "_" + inner, level);
        }
        for (const auto& [key, value] : row)
            if (std::find(columns.begin(), columns.end(), key) == columns.end())
                columns.push_back(key);
    }
    std::string text;
    const auto addLine = [&](const auto& fieldOf) {
        for (const std::string& column : columns)
            text += (&column == &columns.front() ? "" : ",") + fieldOf(column);
        text += "\n";
    };
    addLine([](const std::string& column) { return column; });
    for (const auto& row : rows)
        addLine([&](const std::string& column) {
            const auto found = std::find_if(row.begin(), row.end(),
                                            [&](const auto& cell) { return cell.first == column; });
            return found == row.end() ? std::string() : csvField(found->second);
        });
    return text;
}

bool endsIn(const std::string& path, const char* ending)
{
    return std::filesystem::path(path).extension() == ending;
}

}  // namespace

std::vector<std::string> remarksOf(const RenderReport& report)
{
    std::vector<std::string> remarks = report.notes;
    remarks.insert(remarks.end(), report.warnings.begin(), report.warnings.end());
    if (!report.truncation.empty())
        remarks.push_back("the input is cut short: " + report.truncation);
    return remarks;
}

int sayRemarks(const RenderJob& job, const RenderReport& report)
{
    const auto say = [](const char* kind, const std::string& name, const std::string& text) {
        std::fprintf(stderr, "zkrt46: %s: '%s'%s\n", kind, name.c_str(), text.c_str());
    };
    for (const std::string& note : report.notes)
        say("note", job.output, ": " + note);
    for (const std::string& warning : report.warnings)
        say("warning", job.output, ": " + warning);
    if (report.truncation.empty())
        return 0;
    say("warning", job.input, " is cut short: " + report.truncation);
    return 1;
}

void printSummary(std::FILE* stream, const RenderJob& job, const RenderReport& report)
{
    const double seconds = static_cast<double>(report.inputFrames) / report.format.rate;
    std::fprintf(stream, "%s -> %s\n", job.input.c_str(), job.output.c_str());
    std::fprintf(stream, "  audio    %lld samples, %.2f s at %d Hz, %s to %s, %s\n",
                 static_cast<long long>(report.outputFrames), seconds, report.format.rate,
                 channelWord(report.inputChannels), channelWord(report.format.channels),
                 sampleText(report.format).c_str());
    std::fprintf(stream,
                 report.before.loudness
                     ? "           integrated     range   short-term    true peak         peak"
                       "          RMS\n"
                     : "                 peak          RMS\n");
    printLevels(stream, "before", report.before);
    printLevels(stream, "after", report.after);
    if (report.gain)
        std::fprintf(stream, "  gain     %+.2f dB\n", *report.gain);
    std::fprintf(stream, "  latency  %d samples, %s\n", report.latency,
                 job.keepLatency ? "left in" : "taken out");
    std::fprintf(stream, "  speed    %.0f times real time (%.2f s)\n",
                 report.elapsedSeconds > 0.0 ? seconds / report.elapsedSeconds : 0.0,
                 report.elapsedSeconds);
}

void printAlbum(std::FILE* stream, const std::vector<RenderJob>& jobs,
                const std::vector<RenderOutcome>& outcomes, double elapsedSeconds)
{
    const auto nameOf = [](const RenderJob& job) {
        return std::filesystem::path(job.input).filename().string();
    };
    int width = 4;
    for (const RenderJob& job : jobs)
        width = std::max(width, static_cast<int>(nameOf(job).size()));
    const bool leveled =
        std::any_of(outcomes.begin(), outcomes.end(),
                    [](const RenderOutcome& outcome) { return outcome.report.gain.has_value(); });
    std::fprintf(stream, "%-*s      before       after    true peak%s\n", width, "file",
                 leveled ? "       gain" : "");
    double seconds = 0.0;
    int counts[3]{};
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const RenderOutcome& outcome = outcomes[i];
        ++counts[static_cast<int>(outcome.state)];
        std::fprintf(stream, "%-*s ", width, nameOf(jobs[i]).c_str());
        if (outcome.state != State::Rendered) {
            std::fprintf(stream, " %s\n", stateName(outcome.state));
            continue;
        }
        const RenderReport& report = outcome.report;
        seconds += static_cast<double>(report.inputFrames) / report.format.rate;
        const auto before = report.before.loudness.value_or(Loudness{});
        const auto after = report.after.loudness.value_or(Loudness{});
        std::fprintf(stream, "%6s LUFS %6s LUFS %6s dBTP", number(before.integrated).c_str(),
                     number(after.integrated).c_str(), number(decibels(after.truePeak)).c_str());
        if (report.gain)
            std::fprintf(stream, " %+7.2f dB", *report.gain);
        std::fprintf(stream, "%s\n", remarksOf(report).empty() ? "" : "  see above");
    }
    std::fprintf(stream, "%zu files: %d rendered, %d skipped, %d failed; %.0f times real time\n",
                 jobs.size(), counts[static_cast<int>(State::Rendered)],
                 counts[static_cast<int>(State::Skipped)], counts[static_cast<int>(State::Failed)],
                 elapsedSeconds > 0.0 ? seconds / elapsedSeconds : 0.0);
}

void checkReportName(const std::string& path)
{
    if (!endsIn(path, ".json") && !endsIn(path, ".csv"))
        throw ToolError("the name of a report ends in .json or .csv, not as '" + path + "'");
}

void writeReport(const std::string& path, const std::vector<RenderJob>& jobs,
                 const std::vector<RenderOutcome>& outcomes)
{
    Json files = Json::array();
    for (std::size_t i = 0; i < jobs.size(); ++i)
        files.push_back(outcomeTree(jobs[i], outcomes[i]));
    writeFile(path,
              endsIn(path, ".csv")
                  ? csvText(files)
                  : files.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

}  // namespace tool
