// zkrt46 info: what the plug-in tells a host about itself.
#include "tools/commands/Commands.h"
#include "tools/host/OpenPlugin.h"

#include <cstdio>

namespace tool {

namespace {

constexpr double kRates[]{44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};  // Hz

const char* categoryName(VstIntPtr category)
{
    switch (category) {
    case kPlugCategUnknown:
        return "unknown";
    case kPlugCategEffect:
        return "effect";
    case kPlugCategSynth:
        return "synthesiser";
    case kPlugCategAnalysis:
        return "analysis";
    case kPlugCategMastering:
        return "mastering";
    case kPlugCategSpacializer:
        return "spatial";
    case kPlugCategRoomFx:
        return "room";
    case kPlugCategRestoration:
        return "restoration";
    case kPlugCategGenerator:
        return "generator";
    default:
        return "other";
    }
}

void row(const char* label, const std::string& text)
{
    std::printf("%-22s %s\n", label, text.empty() ? "(none)" : text.c_str());
}

std::string fourCharacters(VstInt32 id)
{
    const auto bits = static_cast<std::uint32_t>(id);
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto c = static_cast<char>((bits >> shift) & 0xFFu);
        text += c >= ' ' && c <= '~' ? c : '?';
    }
    char hex[16];
    std::snprintf(hex, sizeof(hex), "0x%08X", bits);
    return "\"" + text + "\" (" + hex + ")";
}

std::string dottedVersion(VstIntPtr packed)
{
    const auto bits = static_cast<std::uint32_t>(packed);
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += (text.empty() ? "" : ".") + std::to_string((bits >> shift) & 0xFFu);
    return text;
}

std::string flagNames(VstInt32 flags)
{
    const struct {
        VstInt32 flag;
        const char* name;
    } names[]{
        {effFlagsHasEditor, "has an editor"},
        {effFlagsCanReplacing, "replaces"},
        {effFlagsProgramChunks, "keeps its state in chunks"},
        {effFlagsIsSynth, "is a synthesiser"},
        {effFlagsNoSoundInStop, "no tail"},
        {effFlagsCanDoubleReplacing, "takes doubles"},
    };
    std::string text;
    for (const auto& entry : names)
        if (flags & entry.flag)
            text += (text.empty() ? "" : ", ") + std::string(entry.name);
    return text + " (" + std::to_string(flags) + ")";
}

std::string pinText(host::Plugin& plugin, bool output, int count)
{
    std::string text = std::to_string(count);
    for (int pin = 0; pin < count; ++pin) {
        VstPinProperties properties;
        if (!plugin.pinProperties(output, pin, properties))
            continue;
        properties.label[sizeof(properties.label) - 1] = 0;
        text += pin == 0 ? ": " : ", ";
        text += std::string("\"") + properties.label + "\"";
        text += properties.flags & kVstPinIsStereo ? " (stereo)" : " (mono)";
    }
    return text;
}

void printAbilities(host::Plugin& plugin)
{
    for (const char* ability :
         {"receiveVstTimeInfo", "receiveVstEvents", "receiveVstMidiEvent", "sendVstEvents",
          "sendVstMidiEvent", "midiProgramNames", "bypass", "offline"}) {
        const VstIntPtr answer = plugin.canDo(ability);
        const char* words = answer > 0 ? "yes" : answer < 0 ? "no" : "does not know";
        row(("  " + std::string(ability)).c_str(), words);
    }
}

// Switches the plug-in on and off at each rate; the latency is determined at switching on.
void printLatencies(host::Plugin& plugin)
{
    std::string text;
    for (const double rate : kRates) {
        plugin.setSampleRate(rate);
        plugin.mainsOn();
        text += (text.empty() ? "" : ", ") + std::to_string(plugin.latency()) + " at "
            + std::to_string(static_cast<int>(rate)) + " Hz";
        plugin.mainsOff();
    }
    row("Latency, samples", text);
}

void printArrangements(host::Plugin& plugin)
{
    std::string taken, refused;
    for (const auto& [inputs, outputs] : {std::pair{1, 1}, {1, 2}, {2, 1}, {2, 2}}) {
        const char* words[]{"mono", "stereo"};
        std::string& list = plugin.setSpeakerArrangement(inputs, outputs) ? taken : refused;
        list += (list.empty() ? "" : ", ") + std::string(words[inputs - 1]) + " to "
            + words[outputs - 1];
    }
    plugin.setSpeakerArrangement(2, 2);
    row("Channels taken", taken);
    row("Channels refused", refused);
}

int runInfo(const std::string& path)
{
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(path);
    const host::EffectFields fields = plugin->fields();
    const VstIntPtr category = plugin->dispatch(effGetPlugCategory);
    row("Plug-in", path);
    row("Name", plugin->effectName());
    row("Vendor", plugin->vendor());
    row("Product", plugin->product());
    row("Vendor's version", dottedVersion(plugin->dispatch(effGetVendorVersion)));
    row("Effect's version", std::to_string(fields.version));
    row("Unique id", fourCharacters(fields.uniqueID));
    row("Category", std::to_string(category) + " (" + categoryName(category) + ")");
    row("VST version", std::to_string(plugin->dispatch(effGetVstVersion)));
    row("Flags", flagNames(fields.flags));
    row("Inputs", pinText(*plugin, false, fields.numInputs));
    row("Outputs", pinText(*plugin, true, fields.numOutputs));
    row("Parameters", std::to_string(fields.numParams));
    row("Programs", std::to_string(fields.numPrograms));
    row("Program's name", plugin->programName());
    row("Bank chunk", std::to_string(plugin->bankChunk().size()) + " bytes");
    row("Program chunk", std::to_string(plugin->programChunk().size()) + " bytes");
    row("Tail", std::to_string(plugin->tail()) + " (1 means none, 0 that it is not known)");
    printLatencies(*plugin);
    printArrangements(*plugin);
    std::printf("Can do\n");
    printAbilities(*plugin);
    return 0;
}

}  // namespace

void addInfoCommand(CLI::App& app, Action& action)
{
    auto path = std::make_shared<std::string>();
    CLI::App& command = *app.add_subcommand("info", "Show what the plug-in tells a host");
    addPluginOption(command, *path);
    command.callback([path, &action] { action = [path] { return runInfo(*path); }; });
}

}  // namespace tool
