// Messages between the preset panels of several windows, the controller, the host and the store.
#include "editor/panel/IdleUpdate_ZKR_Handler.h"
#include "tests/editor/EditorStage.h"
#include "tests/presets/HandMadeImages.h"
#include "tests/support/TemporaryFolder.h"

namespace {

// Two windows, and a third editor that records its notifications.
struct Panels : Editor {
    Panels() { controller.editorAttached(&listener); }
    ~Panels() override { controller.editorRemoved(&listener); }
    void TestBody() override { }

    Window second{controller};
    EditorProbe listener{&controller};
};

template <typename View>
View& viewOf(Window& window)
{
    for (uint32_t i = 0; i < window.frame()->getNbViews(); ++i)
        if (auto* const view = dynamic_cast<View*>(window.frame()->getView(i)))
            return *view;
    throw std::runtime_error("the panel is not complete");
}

// The bank changes without notice; then each message must make the panels reread their part of it.
TEST(PresetPanel, EachMessageRefreshesItsPartOfEveryPanel)
{
    struct Row {
        int tag;
        const char *text, *selected, *other;  // of the field and of menu entries 7 and 1
        float value;                          // of the field
    };
    constexpr float kSelected = 8.0f / 24.0f, kTold = 0.25f, kBefore = 1.0f / 24.0f;
    const Row rows[] = {
        {kNameTag, "New", "New", "Fat Kick", kTold},
        {kRecallATag, "New", "New", "Fat Kick", kSelected},
        {kRecallBTag, "New", "New", "Fat Kick", kSelected},
        {kRockerTag, "Drum group", "Drum group", "Fat Kick", kSelected},
        {kMenuTag, "Drum group", "Drum group", "Fat Kick", kSelected},
        {kLoadBankTag, "New", "New", "Another", kSelected},
        {kDefaultBankTag, "New", "New", "Another", kSelected},
        {kDefaultPresetTag, "New", "New", "Another", kSelected},
    };
    for (int tag = 998; tag <= 1021; ++tag) {
        SCOPED_TRACE(tag);
        // All other messages, that of a loaded preset among them, change nothing.
        Row expected{tag, "typed", "Drum group", "Fat Kick", kBefore};
        for (const Row& row : rows)
            if (row.tag == tag)
                expected = row;
        Panels panels;
        panels.controller.setCurrentPreset(7);
        setName(panels.controller.preset(7), "New");
        setName(panels.controller.preset(1), "Another");
        setName(panels.controller.preset(0), "Another");
        for (Window* const window : {panels.window.get(), &panels.second})
            viewOf<VSTGUI::CTextEdit>(*window).setText("typed");
        panels.set(static_cast<ParamID>(tag), static_cast<double>(kTold));
        for (Window* const window : {panels.window.get(), &panels.second}) {
            auto& field = viewOf<VSTGUI::CTextEdit>(*window);
            auto& menu = viewOf<VSTGUI::COptionMenu>(*window);
            EXPECT_EQ(field.platformGetMaxCharacters(), kPresetNameSize);
            EXPECT_STREQ(field.getText(), expected.text);
            EXPECT_EQ(field.getValue(), expected.value);
            EXPECT_STREQ(menu.getEntry(7)->getTitle(), expected.selected);
            EXPECT_STREQ(menu.getEntry(1)->getTitle(), expected.other);
            EXPECT_EQ(std::string(menu.getEntry(0)->getTitle()) == "Another",
                      std::string(expected.other) == "Another");
            const int current = expected.value == kBefore ? 0 : 7;
            EXPECT_EQ(menu.getCurrentIndex(), current);
            EXPECT_EQ(menu.getValue(), static_cast<float>(current));
        }
    }
}

// All names fill their 24 bytes; an action that sets the name again keeps 23 of them.
TEST(PresetPanel, EachActionNotifiesEditorsAndHostAndUpdatesTheStore)
{
    const std::string full(24, 'x'), cut(23, 'x');
    const struct {
        const char* name;
        CPoint where;
        bool twice;
        std::string file;  // chosen in the dialog
        Values told;
        int published;
        std::string preset, offered, stored;
    } rows[] = {
        {"next", {297, 496}, false, "", {{1001, 0}}, 1, cut, "", ""},
        {"previous", {276, 496}, false, "", {{1001, 0}}, 1, cut, "", ""},
        {"menu", {264, 494}, false, "", {{1012, 0}}, 1, "LowFi Bass", "", ""},
        {"name", {197, 496}, false, "", {{1000, 1 / 24.0f}}, 0, "Typed", "", ""},
        {"load bank", {59, 496}, false, "1.zkb", {{1002, 0}, {1002, 0}}, 2, "Preset 1-0", "", ""},
        {"load no bank", {59, 496}, false, "", {{1002, 0}}, 0, full, "", ""},
        {"save bank", {8, 496}, false, "2.zkb", {}, 0, full, "last.zkb", ""},
        {"load preset", {126, 496}, false, "1.zkr", {{1004, 0}}, 1, "Preset 2-0", "", ""},
        {"save preset", {74, 496}, false, "2.zkr", {}, 0, full, "last.zkr", ""},
        {"default bank", {33, 495}, true, "", {{1013, 0}}, 0, full, "", "DefaultBank"},
        {"default preset", {100, 495}, true, "", {{1014, 0}}, 0, full, "", "DefaultPreset"},
        {"store A", {310, 496}, false, "", {}, 0, full, "", "MemoA"},
        {"store B", {350, 496}, false, "", {}, 0, full, "", "MemoB"},
        {"recall A", {333, 496}, false, "", {{1017, 0}}, 1, "Preset 3-0", "", ""},
        {"recall B", {372, 496}, false, "", {{1018, 0}}, 1, "Preset 4-0", "", ""},
    };
    const auto text = [](const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TemporaryFolder folder;
        writeContent(folder / "1.zkb", text(handmade::goodBank(1, 0)));
        writeContent(folder / "1.zkr", text(handmade::goodPreset(2)));
        Panels panels;
        for (int32 index = 0; index < kPresetCount; ++index)
            full.copy(panels.controller.preset(index).name, kPresetNameSize);
        std::strcpy(panels.controller.getCurrBank(), "last.zkb");
        std::strcpy(panels.controller.getCurrPreset(), "last.zkr");
        const std::map<std::string, Bytes> before = {{"MemoA", handmade::goodPreset(3)},
                                                     {"MemoB", handmade::goodPreset(4)}};
        panels.store.values = before;
        VSTGUI::OffscreenHost& screen = panels.window->screen;
        std::string offered;
        screen.onMenu = [](VSTGUI::COptionMenu&) { return 5; };
        screen.onFileDialog = [&](const VSTGUI::FileDialogRequest& request) {
            offered = request.defaultSaveName;
            return row.file.empty() ? std::vector<std::string>()
                                    : std::vector<std::string>{folder / row.file};
        };
        panels.heard();
        panels.listener.told.clear();
        row.twice ? panels.window->doubleClick(row.where) : panels.window->click(row.where);
        if (screen.typeText("Typed"))
            screen.pressReturnInTextBox();

        Values& told = panels.listener.told;
        told.erase(std::remove_if(told.begin(), told.end(),
                                  [](const auto& change) { return change.first < 1000; }),
                   told.end());
        EXPECT_EQ(told, row.told);
        const auto& calls = panels.controller.host.calls;
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "dirty 1"), row.published);
        EXPECT_EQ(panels.controller.host.edits.size(), 58u * static_cast<unsigned>(row.published));
        EXPECT_EQ(panels.controller.name(panels.controller.getCurrentPreset()), row.preset);
        EXPECT_EQ(offered, row.offered);
        for (const auto& [name, bytes] : panels.store.values)
            EXPECT_EQ(!before.count(name) || before.at(name) != bytes, name == row.stored) << name;
        EXPECT_EQ(panels.store.values.count(row.stored), row.stored.empty() ? 0u : 1u);
    }
}

