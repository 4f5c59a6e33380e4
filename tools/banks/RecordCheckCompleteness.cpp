// What the records of an image leave out, once all of them could be read.
#include "RecordCheck.h"

namespace tool {

void RecordCheck::checkCompleteness()
{
    std::string absent;
    for (std::size_t preset = 0; preset < (bank ? seen.size() : 1); ++preset) {
        const Seen& so = seen[preset];
        if (bank && !so.name && so.values.none())
            absent += (absent.empty() ? "" : ", ") + std::to_string(preset);
        else if (bank && !so.name)
            report.note("presets without a name record", std::nullopt,
                        "there are values but no name record" + ofPreset(preset)
                            + ": the values are laid over the preset that the plug-in has there",
                        Outcome::Partly);
        else if (!so.name)
            report.note("presets without a name record", std::nullopt,
                        "there is no name record: the preset gets the name of the default preset",
                        Outcome::Partly);
        if (so.name || !bank)
            checkMissingValues(preset);
    }
    if (!absent.empty())
        report.note("absent presets", std::nullopt,
                    "there are no records of preset " + absent
                        + ": the plug-in keeps what it has there",
                    Outcome::Partly);
}

void RecordCheck::checkMissingValues(std::size_t preset)
{
    constexpr std::size_t kMostNamed = 5;
    const auto& values = seen[preset].values;
    const std::size_t missing = values.size() - values.count();
    if (missing == 0)
        return;
    std::string names;
    std::size_t named = 0;
    for (std::size_t id = 0; id < values.size(); ++id)
        if (!values[id] && ++named <= kMostNamed)
            names += (names.empty() ? "" : ", ") + titleOf(id);
    report.note(
        "presets with missing values", std::nullopt,
        "there is no value" + ofPreset(preset) + " for " + names
            + (missing > kMostNamed ? " and " + std::to_string(missing - kMostNamed) + " more" : "")
            + ": the default is taken",
        Outcome::Partly);
}

}  // namespace tool
