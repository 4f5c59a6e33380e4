// Renders an audio file through the plug-in.
#pragma once

#include "tools/audio/AudioWriter.h"
#include "tools/audio/Automation.h"
#include "tools/audio/LevelMeter.h"
#include "tools/audio/PluginRun.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tool {

// A gain for the whole result, from its measured loudness and peak. It is a plain factor: nothing
// limits or compresses.
struct LevelGoal {
    bool matchInput = false;              // the integrated loudness of the input
    std::optional<double> loudness;       // LUFS, integrated; not with matchInput
    std::optional<double> truePeakLimit;  // dBTP; has precedence, and alone only lowers

    bool wanted() const { return matchInput || loudness || truePeakLimit; }
};

struct RenderJob {
    std::string input;   // "-" is the standard input
    std::string output;  // "-" is the standard output
    int blockSize = 512;
    int outputChannels = 0;              // 0: as many as the input has
    std::optional<FileFormat> file;      // none: by the output's ending
    std::optional<SampleFormat> format;  // none: floats stay floats, the rest becomes 24-bit
    Dither dither = Dither::Triangular;
    bool keepLatency = false;
    // Silence processed first, so that parameter ramps have ended when the audio starts.
    double preRollSeconds = 2.0;
    bool measureLoudness = false;
    LevelGoal goal;
    std::vector<Assignment> settings;
    std::vector<AutomationPoint> automation;  // in order of time
};

struct RenderReport {
    Levels before;
    Levels after;  // of the result, before it is rounded to integers
    AudioFormat format;
    int inputChannels;
    std::int64_t inputFrames;
    std::int64_t outputFrames;
    int latency;                        // samples
    std::optional<double> gain;         // dB, where a goal was set
    std::vector<std::string> notes;     // about the goal and about metadata that is not kept
    std::vector<std::string> warnings;  // the result is doubtful: clipped samples
    std::string truncation;             // of an input that is cut short, else empty
    double elapsedSeconds;
};

// Called with the part that is done, from 0 to 1.
using ShowProgress = std::function<void(double)>;

// Throws ToolError if the two are one file, or the output's name tells no format.
void checkFiles(const std::string& input, const std::string& output);

// Throws ToolError or HostError; an existing output file is then unchanged.
RenderReport render(host::Plugin& plugin, const RenderJob& job, const ShowProgress& showProgress);

}  // namespace tool
