// zkrt46 render: renders audio files through the plug-in.
#include "tools/audio/SettingsCheck.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/commands/RenderText.h"
#include "tools/commands/ReportFile.h"
#include "tools/common/Progress.h"
#include "tools/common/ToolError.h"
#include "tools/host/OpenPlugin.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

#include <unistd.h>

namespace tool {

namespace {

constexpr int kFailed = 2;

struct RenderOptions {
    std::vector<std::string> files;
    std::string folder, suffix;
    int jobs = 0;  // 0: as many as the machine has cores
    bool skipExisting = false;
    RenderJob job;
    std::string plugin;
    PresetChoice choice;
    std::vector<std::string> settings;
    std::string automation;
    std::string bits, file, dither = "tpdf";
    std::string report;
    bool verbose = false;
};

// The start of `job.settings` is a preset; --set and --automate follow.
void readSettings(const RenderOptions& options, RenderJob& job)
{
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(options.plugin);
    Displays displays(options.plugin);
    job.settings = assignmentsOf(startingPreset(options.choice, plugin->fields(), displays));
    if (options.settings.empty() && options.automation.empty())
        return;
    ParameterText parameters = openParameterText(options.plugin);
    std::vector<std::vector<Assignment>> groups;
    for (const std::string& setting : options.settings)
        groups.push_back(parameters.parse(setting));
    if (!options.automation.empty())
        job.automation = readAutomation(options.automation, parameters);
    else if (takesPresets(plugin->fields()))
        for (const std::size_t idle : settingsWithoutEffect(*plugin, job.settings, groups))
            std::fprintf(stderr, "zkrt46: note: %s changes nothing with these settings\n",
                         options.settings[idle].c_str());
    for (const auto& group : groups)
        append(job.settings, group);
}

// Throws ToolError for a report that would replace a file which the render reads.
void checkReport(const RenderOptions& options)
{
    checkReportName(options.report);
    for (const std::string& read :
         {options.choice.bank, options.choice.presetFile, options.automation}) {
        std::error_code error;
        if (std::filesystem::equivalent(read, options.report, error))
            throw ToolError("the report would replace '" + read + "'; it needs another name");
    }
}

std::vector<RenderJob> jobsOf(const RenderOptions& options, const RenderJob& common)
{
    if (!options.folder.empty())
        return albumJobs(common, options.files, options.folder, options.suffix);
    if (options.files.size() != 2)
        throw ToolError(options.files.size() < 2
                            ? "OUT is required: the result's name, or -o with a folder"
                            : "for more than one file give -o with the folder of the results");
    RenderJob job = common;
    job.input = options.files[0];
    job.output = options.files[1];
    if (job.file && job.output != "-" && checkedFileFormat(job.output) != *job.file)
        throw ToolError("--format does not fit the ending of '" + job.output + "'");
    checkFiles(job.input, job.output);
    if (job.output == "-" && isatty(STDOUT_FILENO))
        throw ToolError("the result would go to the terminal: redirect the standard output");
    return {job};
}

RenderOutcome renderOne(const RenderOptions& options, const RenderJob& job)
{
    std::error_code error;
    RenderOutcome outcome;
    outcome.state = RenderOutcome::State::Skipped;
    if (options.skipExisting && std::filesystem::exists(job.output, error))
        return outcome;
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(options.plugin);
    Progress progress("rendering");
    outcome.report = render(*plugin, job, [&](double fraction) { progress.show(fraction); });
    outcome.state = RenderOutcome::State::Rendered;
    return outcome;
}

std::vector<RenderOutcome> renderMany(const RenderOptions& options,
                                      const std::vector<RenderJob>& jobs)
{
    std::vector<ProgressBoard::Job> bars;
    for (const RenderJob& job : jobs) {
        std::error_code error;
        const auto size = std::filesystem::file_size(job.input, error);
        bars.push_back({std::filesystem::path(job.input).filename().string(),
                        error ? 0.0 : static_cast<double>(size)});
    }
    ProgressBoard board(bars);
    const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    AlbumCalls calls;
    calls.openPlugin = [&] { return host::openPlugin(options.plugin); };
    calls.progress = [&](std::size_t job, double fraction) { board.show(job, fraction); };
    calls.finished = [&](std::size_t job, const RenderOutcome& outcome) {
        const bool failed = outcome.state == RenderOutcome::State::Failed;
        const bool named = outcome.error.find(jobs[job].input) != std::string::npos;
        board.finish(job, outcome.state == RenderOutcome::State::Skipped,
                     failed ? "zkrt46: " + (named ? "" : jobs[job].input + ": ") + outcome.error
                            : "");
    };
    return renderAlbum(jobs, options.jobs > 0 ? options.jobs : cores, options.skipExisting, calls);
}

int runRender(const RenderOptions& options)
{
    RenderJob common = options.job;
    if (!options.bits.empty())
        common.format = parseSampleFormat(options.bits);
    if (!options.file.empty())
        common.file = parseFileFormat(options.file);
    common.dither = parseDither(options.dither);
    if (!options.report.empty())
        checkReport(options);
    const std::vector<RenderJob> planned = jobsOf(options, common);
    readSettings(options, common);
    const bool album = !options.folder.empty();
    if (album)
        makeAlbumFolder(options.folder);
    if (!options.report.empty())
        const OutputFile triedAndRemoved(options.report);

    const bool toStandardOutput = planned.front().output == "-";
    const bool summary = options.verbose || (isatty(STDOUT_FILENO) && !toStandardOutput);
    std::vector<RenderJob> jobs = planned;
    for (RenderJob& job : jobs) {
        job.settings = common.settings;
        job.automation = common.automation;
        job.measureLoudness = summary || !options.report.empty();
    }
    const auto started = std::chrono::steady_clock::now();
    const std::vector<RenderOutcome> outcomes = album
        ? renderMany(options, jobs)
        : std::vector<RenderOutcome>{renderOne(options, jobs.front())};
    const double elapsed =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();

    int result = 0;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const RenderOutcome& outcome = outcomes[i];
        if (outcome.state == RenderOutcome::State::Failed)
            result = kFailed;
        if (outcome.state != RenderOutcome::State::Rendered)
            continue;
        result = std::max(result, sayRemarks(jobs[i], outcome.report));
    }
    if (!options.report.empty())
        writeReport(options.report, jobs, outcomes);
    std::FILE* stream = toStandardOutput ? stderr : stdout;
    if (summary && album)
        printAlbum(stream, jobs, outcomes, elapsed);
    else if (summary && outcomes.front().state == RenderOutcome::State::Rendered)
        printSummary(stream, jobs.front(), outcomes.front().report);
    return result;
}

void addFileOptions(CLI::App& command, RenderOptions& options)
{
    command
        .add_option("FILES", options.files,
                    "IN OUT: an audio file, mono or stereo, of any common format, and the result, "
                    "whose ending tells its format (wav, aif, aiff or flac). - is the standard "
                    "input or output. With -o: any number of audio files")
        ->required()
        ->type_name("");
    CLI::Option* folder =
        command
            .add_option(
                "-o,--output", options.folder,
                "Folder of the results, which keep the names of the files; it is created if "
                "it does not exist")
            ->type_name("DIR");
    command.add_option("--suffix", options.suffix, "With -o: put behind each name, such as _eq")
        ->needs(folder)
        ->type_name("TEXT");
    command
        .add_option("-j,--jobs", options.jobs,
                    "With -o: files rendered at a time. Default: the number of cores")
        ->check(CLI::Range(1, 256))
        ->needs(folder)
        ->type_name("N");
    command.add_flag("--skip-existing", options.skipExisting,
                     "Leave out files whose result exists, to go on after an interruption");
}

void addFormatOptions(CLI::App& command, RenderOptions& options)
{
    command
        .add_option("--bits", options.bits,
                    "Sample format. Default: 32f for float input (not in FLAC), else 24")
        ->type_name("{16,24,32f}");
    command
        .add_option(
            "--dither", options.dither,
            "For 16 and 24 bits: none, triangular noise (tpdf), or that noise where the ear "
            "is less sensitive (shaped); the same in every run")
        ->type_name("{none,tpdf,shaped}")
        ->capture_default_str();
    command
        .add_option("--format", options.file,
                    "With -o, and for the standard output. Default: that of the input's name, else "
                    "wav")
        ->type_name("{wav,aiff,flac}");
    command
        .add_option("--channels", options.job.outputChannels,
                    "Channels of the result; 2 makes stereo of a mono input")
        ->check(CLI::Range(1, 2))
        ->type_name("N");
}

void addLevelOptions(CLI::App& command, RenderOptions& options)
{
    LevelGoal& goal = options.job.goal;
    CLI::Option* match = command.add_flag("--match", goal.matchInput,
                                          "Give the result the integrated loudness of the input, "
                                          "for comparing the two");
    command
        .add_option_function<double>(
            "--target", [&goal](const double& value) { goal.loudness = value; },
            "Give the result this integrated loudness in LUFS, such as -14; a plain gain")
        ->check(numberRange(-70.0, 0.0))
        ->excludes(match)
        ->type_name("LUFS");
    command
        .add_option_function<double>(
            "--ceiling", [&goal](const double& value) { goal.truePeakLimit = value; },
            "Highest true peak of the result in dBTP, such as -1; a plain gain, which may keep the "
            "result below --match or --target")
        ->check(numberRange(-60.0, 6.0))
        ->type_name("DBTP");
    command
        .add_option("--report", options.report,
                    "Write levels and loudness before and after to a .json or .csv file")
        ->type_name("FILE");
}

}  // namespace

void addRenderCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<RenderOptions>();
    CLI::App& command = *app.add_subcommand("render", "Send audio files through the plug-in");
    addFileOptions(command, *options);
    addPluginOption(command, options->plugin);
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    command
        .add_option("--automate", options->automation,
                    "File of parameter changes: lines of time in seconds, title, value")
        ->type_name("FILE");
    addFormatOptions(command, *options);
    addLevelOptions(command, *options);
    command.add_option("--block", options->job.blockSize, "Samples per block")
        ->capture_default_str()
        ->check(CLI::Range(1, 1 << 20))
        ->type_name("N");
    command.add_flag("--keep-latency", options->job.keepLatency,
                     "Leave the plug-in's delay at the start; the result is longer by it");
    command
        .add_option("--pre-roll", options->job.preRollSeconds,
                    "Seconds of silence sent ahead, so that settings are in place at the start")
        ->capture_default_str()
        ->check(numberRange(0.0, 60.0))
        ->type_name("SECONDS");
    command.add_flag("-v,--verbose", options->verbose,
                     "Print levels, loudness, latency and speed also when not on a terminal");
    command.callback([options, &action] { action = [options] { return runRender(*options); }; });
}

}  // namespace tool
