// Renders block by block, with each parameter change on its exact sample.
#include "tools/audio/Render.h"

#include "tools/common/ToolError.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tool {

namespace {

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

}  // namespace

void Meter::add(const float* samples, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const double value = static_cast<double>(samples[i]);
        if (!std::isfinite(value))
            continue;
        peakLevel = std::max(peakLevel, std::fabs(value));
        sumOfSquares += value * value;
    }
    sampleCount += static_cast<std::int64_t>(count);
}

double Meter::rms() const
{
    return sampleCount > 0 ? std::sqrt(sumOfSquares / static_cast<double>(sampleCount)) : 0.0;
}

RenderReport render(host::Plugin& plugin, const RenderJob& job, Progress& progress)
{
    AudioReader reader(job.input);
    const int inputs = reader.channels();
    const int outputs = job.outputChannels ? job.outputChannels : inputs;
    if (outputs < inputs)
        throw ToolError("'" + job.input + "' is stereo and cannot be rendered to mono");

    PluginRun run(plugin, reader.rate(), job.blockSize, inputs, outputs);
    const int latency = run.latency();
    if (latency < 0)
        throw ToolError("the plug-in reports a negative latency");
    const std::int64_t end = reader.frames() + latency;
    const std::int64_t skipped = job.keepLatency ? 0 : latency;

    AudioWriter writer(job.output, reader.rate(), outputs,
                       job.format.value_or(defaultSampleFormat(reader, job.output)), end - skipped);
    run.set(job.settings);

    const auto started = std::chrono::steady_clock::now();
    run.processSilence(std::llround(job.preRollSeconds * reader.rate()));

    RenderReport report{};
    AutomationCursor automation(job.automation, reader.rate());
    for (std::int64_t position = 0; position < end;) {
        automation.applyDue(position, run);
        const std::int64_t limit = std::min<std::int64_t>(job.blockSize, end - position);
        const std::int64_t count = automation.samplesToNext(position, limit);

        // After the file's end, silence for the length of the latency.
        std::vector<float> input(static_cast<std::size_t>(count * inputs));
        const std::int64_t fromFile =
            std::clamp<std::int64_t>(reader.frames() - position, 0, count);
        reader.read(input.data(), fromFile);
        report.before.add(input.data(), static_cast<std::size_t>(fromFile * inputs));

        const std::vector<float> output = interleaved(run.process(deinterleaved(input, inputs)));
        const std::int64_t first = std::clamp<std::int64_t>(skipped - position, 0, count);
        const float* kept = output.data() + first * outputs;
        writer.write(kept, count - first);
        report.after.add(kept, static_cast<std::size_t>((count - first) * outputs));

        position += count;
        progress.show(static_cast<double>(position) / static_cast<double>(end));
    }
    writer.commit();

    report.rate = reader.rate();
    report.inputChannels = inputs;
    report.outputChannels = outputs;
    report.inputFrames = reader.frames();
    report.outputFrames = end - skipped;
    report.latency = latency;
    report.clipped = writer.clipped();
    report.elapsedSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    return report;
}

}  // namespace tool
