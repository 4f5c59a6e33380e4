// A list of parameter changes in time, read from a text file.
#pragma once

#include "tools/common/ParameterText.h"

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace tool {

struct AutomationPoint {
    double seconds;
    Assignment assignment;
};

// One change a line: time in seconds, title, value, with commas, semicolons, tabs or blanks
// between; values as --set takes them. Empty lines, what follows a #, and a first line of column
// heads that starts with "time" do not count. The result is in order of time; changes at one time
// keep their order. `name` is for messages. Throws ToolError naming the line.
std::vector<AutomationPoint> parseAutomation(std::istream& text, const std::string& name,
                                             ParameterText& parameters);
std::vector<AutomationPoint> readAutomation(const std::string& path, ParameterText& parameters);

}  // namespace tool
