// Vst2Wrapper: the state as bytes, good and damaged, and its way back into force.
#include "FakePlugin.h"

#include <gtest/gtest.h>

#include <new>

using namespace fake;

namespace {

struct WrappedState : testing::Test {
    Plugin plugin;
    Host host{plugin};
    // Level 0x33, Switch 0xFF, Long 0x00, Beyond 0xCC; no component state.
    const std::string good{"\0\0\0\0\0\0\0\0\4\0\0\0\0\0\0\0\x33\xFF\0\xCC", 20};
};

TEST_F(WrappedState, BytesAreTwoLittleEndianSizesAndTheTwoStates)
{
    host.set(0, 0.2f);
    host.set(2, 0.0f);
    host.set(3, 0.8f);
    EXPECT_EQ(host.chunk(0), good) << "values that wait for the controller belong to the state";
    EXPECT_EQ(host.chunk(1), good);
    plugin.componentState = "abc";
    EXPECT_EQ(host.chunk(), '\3' + good.substr(1, 15) + "abc" + good.substr(16));
    plugin.controllerState = std::string(0x10203, 'k');
    EXPECT_EQ(host.chunk(),
              std::string("\3\0\0\0\0\0\0\0\3\2\1\0\0\0\0\0abc", 19) + *plugin.controllerState);

    plugin.componentState = "";
    plugin.controllerState = "";
    void* data = this;
    EXPECT_EQ(host.call(effGetChunk, 0, 0, &data), 0);
    EXPECT_EQ(data, this) << "there is no state, and yet the host's pointer was changed";
}

TEST_F(WrappedState, ARestoredStateIsInForceBeforeTheNextBlockAndIsNoAutomation)
{
    host.block();
    host.set(0, 0.9f);
    host.restore(good);
    EXPECT_EQ(host.block(),
              (Values{{kLevelId, 0.2}, {kSwitchId, 1.0}, {kLongId, 0.0}, {kBeyondId, 0.8}}));
    EXPECT_EQ(host.get(3), 0.8f);
    host.call(effEditIdle);
    EXPECT_EQ(host.controller->getParamNormalized(kLevelId), 0.2)
        << "an older host value came back";
    ASSERT_EQ(host.log.size(), 1u);
    EXPECT_EQ(host.log[0].opcode, audioMasterUpdateDisplay);

    host.controller->edit(kLevelId, 0.5);
    EXPECT_EQ(host.timesAsked(audioMasterAutomate), 1) << "edits stay silent after a restore";
}

TEST_F(WrappedState, BothPartsGoToTheirHalvesEachWithItsOwnBytes)
{
    host.restore(std::string("\3\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0abc\xFF\x33rest", 25));
    EXPECT_EQ(host.component->restored, "abc");
    EXPECT_EQ(host.controller->restored, "\xFF\x33");
    host.restore(std::string("\2\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0de", 18));
    EXPECT_EQ(host.component->restored, "de");
    EXPECT_EQ(host.controller->statesGiven, 1) << "an absent part was handed on";
}

TEST_F(WrappedState, BytesCutOffAnywhereOrWithSizesThatDoNotFitChangeNothing)
{
    host.block();
    plugin.componentState = "abc";
    const std::string full = host.chunk();
    for (std::size_t size = 0; size < full.size(); ++size) {
        // A copy of just that size, so that a read past its end is found out.
        std::unique_ptr<char[]> bytes(new char[size + (size == 0)]);
        std::copy_n(full.data(), size, bytes.get());
        host.call(effSetChunk, 0, static_cast<VstIntPtr>(size), bytes.get());
    }
    for (const std::size_t sizeField : {0u, 8u})
        for (std::size_t byte = 0; byte < 8; ++byte)
            for (const char wrong : {'\x7F', '\x80', '\xFF'}) {
                std::string bytes = full;
                bytes[sizeField + byte] = wrong;
                host.restore(bytes);
            }
    std::string bytes = full;
    for (const VstIntPtr size : {VstIntPtr{-1}, VstIntPtr{1} << 33})
        host.call(effSetChunk, 0, size, &bytes[0]);
    host.call(effSetChunk, 0, 20, nullptr);
    EXPECT_EQ(host.controller->statesGiven, 0);
    EXPECT_EQ(host.component->restored, "");
    EXPECT_TRUE(host.log.empty());
    EXPECT_EQ(host.block(), Values());
    host.restore(full);
    EXPECT_EQ(host.controller->statesGiven, 1);
}

TEST_F(WrappedState, AStateThatEndsInAnExceptionDoesNotSilenceLaterEdits)
{
    plugin.whileStateIsSet = [] { throw std::bad_alloc(); };
    host.restore(good);
    host.controller->edit(kLevelId, 0.5);
    EXPECT_EQ(host.timesAsked(audioMasterAutomate), 1);
}

}  // namespace
