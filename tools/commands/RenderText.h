// What `render` and `edit` print of a render.
#pragma once

#include "tools/audio/Album.h"

#include <cstdio>
#include <string>
#include <vector>

namespace tool {

// What a user should know about a result: clipped samples, metadata that is not kept and so on.
std::vector<std::string> remarksOf(const RenderReport& report);
// Prints them on standard error. Returns the program's exit code: 1 if the input ends before the
// length that it states, else 0.
int sayRemarks(const RenderJob& job, const RenderReport& report);

void printSummary(std::FILE* stream, const RenderJob& job, const RenderReport& report);
// A table of all files, and a line of totals.
void printAlbum(std::FILE* stream, const std::vector<RenderJob>& jobs,
                const std::vector<RenderOutcome>& outcomes, double elapsedSeconds);

}  // namespace tool
