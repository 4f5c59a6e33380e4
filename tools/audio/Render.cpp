// Renders block by block, with each parameter change on its exact sample. With a level goal the
// result is first kept in a scratch file as floats, since the gain follows from all of it.
#include "tools/audio/Render.h"

#include "tools/common/ScratchFile.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace tool {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopyFrames = 4096;

Channels deinterleaved(const std::vector<float>& samples, int channels)
{
    const auto width = static_cast<std::size_t>(channels);
    Channels result(width, std::vector<float>(samples.size() / width));
    for (std::size_t i = 0; i < samples.size(); ++i)
        result[i % width][i / width] = samples[i];
    return result;
}

std::vector<float> interleaved(const Channels& channels)
{
    const std::size_t width = channels.size();
    std::vector<float> result(width * channels.front().size());
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = channels[i % width][i / width];
    return result;
}

// Applies the changes that are due, and limits a block to end at the next change.
class AutomationCursor {
public:
    AutomationCursor(const std::vector<AutomationPoint>& points, int sampleRate)
        : points(points), sampleRate(sampleRate), next(0)
    {
    }
    void applyDue(std::int64_t position, PluginRun& run)
    {
        while (next < points.size() && sampleOf(points[next]) <= static_cast<double>(position))
            run.set({points[next++].assignment});
    }
    // Samples until the next change, at most `limit`.
    std::int64_t samplesToNext(std::int64_t position, std::int64_t limit) const
    {
        if (next == points.size())
            return limit;
        const double left = sampleOf(points[next]) - static_cast<double>(position);
        return left < static_cast<double>(limit) ? static_cast<std::int64_t>(left) : limit;
    }

private:
    double sampleOf(const AutomationPoint& point) const
    {
        return std::round(point.seconds * sampleRate);
    }
    const std::vector<AutomationPoint>& points;
    double sampleRate;
    std::size_t next;
};

// Interleaved floats in a scratch file beside the output.
class ScratchAudio {
public:
    explicit ScratchAudio(const std::string& output)
        : file(fdopen(openScratchFile(output == "-" ? temporaryFolder()
                                                    : fs::path(output).parent_path().string()),
                      "w+b"))
    {
    }
    void write(const float* samples, std::size_t count)
    {
        if (std::fwrite(samples, sizeof(float), count, file.get()) != count)
            refuse();
    }
    void rewind()
    {
        if (std::fflush(file.get()) != 0)
            refuse();
        std::rewind(file.get());
    }
    void read(float* samples, std::size_t count)
    {
        if (std::fread(samples, sizeof(float), count, file.get()) != count)
            refuse();
    }

private:
    [[noreturn]] static void refuse()
    {
        throw ToolError(std::string("cannot keep the render for measuring it: ")
                        + std::strerror(errno));
    }
    struct Close {
        void operator()(std::FILE* handle) const { std::fclose(handle); }
    };
    std::unique_ptr<std::FILE, Close> file;
};

std::string formatted(const char* format, double value)
{
    char text[200];
    std::snprintf(text, sizeof(text), format, value);
    return text;
}

// The gain in dB for `rendered`. Says in `notes` what the goal does not reach.
double gainFor(const LevelGoal& goal, const Levels& before, const Levels& rendered,
               std::vector<std::string>& notes)
{
    double gain = 0.0;
    const double now = rendered.loudness->integrated;
    const double wanted =
        goal.matchInput ? before.loudness->integrated : goal.loudness.value_or(now);
    if (std::isfinite(now) && std::isfinite(wanted))
        gain = wanted - now;
    else if (goal.matchInput || goal.loudness)
        notes.push_back("silent or shorter than 0.4 s, so that there is no loudness to level");
    const double peak = decibels(rendered.loudness->truePeak);
    if (goal.truePeakLimit && peak + gain > *goal.truePeakLimit) {
        const double limited = *goal.truePeakLimit - peak;
        if ((goal.matchInput || goal.loudness) && std::isfinite(now + wanted))
            notes.push_back(formatted("the ceiling of %.2f dBTP", *goal.truePeakLimit)
                            + formatted(" forbids %.2f LUFS;", wanted)
                            + formatted(" the result has %.2f LUFS", now + limited));
        gain = limited;
    }
    return gain;
}

