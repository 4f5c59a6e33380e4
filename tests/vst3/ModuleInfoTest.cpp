// moduleinfo.json in the bundle, which hosts read instead of loading the library.
#include "tests/vst3/Host.h"

#include <nlohmann/json.hpp>

#include <fstream>

using namespace vst3;

TEST(ModuleInfo, DescribesTheClassesAsTheFactoryDoes)
{
    const Module module;
    std::ifstream file(ZKR_VST3_BUNDLE "/Contents/Resources/moduleinfo.json");
    const auto described = nlohmann::json::parse(file);
    PFactoryInfo maker;
    ASSERT_EQ(module.factory->getFactoryInfo(&maker), kResultOk);
    EXPECT_EQ(described["Factory Info"]["Vendor"], maker.vendor);
    EXPECT_EQ(described["Factory Info"]["URL"], maker.url);
    EXPECT_EQ(described["Factory Info"]["E-Mail"], maker.email);
    EXPECT_EQ(described["Factory Info"]["Flags"]["Unicode"],
              (maker.flags & PFactoryInfo::kUnicode) != 0);

    ASSERT_EQ(static_cast<int32>(described["Classes"].size()), module.factory->countClasses());
    for (int32 i = 0; i < module.factory->countClasses(); ++i) {
        const auto& one = described["Classes"][static_cast<std::size_t>(i)];
        PClassInfo2 info;
        ASSERT_EQ(module.factory->getClassInfo2(i, &info), kResultOk);
        char id[33];
        FUID::fromTUID(info.cid).toString(id);
        EXPECT_EQ(one["CID"], id);
        EXPECT_EQ(one["Name"], info.name);
        // Hosts find a class's picture by its id, and list what has one.
        nlohmann::json pictures = nlohmann::json::array();
        if (std::string(info.category) == kVstAudioEffectClass)
            pictures = {{{"Scale Factor", 1},
                         {"Path", std::string("Contents/Resources/Snapshots/") + id +
                                      "_snapshot.png"}}};
        EXPECT_EQ(one["Snapshots"], pictures);
        // A class without a vendor has that of the factory.
        EXPECT_EQ(one["Vendor"], *info.vendor ? info.vendor : maker.vendor);
        EXPECT_EQ(one["Category"], info.category);
        EXPECT_EQ(one["Version"], info.version);
        EXPECT_EQ(described["Version"], info.version);
        EXPECT_EQ(one["SDKVersion"], info.sdkVersion);
        EXPECT_EQ(one["Class Flags"], info.classFlags);
        EXPECT_EQ(one["Cardinality"], info.cardinality);
        std::string categories;
        for (const auto& word : one["Sub Categories"])
            categories += (categories.empty() ? "" : "|") + word.get<std::string>();
        EXPECT_EQ(categories, info.subCategories);
    }
}
