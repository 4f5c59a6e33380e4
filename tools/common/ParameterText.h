// ParameterText: converts typed text to parameter values by the plug-in's own titles and displays.
#pragma once

#include "tools/host/Plugin.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tool {

struct Assignment {
    int index;
    float value;  // normalised
};

// True if the whole text is a finite decimal number, with or without a sign.
bool parseNumber(const std::string& text, double& number);
std::string trimmed(const std::string& text);

class ParameterText {
public:
    // Reading a display changes the parameter for a moment, so the plug-in must not be in use.
    explicit ParameterText(std::unique_ptr<host::Plugin> plugin);

    // "TITLE=VALUE": one assignment, or two where the title leaves out the channel, as in LFreq=82
    // or LFreq2=82. Throws ToolError, as do the next three.
    std::vector<Assignment> parse(const std::string& text);
    // In any letter case. For an unknown title the error names similar ones.
    int indexOf(const std::string& title) const;
    // One index, or those of the left and the right channel where the title leaves out the L or R.
    std::vector<int> indicesOf(const std::string& title) const;
    // A value as displayed (or an equal number, optionally with the unit), or a normalised value
    // from 0 to 1 followed by the letter n.
    float valueOf(int index, const std::string& typed);

    host::EffectFields fields() { return plugin->fields(); }
    int count() const { return static_cast<int>(titles.size()); }
    const std::string& title(int index) const { return titles[static_cast<std::size_t>(index)]; }
    std::string unit(int index) { return plugin->paramLabel(index); }
    int steps(int index) { return plugin->paramSteps(index); }
    // What the plug-in displays at this normalised value.
    std::string displayAt(int index, float value);
    float initialValue(int index) { return plugin->parameter(index); }
    // What the plug-in displays at each step from 0 to the last; empty for a parameter without
    // steps.
    const std::vector<std::string>& displays(int index);

private:
    // -1 for an unknown title.
    int find(const std::string& title) const;
    [[noreturn]] void refuseValue(int index, const std::string& text);

    std::unique_ptr<host::Plugin> plugin;
    std::vector<std::string> titles;
    std::map<int, std::vector<std::string>> displayCache;
};

}  // namespace tool
