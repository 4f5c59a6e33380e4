#include "tools/audio/Album.h"

#include "tools/common/ToolError.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

#include <sys/stat.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

// Device and number, which links to one file share.
using FileIdentity = std::pair<dev_t, ino_t>;

std::optional<FileIdentity> identityOf(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

fs::path outputPath(const fs::path& input, const fs::path& folder, const std::string& suffix,
                    std::optional<FileFormat> format)
{
    const std::string ending = format  ? endingOf(*format)
        : fileFormatOf(input.string()) ? input.extension().string()
                                       : endingOf(FileFormat::Wav);
    return folder / (input.stem().string() + suffix + ending);
}

RenderOutcome outcomeOf(const RenderJob& job, bool skipExisting, std::mutex& opening,
                        const AlbumCalls& calls, const ShowProgress& progress)
{
    RenderOutcome outcome;
    std::error_code error;
    if (skipExisting && fs::exists(job.output, error)) {
        outcome.state = RenderOutcome::State::Skipped;
        return outcome;
    }
    std::unique_ptr<host::Plugin> plugin;
    try {
        {
            const std::lock_guard<std::mutex> guard(opening);
            plugin = calls.openPlugin();
        }
        outcome.report = render(*plugin, job, progress);
        outcome.state = RenderOutcome::State::Rendered;
    } catch (const std::exception& failure) {
        outcome.error = failure.what();
    }
    const std::lock_guard<std::mutex> guard(opening);
    plugin.reset();
    return outcome;
}

}  // namespace

void makeAlbumFolder(const std::string& folder)
{
    std::error_code error;
    if (fs::is_directory(folder, error))
        return;
    if (fs::exists(folder, error) || fileFormatOf(folder) || !fs::create_directory(folder, error))
        throw ToolError("-o names the folder of the results; '" + folder
                        + "' is none and cannot be made one");
}

std::vector<RenderJob> albumJobs(const RenderJob& common, const std::vector<std::string>& inputs,
                                 const std::string& folder, const std::string& suffix)
{
    std::vector<RenderJob> jobs;
    std::map<std::string, std::string> sources;  // of each output
    for (const std::string& input : inputs) {
        if (input == "-")
            throw ToolError("the standard input has no name for a result in '" + folder + "'");
        RenderJob job = common;
        job.input = input;
        job.output = outputPath(input, folder, suffix, common.file).string();
        const auto [source, isNew] = sources.emplace(job.output, input);
        if (!isNew)
            throw ToolError("'" + source->second + "' and '" + input + "' would both become '"
                            + job.output + "'");
        jobs.push_back(job);
    }
    std::set<FileIdentity> inputFiles;
    for (const std::string& input : inputs)
        if (const auto file = identityOf(input))
            inputFiles.insert(*file);
    std::map<FileIdentity, std::string> outputFiles;
    for (const RenderJob& job : jobs) {
        const auto file = identityOf(job.output);
        if (file && inputFiles.count(*file) > 0)
            throw ToolError("'" + job.output
                            + "' is one of the inputs: choose another folder or a --suffix");
        if (!file)
            continue;
        const auto [other, isNew] = outputFiles.emplace(*file, job.output);
        if (!isNew)
            throw ToolError("'" + other->second + "' and '" + job.output + "' are one file");
    }
    return jobs;
}

const char* nameOf(RenderOutcome::State state)
{
    switch (state) {
    case RenderOutcome::State::Rendered:
        return "rendered";
    case RenderOutcome::State::Skipped:
        return "skipped";
    case RenderOutcome::State::Failed:
        return "failed";
    }
    return "";
}

std::vector<RenderOutcome> renderAlbum(const std::vector<RenderJob>& jobs, int threads,
                                       bool skipExisting, const AlbumCalls& calls)
{
    std::vector<RenderOutcome> outcomes(jobs.size());
    std::atomic<std::size_t> next{0};
    std::mutex opening;
    const auto work = [&] {
        for (std::size_t index; (index = next++) < jobs.size();) {
            outcomes[index] = outcomeOf(jobs[index], skipExisting, opening, calls,
                                        [&](double fraction) { calls.progress(index, fraction); });
            calls.finished(index, outcomes[index]);
        }
    };
    std::vector<std::thread> workers;
    const auto count = std::min(static_cast<std::size_t>(std::max(threads, 1)), jobs.size());
    for (std::size_t i = 0; i < count; ++i)
        workers.emplace_back(work);
    for (std::thread& worker : workers)
        worker.join();
    return outcomes;
}

}  // namespace tool
