// zkrt46 render: renders an audio file through the plug-in.
#include "tools/audio/Render.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/host/OpenPlugin.h"

#include <cstdio>

#include <unistd.h>

namespace tool {

namespace {

struct RenderOptions {
    RenderJob job;
    std::string plugin;
    PresetChoice choice;
    std::vector<std::string> settings;
    std::string automation;
    std::string bits;
    bool verbose = false;
};

const char* channelWord(int channels)
{
    return channels == 1 ? "mono" : "stereo";
}

void printSummary(const RenderJob& job, const RenderReport& report)
{
    const double seconds = static_cast<double>(report.inputFrames) / report.rate;
    std::printf("%s -> %s\n", job.input.c_str(), job.output.c_str());
    std::printf("  audio    %lld samples, %.2f s at %d Hz, %s to %s\n",
                static_cast<long long>(report.outputFrames), seconds, report.rate,
                channelWord(report.inputChannels), channelWord(report.outputChannels));
    const auto levels = [](const char* label, const Meter& meter) {
        std::printf("  %s   peak %7s dBFS   RMS %7s dBFS\n", label,
                    decibelText(meter.peak()).c_str(), decibelText(meter.rms()).c_str());
    };
    levels("before", report.before);
    levels("after ", report.after);
    std::printf("  latency  %d samples, %s\n", report.latency,
                job.keepLatency ? "left in" : "taken out");
    std::printf("  speed    %.0f times real time (%.2f s)\n",
                report.elapsedSeconds > 0.0 ? seconds / report.elapsedSeconds : 0.0,
                report.elapsedSeconds);
}

int runRender(RenderOptions& options)
{
    RenderJob& job = options.job;
    if (!options.bits.empty())
        job.format = parseSampleFormat(options.bits);
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(options.plugin);
    Displays displays(options.plugin);
    job.settings = assignmentsOf(startingPreset(options.choice, plugin->fields(), displays));
    if (!options.settings.empty() || !options.automation.empty()) {
        ParameterText parameters = openParameterText(options.plugin);
        append(job.settings, parseSettings(options.settings, parameters));
        if (!options.automation.empty())
            job.automation = readAutomation(options.automation, parameters);
    }
    const RenderReport report = [&] {
        Progress progress("rendering");
        return render(*plugin, job, progress);
    }();
    if (report.clipped > 0)
        std::fprintf(stderr, "zkrt46: warning: %lld samples of '%s' were clipped to full scale\n",
                     static_cast<long long>(report.clipped), job.output.c_str());
    if (options.verbose || isatty(STDOUT_FILENO))
        printSummary(job, report);
    return 0;
}

}  // namespace

void addRenderCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<RenderOptions>();
    CLI::App& command = *app.add_subcommand("render", "Send an audio file through the plug-in");
    command.add_option("IN", options->job.input, "The audio: mono or stereo, any common format")
        ->required();
    command
        .add_option("OUT", options->job.output,
                    "The result; its ending tells the format: .wav, .aif, .aiff or .flac")
        ->required();
    addPluginOption(command, options->plugin);
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    command.add_option("--automate", options->automation,
                       "File of parameter changes: lines of time in seconds, title, value");
    command.add_option("--block", options->job.blockSize, "Samples per block")
        ->capture_default_str()
        ->check(CLI::Range(1, 1 << 20));
    command.add_option("--bits", options->bits,
                       "16, 24 or 32f. Default: 32f for float input (not in FLAC), else 24");
    command
        .add_option("--channels", options->job.outputChannels,
                    "Channels of the result; 2 makes stereo of a mono input")
        ->check(CLI::Range(1, 2));
    command.add_flag("--keep-latency", options->job.keepLatency,
                     "Leave the plug-in's delay at the start; the result is longer by it");
    command
        .add_option("--pre-roll", options->job.preRollSeconds,
                    "Seconds of silence sent ahead, so that settings are in place at the start")
        ->capture_default_str()
        ->check(CLI::Range(0.0, 60.0));
    command.add_flag("-v,--verbose", options->verbose,
                     "Print levels, latency and speed also when not on a terminal");
    command.callback([options, &action] { action = [options] { return runRender(*options); }; });
}

}  // namespace tool