// Sends the input through the plug-in and hands the result on.
template <typename Sink>
void process(AudioReader& reader, PluginRun& run, const RenderJob& job, LevelMeter& before,
             RenderReport& report, const ShowProgress& showProgress, Sink&& sink)
{
    const int inputs = run.inputs();
    const int outputs = run.outputs();
    const std::int64_t skipped = job.keepLatency ? 0 : report.latency;
    AutomationCursor automation(job.automation, reader.rate());
    bool ended = false;
    std::int64_t end = reader.frames() + report.latency;  // exact once the input has ended
    for (std::int64_t position = 0; !ended || position < end;) {
        automation.applyDue(position, run);
        const std::int64_t limit =
            ended ? std::min<std::int64_t>(job.blockSize, end - position) : job.blockSize;
        std::int64_t count = automation.samplesToNext(position, limit);

        // After the file's end, silence for the length of the latency.
        std::vector<float> input(static_cast<std::size_t>(count * inputs));
        if (!ended) {
            const std::int64_t fromFile = reader.read(input.data(), count);
            before.add(input.data(), fromFile);
            report.inputFrames += fromFile;
            ended = fromFile < count;
            if (ended) {
                end = report.inputFrames + report.latency;
                count = std::min(count, end - position);
                input.resize(static_cast<std::size_t>(count * inputs));
            }
        }
        if (count == 0)
            break;
        const std::vector<float> output = interleaved(run.process(deinterleaved(input, inputs)));
        const std::int64_t first = std::clamp<std::int64_t>(skipped - position, 0, count);
        sink(output.data() + first * outputs, count - first);
        report.outputFrames += count - first;

        position += count;
        showProgress(static_cast<double>(position) / static_cast<double>(std::max(end, position)));
    }
}

}  // namespace

void checkFiles(const std::string& input, const std::string& output)
{
    checkedFileFormat(output);
    std::error_code error;
    if (input != "-" && output != "-" && fs::equivalent(input, output, error))
        throw ToolError("'" + output + "' is the input itself; the result needs another name");
}

RenderReport render(host::Plugin& plugin, const RenderJob& job, const ShowProgress& showProgress)
{
    checkFiles(job.input, job.output);
    AudioReader reader(job.input);
    const int inputs = reader.channels();
    const int outputs = job.outputChannels ? job.outputChannels : inputs;
    if (outputs < inputs)
        throw ToolError("'" + job.input + "' is stereo and cannot be rendered to mono");

    PluginRun run(plugin, reader.rate(), job.blockSize, inputs, outputs);
    RenderReport report{};
    report.latency = run.latency();
    if (report.latency < 0)
        throw ToolError("the plug-in reports a negative latency");
    report.truncation = reader.truncation();
    report.inputChannels = inputs;

    const FileFormat file = job.file.value_or(checkedFileFormat(job.output));
    const SampleFormat samples = job.format.value_or(defaultSampleFormat(reader, file));
    report.format = {file, samples, reader.rate(), outputs,
                     samples == SampleFormat::Float32 ? Dither::None : job.dither};
    FileMetadata metadata = reader.metadata();
    metadata.forgetLoudness();
    if (job.keepLatency)
        metadata.delay(report.latency);
    AudioWriter writer(job.output, report.format,
                       reader.frames() + (job.keepLatency ? report.latency : 0), metadata);
    run.set(job.settings);

    const auto started = std::chrono::steady_clock::now();
    run.processSilence(std::llround(job.preRollSeconds * reader.rate()));

    const bool leveled = job.goal.wanted();
    const bool withLoudness = job.measureLoudness || leveled;
    LevelMeter before(inputs, reader.rate(), withLoudness, inputs < outputs);
    LevelMeter after(outputs, reader.rate(), withLoudness);
    const auto write = [&](const float* audio, std::int64_t frames) {
        writer.write(audio, frames);
        after.add(audio, frames);
    };
    if (!leveled) {
        process(reader, run, job, before, report, showProgress, write);
    } else {
        ScratchAudio scratch(job.output);
        LevelMeter rendered(outputs, reader.rate(), true);
        process(reader, run, job, before, report, showProgress,
                [&](const float* audio, std::int64_t frames) {
                    scratch.write(audio, static_cast<std::size_t>(frames * outputs));
                    rendered.add(audio, frames);
                });
        report.gain = gainFor(job.goal, before.levels(), rendered.levels(), report.notes);
        const double factor = std::pow(10.0, *report.gain / 20.0);
        std::vector<float> audio(kCopyFrames * static_cast<std::size_t>(outputs));
        scratch.rewind();
        for (std::int64_t left = report.outputFrames * outputs; left > 0;) {
            const auto count = std::min(audio.size(), static_cast<std::size_t>(left));
            scratch.read(audio.data(), count);
            for (std::size_t i = 0; i < count; ++i)
                audio[i] = static_cast<float>(static_cast<double>(audio[i]) * factor);
            write(audio.data(), static_cast<std::int64_t>(count) / outputs);
            left -= static_cast<std::int64_t>(count);
        }
    }
    for (const std::string& missing : writer.commit())
        report.notes.push_back(missing + " of the input could not be kept");

    report.before = before.levels();
    report.after = after.levels();
    if (writer.clipped() > 0)
        report.warnings.push_back(std::to_string(writer.clipped())
                                  + " samples were clipped to full scale");
    report.elapsedSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    return report;
}

}  // namespace tool
