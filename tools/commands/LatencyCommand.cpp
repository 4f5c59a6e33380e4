// zkrt46 latency: measures the delay of an impulse at several rates, block sizes and switch
// settings.
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/Progress.h"
#include "tools/host/OpenPlugin.h"
#include "tools/measuring/Delay.h"

#include <algorithm>
#include <cstdio>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

constexpr double kRates[]{44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};  // Hz
constexpr int kBlockSizes[]{1, 16, 17, 64, 512, 1000, 4096};

struct LatencyOptions {
    std::string plugin;
    bool json = false;
};

struct State {
    const char* name;
    std::vector<std::string> settings;
};

// The delays in one state at one rate, in samples.
struct Row {
    double rate;  // Hz
    const char* state;
    int reported;
    std::vector<int> delays;  // for each of kBlockSizes
};

std::vector<Row> measure(const std::string& path)
{
    const State states[]{
        {"Power on", {"Power=On", "BpsCh1=Off", "BpsCh2=Off"}},
        {"Power off", {"Power=Off", "BpsCh1=Off", "BpsCh2=Off"}},
        {"bypassed", {"Power=On", "BpsCh1=On", "BpsCh2=On"}},
    };
    ParameterText parameters = openParameterText(path);
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(path);
    Progress progress("measuring");
    double done = 0.0;
    std::vector<Row> rows;
    for (const double rate : kRates) {
        for (const State& state : states) {
            std::vector<Assignment> settings = factoryStart(plugin->fields());
            append(settings, parseSettings(state.settings, parameters));
            Row row{rate, state.name, 0, {}};
            for (const int blockSize : kBlockSizes) {
                const Delay delay = measureDelay(*plugin, rate, blockSize, settings);
                row.reported = delay.reported;
                row.delays.push_back(delay.measured);
                done += 1.0;
                progress.show(done
                              / (std::size(kRates) * std::size(states) * std::size(kBlockSizes)));
            }
            rows.push_back(row);
        }
    }
    return rows;
}

void printTable(const std::vector<Row>& rows, int wrong)
{
    std::printf("Delay of an impulse in samples, by block size\n%9s  %-10s %9s", "Rate, Hz",
                "State", "Reported");
    for (const int blockSize : kBlockSizes)
        std::printf(" %6d", blockSize);
    std::printf("\n");
    for (const Row& row : rows) {
        std::printf("%9.0f  %-10s %9d", row.rate, row.state, row.reported);
        for (const int delay : row.delays)
            std::printf(" %5d%c", delay, delay == row.reported ? ' ' : '!');
        std::printf("\n");
    }
    if (wrong > 0)
        std::printf("%d of them differ from what the plug-in reports (marked !)\n", wrong);
    else
        std::printf("All as reported\n");
}

nlohmann::ordered_json asJson(const std::vector<Row>& rows, int wrong)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Row& row : rows)
        list.push_back({{"rate", row.rate},
                        {"state", row.state},
                        {"reported", row.reported},
                        {"measured", row.delays}});
    return {{"blockSizes", kBlockSizes}, {"delays", list}, {"wrong", wrong}};
}

int runLatency(const LatencyOptions& options)
{
    const std::vector<Row> rows = measure(options.plugin);
    int wrong = 0;
    for (const Row& row : rows)
        wrong += static_cast<int>(row.delays.size()
                                  - static_cast<std::size_t>(std::count(
                                      row.delays.begin(), row.delays.end(), row.reported)));
    if (options.json)
        printJson(asJson(rows, wrong));
    else
        printTable(rows, wrong);
    return wrong > 0 ? 1 : 0;
}

}  // namespace

void addLatencyCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<LatencyOptions>();
    CLI::App& command =
        *app.add_subcommand("latency",
                            "Measure the delay and compare it with what the plug-in reports; the "
                            "exit code is 1 where they differ");
    addJsonFlag(command, options->json);
    bindAction(command, action, options, runLatency);
}

}  // namespace tool
