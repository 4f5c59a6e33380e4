// zkrt46 edit: the editor in a window, without a host.
#include "tools/audio/Render.h"
#include "tools/commands/Commands.h"
#include "tools/commands/EditorWindow.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/Progress.h"
#include "tools/common/ToolError.h"

#include <cstring>

namespace tool {

namespace {

struct EditOptions {
    std::string plugin, input, output;
    PresetChoice choice;
    std::vector<std::string> settings;
};

int runEdit(const EditOptions& options)
{
    if (options.output.empty() != options.input.empty())
        throw ToolError(options.output.empty() ? "a FILE is of use only with -o OUT"
                                               : "-o needs a FILE to render");
    if (options.plugin.size() > 4 && options.plugin.substr(options.plugin.size() - 4) == ".dll")
        throw ToolError(
            "the editor opens in a window of this system: choose a Linux library (.so)");
    host::NativePlugin plugin(options.plugin);
    Displays displays(options.plugin);
    std::vector<Assignment> start;
    if (options.choice.made()) {
        const auto preset = startingPreset(options.choice, plugin.fields(), displays);
        start = assignmentsOf(preset);
        if (preset)
            plugin.setProgramName(
                std::string(preset->name, strnlen(preset->name, kPresetNameSize)));
    }
    if (!options.settings.empty()) {
        ParameterText parameters = openParameterText(options.plugin);
        append(start, parseSettings(options.settings, parameters));
    }
    for (const Assignment& assignment : start)
        plugin.setParameter(assignment.index, assignment.value);
    EditorWindow(plugin, plugin.effectName()).run();

    if (options.output.empty())
        return 0;
    RenderJob job;
    job.input = options.input;
    job.output = options.output;
    Progress progress("rendering");
    render(plugin, job, [&](double fraction) { progress.show(fraction); });
    return 0;
}

}  // namespace

void addEditCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<EditOptions>();
    CLI::App& command =
        *app.add_subcommand("edit", "Open the editor in a window; nothing is played");
    command.add_option("FILE", options->input,
                       "An audio file to render with the settings when the window is closed");
    command
        .add_option("-o,--output", options->output,
                    "The result of that: .wav, .aif, .aiff or .flac")
        ->type_name("FILE");
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    addPluginOption(command, options->plugin);
    command.callback([options, &action] { action = [options] { return runEdit(*options); }; });
}

}  // namespace tool
