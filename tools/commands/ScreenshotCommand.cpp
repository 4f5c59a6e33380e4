// zkrt46 screenshot: a picture of the editor; the tool's own, drawn without a display, or that of a
// library, in a window.
#include "tools/banks/PresetName.h"
#include "tools/commands/Commands.h"
#include "tools/commands/EditorWindow.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ToolError.h"
#include "tools/host/BridgedPlugin.h"
#include "tools/host/OpenPlugin.h"

#include "editor/TemplateEditor.h"
#include "params/PitchNamesController.h"
#include "platform/MemoryStore.h"

#include "vstgui/platform/offscreen/offscreenhost.h"

#include <cairo.h>

#include <cstdio>
#include <cstring>
#include <filesystem>

#include <strings.h>

namespace tool {

namespace {

using Steinberg::Vst::PitchNamesController;
using Steinberg::Vst::TemplateEditor;

struct ScreenshotOptions {
    std::string output, plugin;
    PresetChoice choice;
    std::vector<std::string> settings;
    bool ofPlugin = false;  // --plugin is given
    bool info = false;
};

// An editor drawn in memory, with a controller of its own that does not read the user's settings.
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

// As an opaque PNG.
std::string asPng(const VSTGUI::Pixels& pixels)
{
    using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
    const Surface surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels.width, pixels.height),
        cairo_surface_destroy);
    const int stride = cairo_image_surface_get_stride(surface.get());
    unsigned char* const rows = cairo_image_surface_get_data(surface.get());
    for (int y = 0; rows && y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x) {
            const VSTGUI::CColor c = pixels.at(x, y);
            const std::uint32_t pixel =
                std::uint32_t{c.red} << 16 | std::uint32_t{c.green} << 8 | std::uint32_t{c.blue};
            std::memcpy(rows + y * stride + x * 4, &pixel, sizeof pixel);
        }
    cairo_surface_mark_dirty(surface.get());
    std::string png;
    const auto append = [](void* text, const unsigned char* bytes, unsigned int size) {
        static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), size);
        return CAIRO_STATUS_SUCCESS;
    };
    if (cairo_surface_write_to_png_stream(surface.get(), append, &png) != CAIRO_STATUS_SUCCESS)
        throw ToolError("the picture could not be made");
    return png;
}

VSTGUI::Pixels ownPicture(const ScreenshotOptions& options)
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
    return picture.draw(options.info);
}

void set(host::Plugin& plugin, const ScreenshotOptions& options)
{
    Displays displays(options.plugin);
    const auto preset = startingPreset(options.choice, plugin.fields(), displays);
    std::vector<Assignment> assignments = assignmentsOf(preset);
    if (preset)
        plugin.setProgramName(nameOf(*preset));
    if (!options.settings.empty()) {
        ParameterText parameters = openParameterText(options.plugin);
        append(assignments, parseSettings(options.settings, parameters));
    }
    for (const Assignment& assignment : assignments)
        plugin.setParameter(assignment.index, assignment.value);
}

// In a window of this display, of a Windows library in one of Wine.
VSTGUI::Pixels pluginPicture(const ScreenshotOptions& options)
{
    const std::unique_ptr<host::Plugin> plugin = host::openPlugin(options.plugin);
    set(*plugin, options);
    if (auto* const native = dynamic_cast<host::NativePlugin*>(plugin.get()))
        return EditorWindow(*native, native->effectName()).picture();
    expectDisplay();
    const host::Picture drawn = dynamic_cast<host::BridgedPlugin&>(*plugin).editorPicture();
    VSTGUI::Pixels pixels(drawn.width, drawn.height);
    const std::uint8_t* pixel = drawn.pixels.data();
    for (int y = 0; y < drawn.height; ++y)
        for (int x = 0; x < drawn.width; ++x, pixel += 4)
            pixels.set(x, y, VSTGUI::CColor(pixel[2], pixel[1], pixel[0]));
    return pixels;
}

int runScreenshot(const ScreenshotOptions& options)
{
    if (strcasecmp(std::filesystem::path(options.output).extension().c_str(), ".png") != 0)
        throw ToolError("'" + options.output + "': a picture's name ends in .png");
    const VSTGUI::Pixels pixels = options.ofPlugin ? pluginPicture(options) : ownPicture(options);
    writeFile(options.output, asPng(pixels));
    std::printf("%s: %d x %d\n", options.output.c_str(), pixels.width, pixels.height);
    return 0;
}

}  // namespace

void addScreenshotCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<ScreenshotOptions>();
    CLI::App& command = *app.add_subcommand(
        "screenshot",
        "Draw the editor into a PNG file: this program's own, which needs no display, or with "
        "--plugin that of the library, in a window on the display");
    command.add_option("-o,--output", options->output, "The picture: .png")
        ->type_name("FILE")
        ->required();
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    CLI::Option* const info = command.add_flag("--info", options->info,
                                               "With the panel about the product open; not with "
                                               "--plugin");
    addPluginOption(command, options->plugin);
    info->excludes(command.get_option("--plugin"));
    command.callback([options, &command, &action] {
        options->ofPlugin = command.count("--plugin") > 0;
        action = [options] { return runScreenshot(*options); };
    });
}

}  // namespace tool
