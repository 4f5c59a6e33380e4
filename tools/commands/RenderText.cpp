#include "tools/commands/RenderText.h"

#include <algorithm>
#include <filesystem>

namespace tool {

namespace {

using State = RenderOutcome::State;

std::string number(double value)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.2f", value);
    return text;
}

const char* channelWord(int channels)
{
    return channels == 1 ? "mono" : "stereo";
}

std::string sampleText(const AudioFormat& format)
{
    if (format.samples == SampleFormat::Float32)
        return "32-bit float";
    return std::to_string(bitsOf(format.samples)) + " bits, "
        + (format.dither == Dither::None ? "no" : nameOf(format.dither)) + " dither";
}

void printLevels(std::FILE* stream, const char* label, const Levels& levels)
{
    if (const auto& loudness = levels.loudness)
        std::fprintf(stream, "  %-6s %7s LUFS %6s LU %7s LUFS %7s dBTP", label,
                     number(loudness->integrated).c_str(), number(loudness->range).c_str(),
                     number(loudness->shortTermMaximum).c_str(),
                     number(decibels(loudness->truePeak)).c_str());
    else
        std::fprintf(stream, "  %-6s", label);
    std::fprintf(stream, " %7s dBFS %7s dBFS\n", number(decibels(levels.peak)).c_str(),
                 number(decibels(levels.rms)).c_str());
}

}  // namespace

std::vector<std::string> remarksOf(const RenderReport& report)
{
    std::vector<std::string> remarks = report.notes;
    remarks.insert(remarks.end(), report.warnings.begin(), report.warnings.end());
    if (!report.truncation.empty())
        remarks.push_back("the input is cut short: " + report.truncation);
    return remarks;
}

int sayRemarks(const RenderJob& job, const RenderReport& report)
{
    const auto say = [](const char* kind, const std::string& name, const std::string& text) {
        std::fprintf(stderr, "zkrt46: %s: '%s'%s\n", kind, name.c_str(), text.c_str());
    };
    for (const std::string& note : report.notes)
        say("note", job.output, ": " + note);
    for (const std::string& warning : report.warnings)
        say("warning", job.output, ": " + warning);
    if (report.truncation.empty())
        return 0;
    say("warning", job.input, " is cut short: " + report.truncation);
    return 1;
}

void printSummary(std::FILE* stream, const RenderJob& job, const RenderReport& report)
{
    const double seconds = static_cast<double>(report.inputFrames) / report.format.rate;
    std::fprintf(stream, "%s -> %s\n", job.input.c_str(), job.output.c_str());
    std::fprintf(stream, "  audio    %lld samples, %.2f s at %d Hz, %s to %s, %s\n",
                 static_cast<long long>(report.outputFrames), seconds, report.format.rate,
                 channelWord(report.inputChannels), channelWord(report.format.channels),
                 sampleText(report.format).c_str());
    std::fprintf(stream,
                 report.before.loudness
                     ? "           integrated     range   short-term    true peak         peak"
                       "          RMS\n"
                     : "                 peak          RMS\n");
    printLevels(stream, "before", report.before);
    printLevels(stream, "after", report.after);
    if (report.gain)
        std::fprintf(stream, "  gain     %+.2f dB\n", *report.gain);
    std::fprintf(stream, "  latency  %d samples, %s\n", report.latency,
                 job.keepLatency ? "left in" : "taken out");
    std::fprintf(stream, "  speed    %.0f times real time (%.2f s)\n",
                 report.elapsedSeconds > 0.0 ? seconds / report.elapsedSeconds : 0.0,
                 report.elapsedSeconds);
}

void printAlbum(std::FILE* stream, const std::vector<RenderJob>& jobs,
                const std::vector<RenderOutcome>& outcomes, double elapsedSeconds)
{
    const auto inputName = [](const RenderJob& job) {
        return std::filesystem::path(job.input).filename().string();
    };
    int width = 4;
    for (const RenderJob& job : jobs)
        width = std::max(width, static_cast<int>(inputName(job).size()));
    const bool leveled =
        std::any_of(outcomes.begin(), outcomes.end(),
                    [](const RenderOutcome& outcome) { return outcome.report.gain.has_value(); });
    std::fprintf(stream, "%-*s      before       after    true peak%s\n", width, "file",
                 leveled ? "       gain" : "");
    double seconds = 0.0;
    int counts[3]{};
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const RenderOutcome& outcome = outcomes[i];
        ++counts[static_cast<int>(outcome.state)];
        std::fprintf(stream, "%-*s ", width, inputName(jobs[i]).c_str());
        if (outcome.state != State::Rendered) {
            std::fprintf(stream, " %s\n", nameOf(outcome.state));
            continue;
        }
        const RenderReport& report = outcome.report;
        seconds += static_cast<double>(report.inputFrames) / report.format.rate;
        const auto before = report.before.loudness.value_or(Loudness{});
        const auto after = report.after.loudness.value_or(Loudness{});
        std::fprintf(stream, "%6s LUFS %6s LUFS %6s dBTP", number(before.integrated).c_str(),
                     number(after.integrated).c_str(), number(decibels(after.truePeak)).c_str());
        if (report.gain)
            std::fprintf(stream, " %+7.2f dB", *report.gain);
        std::fprintf(stream, "%s\n", remarksOf(report).empty() ? "" : "  see above");
    }
    std::fprintf(stream, "%zu files: %d rendered, %d skipped, %d failed; %.0f times real time\n",
                 jobs.size(), counts[static_cast<int>(State::Rendered)],
                 counts[static_cast<int>(State::Skipped)], counts[static_cast<int>(State::Failed)],
                 elapsedSeconds > 0.0 ? seconds / elapsedSeconds : 0.0);
}

}  // namespace tool