#if !SMTG_OS_WINDOWS
struct TimerProbe : Timer {
    void stop() override { callback = nullptr; }

    static inline ITimerCallback* callback;
    static inline uint32 period;
};

TEST(IdleHandler, TriggersDeferredUpdatesThirtyTimesASecond)
{
    InjectCreateTimerFunction([](ITimerCallback* callback, uint32 milliseconds) -> Timer* {
        TimerProbe::callback = callback;
        TimerProbe::period = milliseconds;
        return new TimerProbe;
    });
    struct Listener : FObject {
        void PLUGIN_API update(FUnknown*, int32 message) override { heard.push_back(message); }
        std::vector<int32> heard;
    } listener;
    {
        IdleUpdate_ZKR_Handler handler;
        InjectCreateTimerFunction(nullptr);
        EXPECT_EQ(TimerProbe::period, 33u);
        FObject subject;
        subject.addDependent(&listener);
        subject.deferUpdate(5);
        EXPECT_TRUE(listener.heard.empty());
        ASSERT_TRUE(TimerProbe::callback);
        TimerProbe::callback->onTimer(nullptr);
        EXPECT_EQ(listener.heard, (std::vector<int32>{5}));
        subject.removeDependent(&listener);
    }
    EXPECT_FALSE(TimerProbe::callback) << "the timer was not stopped by its handler";
}
#endif

}  // namespace
