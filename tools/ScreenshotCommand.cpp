// zkrt46 screenshot: a picture of the editor, drawn without a display.
#include "Commands.h"
#include "OpenPlugin.h"
#include "OutputFile.h"
#include "PresetChoice.h"

#include "MemoryStore.h"
#include "PitchNamesController.h"
#include "TemplateEditor.h"

#include "vstgui/platform/offscreen.h"

#include <cstdio>
#include <cstring>

namespace tool {

namespace {

using Steinberg::Vst::PitchNamesController;
using Steinberg::Vst::TemplateEditor;

struct ScreenshotOptions {
    std::string output, plugin;
    PresetChoice choice;
    std::vector<std::string> settings;
    bool info = false;
};

// A controller of its own, with nothing of the user's settings.
class EditorPicture {
public:
    EditorPicture()
        : controller(Steinberg::owned(new PitchNamesController(store, TemplateEditor::create)))
    {
        controller->initialize(nullptr);
    }
    ~EditorPicture()
    {
        if (view) {
            view->removed();
            view = nullptr;
        }
        controller->terminate();
    }

    void load(const PresetSlot& preset)
    {
        controller->setCurrentPresetName(
            std::string(preset.name, strnlen(preset.name, kPresetNameSize)).c_str());
        for (unsigned id = 0; id < kPresetParamCount; ++id)
            set(static_cast<int>(id), preset.values[id]);
    }
    void set(int id, float value)
    {
        controller->setParamNormalized(static_cast<Steinberg::Vst::ParamID>(id),
                                       static_cast<double>(value));
    }
    VSTGUI::Pixels draw(bool withInfo)
    {
        view = Steinberg::owned(controller->createView(Steinberg::Vst::ViewType::kEditor));
        view->attached(host.parentWindow(), Steinberg::kPlatformTypeX11EmbedWindowID);
        if (withInfo) {
            const VSTGUI::CPoint infoButton(host.frameSize().x - 60, 471);
            host.mouseDown(infoButton);
            host.mouseUp(infoButton);
        }
        return host.paint();
    }

private:
    platform::MemoryStore store;
    VSTGUI::OffscreenHost host;
    Steinberg::IPtr<PitchNamesController> controller;
    Steinberg::IPtr<Steinberg::IPlugView> view;
};

int runScreenshot(const ScreenshotOptions& options)
{
    EditorPicture picture;
    Displays displays(options.plugin);
    if (options.choice.made())
        picture.load(chosenPreset(options.choice, displays));
    if (!options.settings.empty()) {
        ParameterText parameters = openParameterText(options.plugin);
        for (const Assignment& assignment : parseSettings(options.settings, parameters))
            picture.set(assignment.index, assignment.value);
    }
    const VSTGUI::Pixels pixels = picture.draw(options.info);
    const std::vector<std::uint8_t> png = VSTGUI::encodePng(pixels);
    writeFile(options.output, std::string(png.begin(), png.end()));
    std::printf("%s: %d x %d\n", options.output.c_str(), pixels.width, pixels.height);
    return 0;
}

}  // namespace

void addScreenshotCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<ScreenshotOptions>();
    CLI::App& command = *app.add_subcommand("screenshot", "Draw the editor into a PNG file");
    command.add_option("-o,--output", options->output, "The picture")->required();
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    command.add_flag("--info", options->info, "With the panel about the product open");
    addPluginOption(command, options->plugin);
    command.callback(
        [options, &action] { action = [options] { return runScreenshot(*options); }; });
}

}  // namespace tool
