// zkrt46 edit: the editor in a window, without a host.
#include "tools/audio/Render.h"
#include "tools/banks/PresetName.h"
#include "tools/commands/Commands.h"
#include "tools/commands/EditorWindow.h"
#include "tools/commands/PresetChoice.h"
#include "tools/commands/RenderText.h"
#include "tools/common/Progress.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdio>
#include <cstring>

namespace tool {

namespace {

struct EditOptions {
    std::string plugin, input, output, saved;
    bool usualPlugin = true;
    PresetChoice choice;
    std::vector<std::string> settings;
};

// Throws ToolError for files that could not be used once the window is closed.
void checkFiles(const EditOptions& options)
{
    if (options.output.empty() != options.input.empty())
        throw ToolError(options.output.empty() ? "a FILE is of use only with -o OUT"
                                               : "-o needs a FILE to render");
    if (!options.input.empty()) {
        if (options.input == "-" || options.output == "-")
            throw ToolError("edit takes files, not the standard input or output");
        tool::checkFiles(options.input, options.output);
        const AudioReader input(options.input);
        const FileFormat format = checkedFileFormat(options.output);
        const AudioWriter triedAndRemoved(
            options.output,
            {format, defaultSampleFormat(input, format), input.rate(), input.channels()},
            input.frames());
    }
    if (!options.saved.empty())
        expectPresetPath(options.saved);
}

// As one word of a shell's command line.
std::string shellWord(const std::string& text)
{
    const bool plain = !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 || std::strchr("%+,-./:=@_", c) != nullptr;
    });
    if (plain)
        return text;
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    return quoted + "'";
}

// The value as --set takes it: as displayed if that is exact.
std::string settingText(ParameterText& parameters, int index, float value)
{
    const std::string display = parameters.displayAt(index, value);
    const std::vector<std::string>& steps = parameters.displays(index);
    const bool exact = std::find(steps.begin(), steps.end(), display) != steps.end()
        && parameters.valueOf(index, display) == value;
    return parameters.title(index) + "=" + (exact ? display : storedText(value) + "n");
}

// A call of zkrt46 that renders with the plug-in's settings.
std::string renderLine(const EditOptions& options, host::Plugin& plugin,
                       const std::vector<Assignment>& start)
{
    std::string line = "zkrt46 render";
    const auto add = [&line](const char* option, const std::string& value) {
        if (!value.empty())
            line += std::string(" ") + option + " " + shellWord(value);
    };
    add("--plugin", options.usualPlugin ? "" : options.plugin);
    add("--preset", options.choice.preset);
    add("--bank", options.choice.bank);
    add("--preset-file", options.choice.presetFile);
    ParameterText parameters = openParameterText(options.plugin);
    for (int index = 0; index < parameters.count(); ++index) {
        const float value = plugin.parameter(index);
        const auto known = std::find_if(start.begin(), start.end(), [index](const Assignment& one) {
            return one.index == index;
        });
        if (value != (known == start.end() ? parameters.initialValue(index) : known->value))
            add("--set", settingText(parameters, index, value));
    }
    const auto file = [](const std::string& path, const char* name) {
        const std::string guard = path.size() > 1 && path[0] == '-' ? "./" : "";
        return " " + (path.empty() ? std::string(name) : shellWord(guard + path));
    };
    return line + file(options.input, "IN") + file(options.output, "OUT");
}

PresetSlot presetOf(host::Plugin& plugin)
{
    PresetSlot preset{};
    setName(preset, plugin.programName().c_str());
    for (unsigned id = 0; id < kPresetParamCount; ++id)
        setValue(preset, id, plugin.parameter(static_cast<VstInt32>(id)));
    return preset;
}

int runEdit(const EditOptions& options)
{
    checkFiles(options);
    if (options.plugin.size() > 4 && options.plugin.substr(options.plugin.size() - 4) == ".dll")
        throw ToolError(
            "the editor opens in a window of this system: choose a Linux library (.so)");
    // The window system finds the user's input method by the locale. LC_CTYPE leaves numbers alone.
    std::setlocale(LC_CTYPE, "");
    host::NativePlugin plugin(options.plugin);
    Displays displays(options.plugin);
    const auto preset = startingPreset(options.choice, plugin.fields(), displays);
    if (!options.saved.empty() && !preset)
        throw ToolError("--save is for another plug-in than this one");
    std::vector<Assignment> first;
    if (options.choice.made()) {
        first = assignmentsOf(preset);
        plugin.setProgramName(nameOf(*preset));
    }
    if (!options.settings.empty()) {
        ParameterText parameters = openParameterText(options.plugin);
        append(first, parseSettings(options.settings, parameters));
    }
    for (const Assignment& assignment : first)
        plugin.setParameter(assignment.index, assignment.value);
    EditorWindow(plugin, plugin.effectName()).run();

    std::printf("%s\n", renderLine(options, plugin, assignmentsOf(preset)).c_str());
    if (!options.saved.empty())
        writePreset(options.saved, presetOf(plugin), displays);
    if (options.output.empty())
        return 0;
    RenderJob job;
    job.input = options.input;
    job.output = options.output;
    // The progress bar is erased before the remarks are printed.
    const RenderReport report = [&] {
        Progress progress("rendering");
        return render(plugin, job, [&](double fraction) { progress.show(fraction); });
    }();
    return sayRemarks(job, report);
}

}  // namespace

void addEditCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<EditOptions>();
    CLI::App& command =
        *app.add_subcommand("edit",
                            "Open the editor in a window; nothing is played. When it is "
                            "closed, print a call of render with its settings");
    command.add_option("FILE", options->input,
                       "An audio file to render with the settings when the window is closed");
    command
        .add_option("-o,--output", options->output,
                    "The result of that: .wav, .aif, .aiff or .flac")
        ->type_name("FILE");
    command
        .add_option("--save", options->saved,
                    "Write the settings into a preset: .zkr, .fxp, .vstpreset or .json")
        ->type_name("FILE");
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    addPluginOption(command, options->plugin);
    command.callback([options, &command, &action] {
        options->usualPlugin = command.count("--plugin") == 0;
        action = [options] { return runEdit(*options); };
    });
}

}  // namespace tool
