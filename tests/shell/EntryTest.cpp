// The entry functions, linked in: the effects they make and the factory behind them.
#include "shell/EntryPoints.h"
#include "shell/PluginFactory.h"

#include <gtest/gtest.h>

#include <cstring>

using Steinberg::gPluginFactory;

namespace {

int callsBeforeReturn = 0;

template <VstIntPtr version>
VstIntPtr hostOfVersion(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                        void* pointer, float option)
{
    if (opcode == audioMasterVersion) {
        EXPECT_EQ(effect, nullptr);
        EXPECT_EQ(index, 0);
        EXPECT_EQ(value, 0);
        EXPECT_EQ(pointer, nullptr);
        EXPECT_EQ(option, 0.0f);
        return version;
    }
    ++callsBeforeReturn;
    return 0;
}

}  // namespace

// A single test, since the factory lives until the process ends: the order of the calls matters.
TEST(Entry, MakesEffectsThatShareOneFactoryWhichOutlivesThem)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ExitDll());
        EXPECT_TRUE(InitDll());
    }
    EXPECT_EQ(VSTPluginMain(nullptr), nullptr);
    EXPECT_EQ(VSTPluginMain(hostOfVersion<0>), nullptr);
    EXPECT_EQ(gPluginFactory, nullptr) << "a host without a version makes nothing";

    AEffect* first = VSTPluginMain(hostOfVersion<2400>);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(callsBeforeReturn, 0) << "the host does not know the effect yet";
    auto* const factory = gPluginFactory;
    ASSERT_NE(factory, nullptr);
    AEffect* second = VSTPluginMain(hostOfVersion<2400>);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(gPluginFactory, factory);
    EXPECT_NE(first, second);

    EXPECT_EQ(first->dispatcher(first, effClose, 0, 0, nullptr, 0.0f), 1);
    EXPECT_EQ(second->dispatcher(second, effClose, 0, 0, nullptr, 0.0f), 1);
    EXPECT_EQ(gPluginFactory, factory);
    ExitDll();
    EXPECT_EQ(factory->countClasses(), 2);
}

// Hosts' projects refer to the classes by these identifiers.
TEST(Factory, StoresItsClassIdentifiersInTheSystemsByteOrder)
{
    using namespace Steinberg;
    IPluginFactory* factory = getFactory();
    PClassInfo2 processor;
    ASSERT_EQ(gPluginFactory->getClassInfo2(0, &processor), kResultOk);
    EXPECT_STREQ(processor.category, "Audio Module Class");
#ifdef _WIN32
    // 6F75E1E9 4807310A ... in the byte order of a Windows GUID.
    const unsigned char bytes[] = {0xE9, 0xE1, 0x75, 0x6F, 0x07, 0x48, 0x0A, 0x31};
#else
    const unsigned char bytes[] = {0x6F, 0x75, 0xE1, 0xE9, 0x48, 0x07, 0x31, 0x0A};
#endif
    EXPECT_EQ(std::memcmp(processor.cid, bytes, sizeof bytes), 0);
    factory->release();
}
