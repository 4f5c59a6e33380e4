// The tool's .vstpreset files in a host that reads and writes them with the SDK's own class.
#include "tools/banks/PresetFile.h"
#include "presets/FactoryBank.h"
#include "params/ids/ClassIds.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/vst3/Host.h"
#include "tools/banks/HostFile.h"

#include "public.sdk/source/vst/vstpresetfile.h"

#include <cstring>

using namespace vst3;

namespace {

struct PresetFiles : testing::Test {
    Module module;
    Instance plugin{module};
    TemporaryFolder folder;
    tool::Displays displays{""};

    void expectValues(const PresetSlot& preset)
    {
        for (ParamID id = 0; id < kPresetParamCount; ++id)
            EXPECT_EQ(plugin.controller->getParamNormalized(id),
                      static_cast<ParamValue>(preset.values[id]))
                << id;
    }
    // The preset in a file that the host saves.
    PresetSlot saved(IEditController* controller)
    {
        MemoryStream stream;
        EXPECT_TRUE(PresetFile::savePreset(&stream, kProcessorId, plugin.component, controller));
        writeContent(folder / "Mine.vstpreset",
                     std::string(stream.getData(), static_cast<std::size_t>(stream.getSize())));
        return tool::readPreset(folder / "Mine.vstpreset", displays);
    }
};

}  // namespace

TEST_F(PresetFiles, AreReadAndWrittenByTheSdk)
{
    const PresetSlot& preset = factoryBank()[19];
    plugin.setHandler();
    plugin.connect();
    std::vector<std::uint8_t> file = tool::vstPresetBytes(tool::presetBytes(preset), preset);
    MemoryStream stream(file.data(), static_cast<TSize>(file.size()));
    ASSERT_TRUE(PresetFile::loadPreset(&stream, kProcessorId, plugin.component, plugin.controller));
    expectValues(preset);
    plugin.controller->setParamNormalized(kLGainL, 0.75);
    for (const bool controllerToo : {true, false}) {
        const PresetSlot read = saved(controllerToo ? plugin.controller.get() : nullptr);
        EXPECT_STREQ(read.name, controllerToo ? preset.name : "Mine");
        expectValues(read);
    }
}

// A host that does not give the controller its own part.
TEST_F(PresetFiles, HaveTheValuesInTheProcessorsPartToo)
{
    const PresetSlot& preset = factoryBank()[3];
    std::vector<std::uint8_t> file = tool::vstPresetBytes(tool::presetBytes(preset), preset);
    MemoryStream stream(file.data(), static_cast<TSize>(file.size()));
    PresetFile reader(&stream);
    ASSERT_TRUE(reader.readChunkList() && reader.restoreComponentState(plugin.controller.get()));
    expectValues(preset);
}
