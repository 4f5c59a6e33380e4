// Renders an audio file through the plug-in.
#pragma once

#include "tools/audio/AudioFile.h"
#include "tools/audio/Automation.h"
#include "tools/audio/PluginRun.h"
#include "tools/common/Progress.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tool {

struct RenderJob {
    std::string input;
    std::string output;
    int blockSize = 512;
    int outputChannels = 0;              // 0: as many as the input has
    std::optional<SampleFormat> format;  // none: floats stay floats, the rest becomes 24-bit
    bool keepLatency = false;
    // Silence processed first, so that parameter ramps have ended when the audio starts.
    double preRollSeconds = 2.0;
    std::vector<Assignment> settings;
    std::vector<AutomationPoint> automation;  // in order of time
};

// Peak and RMS of the samples added, linear. Samples that are not finite count as 0.
class Meter {
public:
    void add(const float* samples, std::size_t count);
    double peak() const { return peakLevel; }
    double rms() const;

private:
    double peakLevel = 0.0;
    double sumOfSquares = 0.0;
    std::int64_t sampleCount = 0;
};

struct RenderReport {
    Meter before;
    Meter after;
    int rate;
    int inputChannels;
    int outputChannels;
    std::int64_t inputFrames;
    std::int64_t outputFrames;
    int latency;  // samples
    std::int64_t clipped;
    double elapsedSeconds;
};

// Throws ToolError or HostError; an existing output file is then unchanged.
RenderReport render(host::Plugin& plugin, const RenderJob& job, Progress& progress);

}  // namespace tool
