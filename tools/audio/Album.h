// Renders several files into one folder, some at a time.
#pragma once

#include "tools/audio/Render.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tool {

// A job for each input: the output has the input's name with `suffix` before its ending, in
// `folder`. The ending is that of `common.file`, else the input's own, or .wav for what cannot be
// written. Throws ToolError if two outputs are one file, or an output is one of the inputs.
std::vector<RenderJob> albumJobs(const RenderJob& common, const std::vector<std::string>& inputs,
                                 const std::string& folder, const std::string& suffix);

// Throws ToolError unless it is a folder or can be created as one.
void makeAlbumFolder(const std::string& folder);

struct RenderOutcome {
    enum class State { Rendered, Skipped, Failed };
    State state = State::Failed;
    RenderReport report{};  // if rendered
    std::string error;      // if failed
};

const char* nameOf(RenderOutcome::State state);

struct AlbumCalls {
    // Called from one thread at a time. A new instance serves each file, so that nothing is left
    // from the one before.
    std::function<std::unique_ptr<host::Plugin>()> openPlugin;
    // Called from any thread.
    std::function<void(std::size_t job, double fraction)> progress;
    std::function<void(std::size_t job, const RenderOutcome& outcome)> finished;
};

// Renders up to `threads` files at a time. One that fails does not keep the others from being
// rendered. With `skipExisting`, jobs whose output exists are left out.
std::vector<RenderOutcome> renderAlbum(const std::vector<RenderJob>& jobs, int threads,
                                       bool skipExisting, const AlbumCalls& calls);

}  // namespace tool
