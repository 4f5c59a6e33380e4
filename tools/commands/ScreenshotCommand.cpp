// zkrt46 screenshot: a picture of the editor, drawn without a display.
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ToolError.h"
#include "tools/host/OpenPlugin.h"

#include "editor/TemplateEditor.h"
#include "params/PitchNamesController.h"
#include "platform/MemoryStore.h"

#include "vstgui/platform/offscreen/offscreenhost.h"

#include <cairo.h>

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
    writeFile(options.output, asPng(pixels));
    std::printf("%s: %d x %d\n", options.output.c_str(), pixels.width, pixels.height);
    return 0;
}

}  // namespace

void addScreenshotCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<ScreenshotOptions>();
    CLI::App& command = *app.add_subcommand("screenshot", "Draw the editor into a PNG file");
    command.add_option("-o,--output", options->output, "The picture: .png")
        ->type_name("FILE")
        ->required();
    addPresetOptions(command, options->choice);
    addSetOption(command, options->settings);
    command.add_flag("--info", options->info, "With the panel about the product open");
    addPluginOption(command, options->plugin);
    command.callback(
        [options, &action] { action = [options] { return runScreenshot(*options); }; });
}

}  // namespace tool
