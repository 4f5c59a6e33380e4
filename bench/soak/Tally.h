// How often everything was done.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

enum class Deed {
    Block,
    Sample,
    TwinSample,
    Silence,
    AutomationOfAudio,
    AutomationOfUser,
    Preset,
    Rename,
    Save,
    Load,
    DamagedLoad,
    Mains,
    Rate,
    BlockSize,
    Arrangement,
    NewInstance,
    Reload,
    EditorOpened,
    EditorResized,
    MouseEvent,
    Count,
};
constexpr std::size_t kDeeds = static_cast<std::size_t>(Deed::Count);

constexpr std::array<const char*, kDeeds> kDeedNames{
    "blocks processed",
    "samples processed",
    "samples in which twins were compared",
    "times silence came out in the end",
    "parameters set on an audio thread",
    "parameters set on the user's thread",
    "presets chosen",
    "presets renamed",
    "states saved",
    "states loaded",
    "damaged states loaded",
    "mains off and on",
    "sample rates",
    "block sizes",
    "channel arrangements",
    "instances closed and made anew",
    "library unloaded and loaded again",
    "editors opened",
    "editors resized",
    "mouse events",
};

class Tally {
public:
    void add(Deed deed, long long times = 1) { slot(deed) += times; }
    long long of(Deed deed) const { return counts[static_cast<std::size_t>(deed)]; }

private:
    std::atomic<long long>& slot(Deed deed) { return counts[static_cast<std::size_t>(deed)]; }

    std::array<std::atomic<long long>, kDeeds> counts{};
};
