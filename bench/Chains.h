// The measured chains and their settings.
#pragma once

#include "bench/Player.h"
#include "params/ids/ParameterIds.h"

#include <vector>

struct Chain {
    const char* name;
    std::vector<Setting> settings;
};

inline std::vector<Setting> joined(std::vector<Setting> a, const std::vector<Setting>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// Three bands in circuit, boosted and cut, equal in both channels of a pair of strips. `proc` is
// the first of the pair's parameters.
inline std::vector<Setting> threeBands(unsigned proc)
{
    std::vector<Setting> settings;
    constexpr unsigned kLowFrequency = 4, kLowGain = 6, kMidFrequency = 8, kMidGain = 10,
                       kHighFrequency = 14, kHighGain = 16;
    for (unsigned channel = proc; channel < proc + 2; ++channel)
        for (const Setting& setting :
             {Setting{kLowFrequency, 0.6}, Setting{kLowGain, 0.7}, Setting{kMidFrequency, 0.5},
              Setting{kMidGain, 0.35}, Setting{kHighFrequency, 0.5}, Setting{kHighGain, 0.65}})
            settings.push_back({channel + setting.id, setting.value});
    return settings;
}

inline std::vector<Setting> everythingOn()
{
    const std::vector<Setting> preamp = {
        {kQB11, 1.0}, {k2x, 1.0},     {kHpfL, 0.5},   {kHpfR, 0.5},     {k28kL, 1.0},
        {k28kR, 1.0}, {kDriveL, 0.6}, {kDriveR, 0.6}, {kOutputL, 0.45}, {kOutputR, 0.45}};
    return joined(preamp, joined(threeBands(kProcL), threeBands(kProcL2)));
}

constexpr const char* kDriven = "driven";

// Everything on, drive +6 dB, band gains +8 dB.
inline std::vector<Setting> drivenChain()
{
    std::vector<Setting> settings = joined(everythingOn(), {{kDriveL, 0.6875}, {kDriveR, 0.6875}});
    for (const unsigned id : {kLGainL, kLGainR, kMGainL, kMGainR, kHGainL, kHGainR, kLGainL2,
                              kLGainR2, kMGainL2, kMGainR2, kHGainL2, kHGainR2})
        settings.push_back({id, 0.75});
    return settings;
}

inline std::vector<Chain> allChains()
{
    return {{"power off", {{kPower, 0.0}}},
            {"default", {}},
            {"three bands", threeBands(kProcL)},
            {"everything on", everythingOn()}};
}
