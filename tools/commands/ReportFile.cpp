#include "tools/commands/ReportFile.h"

#include "tools/commands/RenderText.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <nlohmann/json.hpp>

#include <strings.h>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;
using State = RenderOutcome::State;

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
    tree["state"] = nameOf(outcome.state);
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
    tree["dither"] = nameOf(report.format.dither);
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
    return strcasecmp(std::filesystem::path(path).extension().c_str(), ending) == 0;
}

}  // namespace

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
