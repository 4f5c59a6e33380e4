// The report of `render` as a JSON or CSV file.
#pragma once

#include "tools/audio/Album.h"

#include <string>
#include <vector>

namespace tool {

// Throws ToolError unless the name ends in .json or .csv.
void checkReportName(const std::string& path);
void writeReport(const std::string& path, const std::vector<RenderJob>& jobs,
                 const std::vector<RenderOutcome>& outcomes);

}  // namespace tool
