// The controller while the user edits on one thread and the host sets states on another.
#include "tests/presets/ControllerProbe.h"
#include "tests/support/Times.h"

#include "public.sdk/source/common/memorystream.h"

#include <future>
#include <map>
#include <random>

namespace {

struct ControllerThreads : testing::Test {
    // What an editor's control calls.
    void edit(ParamID id, ParamValue value)
    {
        controller.setParamNormalized(id, value);
        controller.performEdit(id, value);
    }
    platform::MemoryStore store;
    ControllerProbe controller{store};
};

TEST_F(ControllerThreads, AnEditorIsNotifiedOnlyOnItsOwnThreadAndFinallyOfTheLastValue)
{
    EditorProbe editor(&controller);
    controller.editorAttached(&editor);
    const auto elsewhere = [](const std::function<void()>& call) { std::thread(call).join(); };
    elsewhere([&] {
        for (const double value : {0.25, 0.75})
            for (const ParamID id : {kHGainL, kLGainR})
                controller.setParamNormalized(id, value);
        controller.setParamNormalized(kLatency, 0.002);
        for (const double value : {1.0, 0.0})
            controller.setParamNormalized(1002, value);
    });
    EXPECT_TRUE(editor.told.empty());
    controller.setParamNormalized(kLatency, 0.0);
    controller.setParamNormalized(kHGainL, 0.5);
    controller.setParamNormalized(kHGainR, 1.5);
    EXPECT_EQ(std::exchange(editor.told, {}),
              (Values{{kLatency, 0.0}, {kHGainL, 0.5}, {kHGainR, 1.0}}));
    controller.holdEditors();
    controller.holdEditors();
    controller.setParamNormalized(kMS, 1.0);
    elsewhere([&] { controller.releaseEditors(); });
    EXPECT_TRUE(editor.told.empty());
    controller.releaseEditors();
    EXPECT_EQ(std::exchange(editor.told, {}), (Values{{kMS, 1.0}, {kLGainR, 0.75}, {1002, 0.0}}));
    controller.holdEditors();
    elsewhere([&] {
        controller.setParamNormalized(kMS, 0.0);
        controller.releaseEditors();
    });
    EXPECT_TRUE(editor.told.empty());
    editor.takeUpPostponed();
    editor.takeUpPostponed();
    EXPECT_EQ(editor.told, (Values{{kMS, 0.0}}));
    controller.editorRemoved(&editor);
}

TEST_F(ControllerThreads, AnEditorThatAnotherOneClosesIsNotNotified)
{
    for (const bool held : {false, true}) {
        EditorProbe closing(&controller), closed(&controller);
        closing.onTold = [&] { controller.editorRemoved(&closed); };
        controller.editorAttached(&closing);
        controller.editorAttached(&closed);
        if (held)
            controller.holdEditors();
        controller.setParamNormalized(kMS, 1.0);
        if (held)
            controller.releaseEditors();
        EXPECT_EQ(closing.told, (Values{{kMS, 1.0}}));
        EXPECT_EQ(closed.told, Values());
        controller.editorRemoved(&closing);
    }
}

TEST_F(ControllerThreads, AnEditorEndsWithTheNewerOfTwoValues)
{
    EditorProbe editor(&controller);
    controller.editorAttached(&editor);
    std::future<void> other;
    controller.afterRead = [&, first = true](ParamID) mutable {
        if (std::this_thread::get_id() != editor.thread || !std::exchange(first, false))
            return;
        other = std::async(std::launch::async,
                           [this] { controller.setParamNormalized(kLGainL, 0.75); });
        other.wait_for(std::chrono::milliseconds(50));
    };
    controller.setParamNormalized(kLGainL, 0.25);
    other.wait();
    editor.takeUpPostponed();
    EXPECT_EQ(editor.told.back(), Values::value_type(kLGainL, 0.75));
    controller.editorRemoved(&editor);
}

TEST_F(ControllerThreads, TheHostEndsWithTheNewerOfTwoValues)
{
    controller.host.onEdit = [this, first = true](ParamID) mutable {
        if (std::exchange(first, false))
            std::thread([this] { edit(kLGainL, 0.75); }).join();
    };
    edit(kLGainL, 0.25);
    EXPECT_EQ(controller.getParamNormalized(kLGainL), 0.75);
    EXPECT_EQ(controller.host.edits.back(), Values::value_type(kLGainL, 0.75));
}

TEST_F(ControllerThreads, EndWithTheSameValuesInHostParameterAndPreset)
{
    MemoryStream states[2];
    for (MemoryStream& state : states) {
        fillWithOddValues(controller);
        controller.setCurrentPreset(&state == states ? 3 : 17);
        controller.getState(&state);
    }
    std::mt19937 random(7);
    std::map<ParamID, double> told;
    for (int round = 0; round < times() / 10; ++round) {
        std::thread other([&] {
            MemoryStream written;
            controller.setState(&states[round % 2]);
            controller.getState(&written);
        });
        for (int i = 0; i < 8; ++i) {
            edit(static_cast<ParamID>(random() % kPresetParamCount),
                 static_cast<double>(random() % 100) / 128.0);
            if (i % 4 == 3)
                controller.setCurrentPreset(static_cast<int32>(random() % 24));
            controller.setCurrentPresetName("Name");
            controller.name(5);
        }
        other.join();
        for (const auto& [id, value] : std::exchange(controller.host.edits, {}))
            told[id] = value;
        controller.host.calls.clear();
        const PresetSlot& preset = controller.preset(controller.getCurrentPreset());
        for (ParamID id = 0; id < kPresetParamCount; ++id) {
            const ParamValue value = controller.getParamNormalized(id);
            ASSERT_EQ(static_cast<float>(value), preset.values[id]) << id << ", round " << round;
            ASSERT_EQ(value, told[id]) << id << ", round " << round;
        }
    }
}

}  // namespace
