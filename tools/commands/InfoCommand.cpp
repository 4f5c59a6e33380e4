// zkrt46 info: what the plug-in tells a host about itself.
#include "tools/commands/Commands.h"
#include "tools/host/OpenPlugin.h"

#include <cstdio>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

struct InfoOptions {
    std::string plugin;
    bool json = false;
};

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

std::string fourCharacters(VstInt32 id)
{
    const auto bits = static_cast<std::uint32_t>(id);
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto c = static_cast<char>((bits >> shift) & 0xFFu);
        text += c >= ' ' && c <= '~' ? c : '?';
    }
    return text;
}

std::string dottedVersion(VstIntPtr packed)
{
    const auto bits = static_cast<std::uint32_t>(packed);
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += (text.empty() ? "" : ".") + std::to_string((bits >> shift) & 0xFFu);
    return text;
}

Json flagNames(VstInt32 flags)
{
    const struct {
        VstInt32 flag;
        const char* name;
    } names[]{
        {effFlagsHasEditor, "has an editor"},
        {effFlagsCanReplacing, "replaces"},
        {effFlagsProgramChunks, "keeps its state in chunks"},
        {effFlagsIsSynth, "is a synthesiser"},
        {effFlagsNoSoundInStop, "silent without input"},
        {effFlagsCanDoubleReplacing, "takes doubles"},
    };
    Json list = Json::array();
    for (const auto& entry : names)
        if (flags & entry.flag)
            list.push_back(entry.name);
    return list;
}

Json pins(host::Plugin& plugin, bool output, int count)
{
    Json list = Json::array();
    for (int pin = 0; pin < count; ++pin) {
        VstPinProperties properties;
        if (!plugin.pinProperties(output, pin, properties))
            continue;
        properties.label[sizeof(properties.label) - 1] = 0;
        list.push_back(
            {{"label", properties.label}, {"stereo", (properties.flags & kVstPinIsStereo) != 0}});
    }
    return list;
}

// Switches the plug-in on and off at each rate; the latency is determined at switching on.
Json latencies(host::Plugin& plugin)
{
    Json list = Json::array();
    for (const double rate : kRates) {
        plugin.setSampleRate(rate);
        plugin.mainsOn();
        list.push_back({{"rate", static_cast<int>(rate)}, {"samples", plugin.latency()}});
        plugin.mainsOff();
    }
    return list;
}

Json arrangements(host::Plugin& plugin)
{
    Json list = Json::array();
    for (const auto& [inputs, outputs] : {std::pair{1, 1}, {1, 2}, {2, 1}, {2, 2}})
        list.push_back({{"inputs", inputs},
                        {"outputs", outputs},
                        {"taken", plugin.setSpeakerArrangement(inputs, outputs)}});
    plugin.setSpeakerArrangement(2, 2);
    return list;
}

// An ability that the plug-in does not know is null.
Json abilities(host::Plugin& plugin)
{
    Json list;
    for (const char* ability :
         {"receiveVstTimeInfo", "receiveVstEvents", "receiveVstMidiEvent", "sendVstEvents",
          "sendVstMidiEvent", "midiProgramNames", "bypass", "offline"}) {
        const VstIntPtr answer = plugin.canDo(ability);
        list[ability] = answer == 0 ? Json() : Json(answer > 0);
    }
    return list;
}

Json collect(const std::string& path)
{
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(path);
    const host::EffectFields fields = plugin->fields();
    const VstIntPtr category = plugin->dispatch(effGetPlugCategory);
    return {{"plugin", path},
            {"name", plugin->effectName()},
            {"vendor", plugin->vendor()},
            {"product", plugin->product()},
            {"vendorVersion", dottedVersion(plugin->dispatch(effGetVendorVersion))},
            {"effectVersion", fields.version},
            {"uniqueId", static_cast<std::uint32_t>(fields.uniqueID)},
            {"uniqueIdText", fourCharacters(fields.uniqueID)},
            {"category", category},
            {"categoryName", categoryName(category)},
            {"vstVersion", plugin->dispatch(effGetVstVersion)},
            {"flags", fields.flags},
            {"flagNames", flagNames(fields.flags)},
            {"inputs", fields.numInputs},
            {"inputPins", pins(*plugin, false, fields.numInputs)},
            {"outputs", fields.numOutputs},
            {"outputPins", pins(*plugin, true, fields.numOutputs)},
            {"parameters", fields.numParams},
            {"programs", fields.numPrograms},
            {"programName", plugin->programName()},
            {"bankChunkBytes", plugin->bankChunk().size()},
            {"programChunkBytes", plugin->programChunk().size()},
            {"tail", plugin->tail()},
            {"latencies", latencies(*plugin)},
            {"arrangements", arrangements(*plugin)},
            {"canDo", abilities(*plugin)}};
}

