#include "tools/audio/Automation.h"

#include "tools/common/ToolError.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace tool {

namespace {

// Limit the memory, for instance for a file without line ends.
constexpr std::size_t kMaxLine = 4096;
constexpr std::size_t kMaxPoints = 10'000'000;

std::vector<std::string> fieldsOf(const std::string& line)
{
    const char* separator = " \t";
    for (const char* candidate : {",", ";", "\t"}) {
        if (line.find(candidate) != std::string::npos) {
            separator = candidate;
            break;
        }
    }
    const bool blanks = separator[0] == ' ';
    std::vector<std::string> fields;
    std::size_t start = 0;
    while (start <= line.size()) {
        const std::size_t end = std::min(line.find_first_of(separator, start), line.size());
        const std::string field = trimmed(line.substr(start, end - start));
        if (!blanks || !field.empty())
            fields.push_back(field);
        start = end + 1;
    }
    return fields;
}

// False at the end of the text.
bool nextLine(std::istream& text, std::string& line)
{
    line.clear();
    char c = 0;
    while (text.get(c) && c != '\n') {
        line.push_back(c);
        if (line.size() > kMaxLine)
            throw ToolError("the line is too long");
    }
    return !line.empty() || !text.fail();
}

std::vector<AutomationPoint> parseLine(const std::vector<std::string>& fields,
                                       ParameterText& parameters)
{
    if (fields.size() != 3)
        throw ToolError("expected time, title and value");
    double seconds = 0.0;
    if (!parseNumber(fields[0], seconds))
        throw ToolError("'" + fields[0] + "' is not a time in seconds");
    if (seconds < 0.0)
        throw ToolError("the time " + fields[0] + " lies before the start");
    std::vector<AutomationPoint> points;
    for (const int index : parameters.indicesOf(fields[1]))
        points.push_back({seconds, {index, parameters.valueOf(index, fields[2])}});
    return points;
}

}  // namespace

std::vector<AutomationPoint> parseAutomation(std::istream& text, const std::string& name,
                                             ParameterText& parameters)
{
    std::vector<AutomationPoint> points;
    std::string line;
    bool first = true;
    for (int number = 1;; ++number) {
        try {
            if (!nextLine(text, line))
                break;
            if (number == 1 && line.rfind("\xEF\xBB\xBF", 0) == 0)
                line.erase(0, 3);  // UTF-8 byte order mark
            line = trimmed(line.substr(0, line.find('#')));
            if (line.empty())
                continue;
            const std::vector<std::string> fields = fieldsOf(line);
            const bool heads = first && (fields[0] == "time" || fields[0] == "Time");
            first = false;
            if (heads)
                continue;
            if (points.size() >= kMaxPoints)
                throw ToolError("there are too many changes");
            for (const AutomationPoint& point : parseLine(fields, parameters))
                points.push_back(point);
        } catch (const ToolError& error) {
            throw ToolError(name + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    std::stable_sort(points.begin(), points.end(),
                     [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
    return points;
}

std::vector<AutomationPoint> readAutomation(const std::string& path, ParameterText& parameters)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw ToolError("no such file: '" + path + "'");
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, error))
        throw ToolError("cannot read '" + path + "'");
    return parseAutomation(file, path, parameters);
}

}  // namespace tool
