#include "tools/audio/SettingsCheck.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace tool {

namespace {

constexpr double kRate = 48000.0;
constexpr int kSamples = 4096;
// What is left of ramps and of the sound before; the smallest step of a gain changes far more.
constexpr float kTolerance = 1e-6f;
constexpr int kSettling = 24000;  // samples, until parameter ramps have ended

// Full-scale noise, different in the two channels.
Channels noise()
{
    std::mt19937 random;
    Channels channels(2, std::vector<float>(kSamples));
    for (std::vector<float>& channel : channels)
        for (float& sample : channel)
            sample = static_cast<float>(static_cast<double>(random()) / 2147483648.0 - 1.0);
    return channels;
}

Channels sound(host::Plugin& plugin, const std::vector<Assignment>& settings)
{
    for (const Assignment& assignment : settings)
        plugin.setParameter(assignment.index, assignment.value);
    PluginRun run(plugin, kRate, kSamples, 2, 2);
    run.processSilence(kSettling);
    return run.process(noise());
}

bool soundsEqual(const Channels& a, const Channels& b)
{
    for (std::size_t channel = 0; channel < a.size(); ++channel)
        for (std::size_t i = 0; i < a[channel].size(); ++i)
            if (std::fabs(a[channel][i] - b[channel][i]) > kTolerance)
                return false;
    return true;
}

}  // namespace

std::vector<std::size_t> settingsWithoutEffect(host::Plugin& plugin,
                                               const std::vector<Assignment>& start,
                                               const std::vector<std::vector<Assignment>>& groups)
{
    const int count = plugin.fields().numParams;
    std::vector<Assignment> values;
    for (const Assignment& assignment : start)
        plugin.setParameter(assignment.index, assignment.value);
    for (int index = 0; index < count; ++index)
        values.push_back({index, plugin.parameter(index)});
    const auto with = [&](std::size_t left) {
        std::vector<Assignment> settings = values;
        for (std::size_t group = 0; group < groups.size(); ++group)
            for (const Assignment& assignment : groups[group])
                if (group != left)
                    settings.push_back(assignment);
        return settings;
    };
    const Channels all = sound(plugin, with(groups.size()));
    std::vector<std::size_t> idle;
    for (std::size_t group = 0; group < groups.size(); ++group) {
        const bool moves = std::any_of(
            groups[group].begin(), groups[group].end(), [&](const Assignment& assignment) {
                return assignment.value != values[static_cast<std::size_t>(assignment.index)].value;
            });
        if (moves && soundsEqual(sound(plugin, with(group)), all))
            idle.push_back(group);
    }
    return idle;
}

}  // namespace tool
