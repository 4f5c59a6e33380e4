// The bytes of bank and preset files, and where the files are stored.
#include "platform/Files.h"
#include "tests/presets/ControllerProbe.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

struct BankFiles : testing::Test {
    BankFiles()
    {
        fillWithOddValues(controller);
        controller.setCurrentPreset(3);
    }

    std::string lastFile()
    {
        return std::string(controller.getCurrDir()) + controller.getCurrBank();
    }

    TemporaryFolder folder{u8" Größe 音"};
    platform::MemoryStore store;
    ControllerProbe controller{store};
};

TEST_F(BankFiles, HoldHeaderAndRecordsAtTheirOffsets)
{
    handmade::Image bank, preset;
    const auto add = [this](handmade::Image& image, unsigned index, int32 from) {
        image.name(index, "Odd " + std::to_string(from));
        for (unsigned id = 0; id < 58; ++id)
            image.value(index, id, controller.preset(from).values[id]);
    };
    for (unsigned index = 0; index < 24; ++index)
        add(bank, index, static_cast<int32>(index));
    // A preset's image has index 0 whatever its place in the bank.
    add(preset, 0, 3);
    EXPECT_EQ(controller.bankImage(), bank.finish(handmade::kBank, 3));
    EXPECT_EQ(controller.presetImage(), preset.finish(handmade::kPreset));
}

struct HidingController : ControllerProbe {
    using ControllerProbe::ControllerProbe;
    bool isParameterHidden(ParamID id) override { return id == kChannel || id == kHGainR2; }
};

TEST_F(BankFiles, LeaveHiddenParametersOutOfRecordsAndCounts)
{
    HidingController hiding(store);
    fillWithOddValues(hiding);
    Bytes bank, preset;
    EXPECT_EQ(hiding.serializeBank(bank), 41 + 24 * (168 + 56 * 32));
    EXPECT_EQ(hiding.serializePreset(preset), 41 + 168 + 56 * 32);
    EXPECT_EQ(readHeader(bank.data()).recordCount, 24 * 57);
    EXPECT_EQ(readHeader(preset.data()).recordCount, 57);
    EXPECT_EQ(static_cast<std::size_t>(readHeader(bank.data()).payloadSize), bank.size() - 41);
    hiding.storeDefaultBank();
    ControllerProbe next(store);
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        EXPECT_EQ(next.preset(9).values[id],
                  (hiding.isParameterHidden(id) ? factoryBank()[0] : hiding.preset(9)).values[id]);
}

TEST_F(BankFiles, AreStoredAtTheirPathAndTheFolderIsRemembered)
{
    const auto saved = [this](const std::string& name) {
        const std::string content = contentOf(folder / name);
        return Bytes(content.begin(), content.end());
    };
    controller.saveBank((folder / "first.zkb").c_str());
    EXPECT_EQ(lastFile(), folder / "first.zkb");
    fs::current_path(fs::temp_directory_path());
    controller.savePreset((folder / "one.zkr").c_str());
    EXPECT_EQ(saved("one.zkr"), controller.presetImage());
    EXPECT_STREQ(controller.getCurrPreset(), "one.zkr");
    EXPECT_TRUE(fs::equivalent(fs::current_path(), folder.path()))
        << "the working folder is not that of the file";

    // For a name without a separator the last file is used.
    fs::remove(fs::u8path(folder / "first.zkb"));
    controller.saveBank("ignored.zkb");
    EXPECT_EQ(saved("first.zkb"), controller.bankImage());
    // The longest name that file systems allow.
    const std::string longName = std::string(251, 'n') + ".zkb";
    controller.saveBank((folder / longName).c_str());
    EXPECT_EQ(saved(longName), controller.bankImage());

    controller.loadPreset((folder / "one.zkr").c_str(), false);
    EXPECT_EQ(lastFile(), folder / longName);
    controller.loadBank((folder / "first.zkb").c_str(), false);
    EXPECT_EQ(lastFile(), folder / "first.zkb");

    controller.host.calls.clear();
    const std::string nowhere = folder / "no such folder" + platform::kPathSeparator + "x.zkb";
    for (const std::string& missing : {nowhere, folder / "missing.zkb"})
        controller.loadBank(missing.c_str(), false);
    controller.saveBank(nowhere.c_str());
    controller.loadBank(nullptr, false);
    controller.saveBank(nullptr);
    EXPECT_TRUE(controller.host.calls.empty());
    EXPECT_EQ(folder.count(), 3) << "something was left behind";
}

TEST_F(BankFiles, InAFolderWithTooLongAPathDoNotReplaceTheRememberedOne)
{
    if (platform::kPathSeparator == '\\')
        GTEST_SKIP() << "Windows cannot enter such a folder";
    const std::string first = folder / "first.zkb", part = '/' + std::string(120, 'f');
    const std::string far = folder.path().u8string() + part + part + part;
    fs::create_directories(far);
    controller.saveBank(first.c_str());
    controller.preset(0).values[0] = 0.125f;
    controller.saveBank((far + "/far.zkb").c_str());
    controller.loadBank(first.c_str(), false);
    controller.loadBank((far + "/far.zkb").c_str(), false);
    EXPECT_EQ(controller.preset(0).values[0], 0.125f);
    EXPECT_EQ(lastFile(), first);
}

}  // namespace
