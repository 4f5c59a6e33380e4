// Automation files: lists of parameter changes in time.
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

// One change per line: time in seconds, title and value, separated by commas, semicolons, tabs or
// spaces, with values as for --set. Ignored are empty lines, text after a #, and a first line that
// starts with "time" (column headings). The result is sorted by time; changes at the same time keep
// their order. `name` is used in messages. Throws ToolError with the line's number.
std::vector<AutomationPoint> parseAutomation(std::istream& text, const std::string& name,
                                             ParameterText& parameters);
std::vector<AutomationPoint> readAutomation(const std::string& path, ParameterText& parameters);

}  // namespace tool
