// zkrt46 latency: measures the delay of an impulse at several rates, block sizes and switch
// settings.
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/Progress.h"
#include "tools/host/OpenPlugin.h"

#include <cmath>
#include <cstdio>

namespace tool {

namespace {

constexpr double kRates[]{44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};  // Hz
constexpr int kBlockSizes[]{1, 16, 17, 64, 512, 1000, 4096};

// Parameter ramps end within this time.
constexpr double kSettleSeconds = 0.3;
constexpr int kRecordedSamples = 1024;
constexpr int kImpulseAt = 100;  // samples; at no block boundary except with block size 1
constexpr float kImpulse = 0.25f;

struct State {
    const char* name;
    std::vector<std::string> settings;
};

int measuredDelay(host::Plugin& plugin, double rate, int blockSize,
                  const std::vector<Assignment>& settings, int& reported)
{
    PluginRun run(plugin, rate, blockSize, 2, 2);
    reported = run.latency();
    run.set(settings);
    run.processSilence(std::llround(kSettleSeconds * rate));
    Channels input(2, std::vector<float>(kRecordedSamples));
    input[0][kImpulseAt] = input[1][kImpulseAt] = kImpulse;
    const Channels output = run.process(input);

    int delays[2];
    for (std::size_t channel = 0; channel < 2; ++channel) {
        std::size_t peak = 0;
        for (std::size_t i = 0; i < output[channel].size(); ++i)
            if (std::fabs(output[channel][i]) > std::fabs(output[channel][peak]))
                peak = i;
        delays[channel] = static_cast<int>(peak) - kImpulseAt;
    }
    // If the channels differ, the one that is wrong.
    return delays[0] == reported ? delays[1] : delays[0];
}

int runLatency(const std::string& path)
{
    const State states[]{
        {"Power on", {"Power=On", "BpsCh1=Off", "BpsCh2=Off"}},
        {"Power off", {"Power=Off", "BpsCh1=Off", "BpsCh2=Off"}},
        {"bypassed", {"Power=On", "BpsCh1=On", "BpsCh2=On"}},
    };
    ParameterText parameters = openParameterText(path);
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(path);

    std::string table = "Delay of an impulse in samples, by block size\n";
    char cell[64];
    std::snprintf(cell, sizeof(cell), "%9s  %-10s %9s", "Rate, Hz", "State", "Reported");
    table += cell;
    for (const int blockSize : kBlockSizes) {
        std::snprintf(cell, sizeof(cell), " %6d", blockSize);
        table += cell;
    }
    table += "\n";

    int wrong = 0;
    double done = 0.0;
    {
        Progress progress("measuring");
        for (const double rate : kRates) {
            for (const State& state : states) {
                std::vector<Assignment> settings = factoryStart(plugin->fields());
                append(settings, parseSettings(state.settings, parameters));
                std::string delays;
                int reported = 0;
                for (const int blockSize : kBlockSizes) {
                    const int delay = measuredDelay(*plugin, rate, blockSize, settings, reported);
                    wrong += delay == reported ? 0 : 1;
                    std::snprintf(cell, sizeof(cell), " %5d%c", delay,
                                  delay == reported ? ' ' : '!');
                    delays += cell;
                    done += 1.0;
                    progress.show(
                        done / (std::size(kRates) * std::size(states) * std::size(kBlockSizes)));
                }
                std::snprintf(cell, sizeof(cell), "%9.0f  %-10s %9d", rate, state.name, reported);
                table += cell + delays + "\n";
            }
        }
    }
    std::fputs(table.c_str(), stdout);
    if (wrong > 0) {
        std::printf("%d of them differ from what the plug-in reports (marked !)\n", wrong);
        return 1;
    }
    std::printf("All as reported\n");
    return 0;
}

}  // namespace

void addLatencyCommand(CLI::App& app, Action& action)
{
    auto path = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand(
        "latency", "Measure the delay and compare it with what the plug-in reports");
    addPluginOption(command, *path);
    command.callback([path, &action] { action = [path] { return runLatency(*path); }; });
}

}  // namespace tool
