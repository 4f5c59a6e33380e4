// The editor calls of a VST 2 host, with a mock view that records its calls.
#include "tests/sdk/FakePlugin.h"

#include "public.sdk/source/common/pluginview.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace fake;

namespace {

// Initially 394 pixels wide.
class FakeView : public CPluginView {
public:
    explicit FakeView(Calls& log) : calls(log) { rect = ViewRect(0, 0, 394, 505); }

    tresult PLUGIN_API isPlatformTypeSupported(FIDString) override { return kResultTrue; }
    tresult PLUGIN_API attached(void* parent, FIDString type) override
    {
        calls.push_back("attached");
        const IPtr<FakeView> alive(this);
        if (wishedAtFirst)
            wish(wishedAtFirst);
        return CPluginView::attached(parent, type);
    }
    tresult PLUGIN_API removed() override
    {
        calls.push_back(plugFrame ? "removed with a frame" : "removed");
        return CPluginView::removed();
    }
    tresult PLUGIN_API onSize(ViewRect* size) override
    {
        calls.push_back("size " + std::to_string(size->getWidth()));
        return CPluginView::onSize(size);
    }
    tresult PLUGIN_API onKeyDown(char16 key, int16 message, int16 modifiers) override
    {
        calls.push_back("key " + std::to_string(key) + " " + std::to_string(message) + " "
                        + std::to_string(modifiers));
        return kResultTrue;
    }
    tresult PLUGIN_API onWheel(float distance) override
    {
        calls.push_back("wheel " + std::to_string(distance));
        return kResultTrue;
    }
    tresult wish(int32 width)
    {
        ViewRect wanted(0, 0, width, 505);
        return plugFrame->resizeView(this, &wanted);
    }

    int32 wishedAtFirst = 0;

private:
    Calls& calls;
};

struct WrappedEditor : testing::Test {
    WrappedEditor()
    {
        plugin.makeView = [this] { return shown = new FakeView(calls); };
        host = std::make_unique<Host>(plugin);
    }

    int width()
    {
        ERect* rect = nullptr;
        EXPECT_EQ(host->call(effEditGetRect, 0, 0, &rect), 1);
        return rect->right - rect->left;
    }
    VstIntPtr openWindow() { return host->call(effEditOpen, 0, 0, &window); }

    Plugin plugin;
    Calls calls;
    FakeView* shown = nullptr;
    std::unique_ptr<Host> host;
    int window = 0;
};

TEST_F(WrappedEditor, OpensAndClosesInEveryOrderThatHostsUse)
{
    EXPECT_NE(host->effect->flags & effFlagsHasEditor, 0);
    EXPECT_EQ(width(), 394);
    host->call(effEditClose);
    EXPECT_TRUE(calls.empty()) << "removed() was called though the view was never attached";
    EXPECT_EQ(openWindow(), 1);
    EXPECT_EQ(openWindow(), 1);
    host->call(effEditClose);
    host->call(effEditClose);
    EXPECT_EQ(calls, (Calls{"attached", "removed", "attached", "removed"}));
    EXPECT_EQ(host->call(effEditOpen, 0, 0, nullptr), 0);
    EXPECT_EQ(host->call(effEditGetRect, 0, 0, nullptr), 0);

    calls.clear();
    openWindow();
    host.reset();
    EXPECT_EQ(calls, (Calls{"attached", "removed"})) << "an effect was closed with its window open";
}

TEST_F(WrappedEditor, EveryChangeOfSizeReachesHostAndViewWhateverTheHostAnswers)
{
    width();
    openWindow();
    for (const int32 wanted : {644, 394, 894, 394, 394})
        EXPECT_EQ(shown->wish(wanted), kResultTrue);
    EXPECT_EQ(calls, (Calls{"attached", "size 644", "size 394", "size 894", "size 394"}));
    EXPECT_EQ(host->timesAsked(audioMasterSizeWindow), 4);
    EXPECT_EQ(host->log.back().index, 394);
    EXPECT_EQ(width(), 394);
}

TEST_F(WrappedEditor, ViewIsRemovedOnceWhenTheHostClosesItInACallForASize)
{
    host->onAsked = [&](VstInt32 opcode) {
        if (opcode == audioMasterSizeWindow)
            host->call(effEditClose);
    };
    width();
    shown->wishedAtFirst = 644;
    EXPECT_EQ(openWindow(), 0) << "the editor is closed already";
    EXPECT_EQ(calls, (Calls{"attached", "removed"}));
    calls.clear();
    EXPECT_EQ(openWindow(), 1);
    shown->wish(644);
    host->call(effEditClose);
    EXPECT_EQ(calls, (Calls{"attached", "removed"}));
}

TEST_F(WrappedEditor, KeysArriveWithTheirModifiers)
{
    EXPECT_EQ(host->call(effEditKeyDown, 'x', 0, nullptr, 0.0f), 0) << "there is no view yet";
    openWindow();
    calls.clear();
    EXPECT_EQ(host->call(effEditKeyDown, 'x', 0, nullptr, 1.0f), 1);
    host->call(effEditKeyDown, 0, 4, nullptr, 8.0f);         // Return with Ctrl
    host->call(effEditKeyDown, 0, 128 + 17, nullptr, 4.0f);  // A with the Windows key
    host->call(effEditKeyDown, 0, 7);                        // the space bar
    EXPECT_EQ(calls, (Calls{"key 120 0 1", "key 0 4 4", "key 65 145 8", "key 32 7 0"}));
}

// "stCA" and "stCa" with "FUID" and "Whee".
TEST_F(WrappedEditor, TheWheelTheComponentsIdAndTheKnobModeHaveCallsOfTheirOwn)
{
    openWindow();
    for (const VstInt32 wrapperCall : {0x73744341, 0x73744361}) {
        SCOPED_TRACE(wrapperCall);
        calls.clear();
        TUID id{};
        EXPECT_EQ(host->call(effVendorSpecific, wrapperCall, 0x46554944, id), 1);
        EXPECT_EQ(std::memcmp(id, plugin.componentId, sizeof id), 0);
        EXPECT_EQ(host->call(effVendorSpecific, wrapperCall, 0x46554944), 0);
        EXPECT_EQ(host->call(effVendorSpecific, wrapperCall, 0x57686565, nullptr, 1.5f), 1);
        EXPECT_EQ(calls, (Calls{"wheel 1.500000"}));
    }
    EXPECT_EQ(host->call(effVendorSpecific, 0x73744300, 0x57686565, nullptr, 1.5f), 0);
    for (const VstIntPtr mode : {kRelativCircularMode, kLinearMode}) {
        EXPECT_EQ(host->call(effSetEditKnobMode, 0, mode), 1);
        EXPECT_EQ(EditController::getHostKnobMode(), mode);
    }
    EXPECT_EQ(host->call(effSetEditKnobMode, 0, 3), 0);
    host->call(effSetEditKnobMode, 0, kCircularMode);
}

}  // namespace