void row(const std::string& label, const std::string& text)
{
    std::printf("%-22s %s\n", label.c_str(), text.empty() ? "(none)" : text.c_str());
}

// The texts that `textOf` makes of a list's items, separated by commas.
template <typename TextOf>
std::string listed(const Json& list, TextOf textOf)
{
    std::string text;
    for (const Json& item : list)
        text += (text.empty() ? "" : ", ") + std::string(textOf(item));
    return text;
}

std::string pinText(const Json& count, const Json& pins)
{
    const std::string labels = listed(pins, [](const Json& pin) {
        return "\"" + pin["label"].get<std::string>() + "\" "
            + (pin["stereo"] ? "(stereo)" : "(mono)");
    });
    return count.dump() + (labels.empty() ? "" : ": ") + labels;
}

std::string arrangementText(const Json& arrangements, bool taken)
{
    Json chosen = Json::array();
    for (const Json& arrangement : arrangements)
        if (arrangement["taken"] == taken)
            chosen.push_back(arrangement);
    const auto word = [](const Json& channels) { return channels == 1 ? "mono" : "stereo"; };
    return listed(chosen, [&](const Json& one) {
        return std::string(word(one["inputs"])) + " to " + word(one["outputs"]);
    });
}

std::string tailText(const Json& samples)
{
    return samples == 0 ? "not reported" : samples == 1 ? "none" : samples.dump() + " samples";
}

void print(const Json& info)
{
    char hex[16];
    std::snprintf(hex, sizeof(hex), "0x%08X", info["uniqueId"].get<unsigned>());
    row("Plug-in", info["plugin"]);
    row("Name", info["name"]);
    row("Vendor", info["vendor"]);
    row("Product", info["product"]);
    row("Vendor's version", info["vendorVersion"]);
    row("Effect's version", info["effectVersion"].dump());
    row("Unique id", "\"" + info["uniqueIdText"].get<std::string>() + "\" (" + hex + ")");
    row("Category", info["category"].dump() + " (" + info["categoryName"].get<std::string>() + ")");
    row("VST version", info["vstVersion"].dump());
    row("Flags",
        listed(info["flagNames"], [](const Json& name) { return name.get<std::string>(); }) + " ("
            + info["flags"].dump() + ")");
    row("Inputs", pinText(info["inputs"], info["inputPins"]));
    row("Outputs", pinText(info["outputs"], info["outputPins"]));
    row("Parameters", info["parameters"].dump());
    row("Programs", info["programs"].dump());
    row("Program's name", info["programName"]);
    row("Bank chunk", info["bankChunkBytes"].dump() + " bytes");
    row("Program chunk", info["programChunkBytes"].dump() + " bytes");
    row("Tail", tailText(info["tail"]));
    row("Latency, samples", listed(info["latencies"], [](const Json& latency) {
            return latency["samples"].dump() + " at " + latency["rate"].dump() + " Hz";
        }));
    row("Channels taken", arrangementText(info["arrangements"], true));
    row("Channels refused", arrangementText(info["arrangements"], false));
    std::printf("Can do\n");
    for (const auto& [ability, answer] : info["canDo"].items())
        row("  " + ability, answer.is_null() ? "does not know" : answer ? "yes" : "no");
}

int runInfo(const InfoOptions& options)
{
    const Json info = collect(options.plugin);
    if (options.json)
        printJson(info);
    else
        print(info);
    return 0;
}

}  // namespace

void addInfoCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<InfoOptions>();
    CLI::App& command = *app.add_subcommand("info", "Show what the plug-in tells a host");
    addJsonFlag(command, options->json);
    bindAction(command, action, options, runInfo);
}

}  // namespace tool
