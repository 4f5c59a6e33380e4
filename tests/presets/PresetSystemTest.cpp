// Selection, names, the store and the state, through the controller's interface.
#include "tests/presets/ControllerProbe.h"
#include "tests/support/TemporaryFolder.h"

#include "public.sdk/source/common/memorystream.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

namespace {

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

struct Presets : testing::Test {
    platform::MemoryStore store;
    ControllerProbe controller{store};
};

TEST_F(Presets, StartWithTheNamesAndValuesThatUsersProjectsRelyOn)
{
    std::ifstream list(ZKR_FACTORY);
    std::array<float, kPresetParamCount> first{};
    int32 count = 0;
    for (std::string line; std::getline(list, line);) {
        if (line.empty() || line.front() == '#')
            continue;
        SCOPED_TRACE(line);
        ASSERT_LT(count, kPresetCount);
        EXPECT_EQ(controller.name(count), line.substr(0, line.find(':')));
        auto values = first;
        std::istringstream changes(line.substr(line.find(':') + 1));
        ParamID id = 0;
        char equals = 0;
        for (float value = 0.0f; changes >> id >> equals >> value;)
            values.at(id) = value;
        EXPECT_TRUE(changes.eof()) << "the list is damaged";
        for (id = 0; id < values.size(); ++id)
            EXPECT_EQ(controller.preset(count).values[id], values[id]) << "id " << id;
        if (count++ == 0)
            first = values;
    }
    EXPECT_EQ(count, kPresetCount);
    EXPECT_EQ(controller.getCurrentPreset(), 0);
    for (ParamID id = 0; id < first.size(); ++id)
        EXPECT_EQ(controller.getParamNormalized(id), static_cast<double>(first[id])) << id;
}

TEST_F(Presets, WhenSelectedSetEachParameterThenTellTheHostAndEndWithAnEmptyGesture)
{
    fillWithOddValues(controller);
    const float* const values = controller.preset(12).values;
    controller.host.onEdit = [&](ParamID id) {
        const ParamID next = std::min<ParamID>(id + 1, 57);
        EXPECT_EQ(static_cast<float>(controller.getParamNormalized(next)) == values[next],
                  next == id)
            << "the host was told of " << id << " after the next parameter was set";
    };
    controller.host.calls.clear();
    controller.host.edits.clear();
    controller.setCurrentPreset(12);
    ASSERT_EQ(controller.host.edits.size(), 58u);
    for (ParamID id = 0; id < 58; ++id) {
        const auto value = static_cast<double>(values[id]);
        EXPECT_EQ(controller.host.edits[id], std::make_pair(id, value));
        EXPECT_EQ(controller.getParamNormalized(id), value);
    }
    const std::vector<std::string> end(controller.host.calls.begin() + 58,
                                       controller.host.calls.end());
    EXPECT_EQ(end, (std::vector<std::string>{"dirty 1", "begin 0", "end 0"}));
    controller.host.onEdit = nullptr;
    for (const int32 outside : {24, -1})
        controller.setCurrentPreset(outside);
    EXPECT_EQ(controller.getCurrentPreset(), 12);
}

TEST_F(Presets, StoreEveryParameterChangeInTheSelectedPresetAtOnce)
{
    controller.setCurrentPreset(2);
    controller.setParamNormalized(28, 0.1);
    EXPECT_EQ(controller.preset(2).values[28], 0.1f);
    EXPECT_EQ(controller.preset(0).values[28], 0.5f);
    const std::string before = controller.bank();
    for (const ParamID id : {58u, 59u, 60u, 1000u, 4000000000u})
        EXPECT_EQ(controller.setParamNormalized(id, 0.3), kResultOk) << id;
    EXPECT_EQ(controller.getParamNormalized(59), 0.0);
    controller.setParamNormalized(28, std::nan(""));
    EXPECT_EQ(controller.bank(), before);
    controller.setParamNormalized(28, 7.0);
    EXPECT_EQ(controller.preset(2).values[28], 1.0f) << "a bank with 7.0 could not be read again";
}

TEST_F(Presets, NamesHold23BytesAndEditorsAreToldOfThoseSetByTheHost)
{
    // Characters of two, three and four bytes around the 23rd byte, and invalid UTF-8.
    const std::pair<std::string, std::size_t> cuts[] = {
        {std::string(23, 'x'), 23},          {std::string(24, 'x'), 23},
        {repeated(u8"ä", 12), 22},           {"x" + repeated(u8"ä", 12), 23},
        {repeated(u8"音", 8), 21},           {"x" + repeated(u8"音", 8), 22},
        {"xx" + repeated(u8"音", 8), 23},    {repeated(u8"🎚", 6), 20},
        {"xxx" + repeated(u8"🎚", 6), 23}, {std::string(23, 'x') + u8"ä", 23},
        {repeated("\xE4", 30), 23},          {repeated("\x84", 30), 23},
        {"nothing of a longer name", 23},    {"short", 5},
    };
    controller.setCurrentPreset(5);
    EditorProbe editor(&controller);
    controller.editorAttached(&editor);
    for (const auto& [text, kept] : cuts) {
        controller.host.calls.clear();
        EXPECT_EQ(controller.setSelectedName(text.c_str()), kResultOk);
        std::string whole = text.substr(0, kept);
        whole.resize(24);
        EXPECT_EQ(std::string(controller.preset(5).name, 24), whole);
        EXPECT_EQ(controller.host.calls, (std::vector<std::string>{"dirty 1"}));
        EXPECT_EQ(std::exchange(editor.told, {}), (Values{{1000, 6.0 / 24.0}}));
    }
    EXPECT_EQ(controller.setSelectedName(nullptr), kResultFalse);
    controller.editorRemoved(&editor);

    // A name from a file may lack a terminator.
    std::memset(controller.preset(5).name, 'x', 24);
    EXPECT_EQ(controller.name(5), std::string(24, 'x'));
    controller.resetPreset(5);
    EXPECT_EQ(std::memcmp(&controller.preset(5), &factoryBank()[0], 256), 0);
}

TEST_F(Presets, StoredDefaultsLoadInTheNextInstanceAndTheStoresNamesNeverChange)
{
    controller.loadMemoA();
    controller.loadMemoB();
    EXPECT_TRUE(controller.host.edits.empty()) << "something was loaded though nothing is stored";
    fillWithOddValues(controller);
    controller.setCurrentPreset(9);
    controller.storeDefaultBank();
    controller.setParamNormalized(28, 0.125);
    controller.setCurrentPresetName("Mine");
    controller.storeDefaultPreset();
    controller.storeMemoA();
    controller.storeMemoB();
    {
        ControllerProbe next(store);
        EXPECT_EQ(next.getCurrentPreset(), 0);
        EXPECT_EQ(std::memcmp(&next.preset(0), &controller.preset(9), 256), 0);
        EXPECT_EQ(next.getParamNormalized(28), 0.125);
        EXPECT_EQ(next.name(9), "Odd 9") << "the bank was stored before the name changed";
        EXPECT_EQ(std::memcmp(&next.preset(23), &controller.preset(23), 256), 0);
        next.resetPreset(4);
        EXPECT_EQ(next.name(4), "Default") << "presets are reset to the factory's, not the user's";
    }
    std::map<std::string, std::size_t> sizes;
    for (const auto& [name, bytes] : store.values)
        sizes[name] = bytes.size();
    // Paths are stored even if empty.
    EXPECT_EQ(sizes,
              (decltype(sizes){{"CurrBank", 0},
                               {"CurrDir", 0},
                               {"CurrPreset", 0},
                               {"DefaultBank", 48617},
                               {"DefaultPreset", 2065},
                               {"MemoA", 2065},
                               {"MemoB", 2065}}));
    controller.clearDefaultBank();
    controller.clearDefaultBank();
    ControllerProbe last(store);
    EXPECT_EQ(last.name(0), "Mine");
    EXPECT_EQ(last.name(1), "Fat Kick");
}

TEST_F(Presets, PathsAreStoredAtAnInstancesEndAndReadAtItsStart)
{
    // 256 UTF-16 code units fit, whatever they take in UTF-8. A longer path is dropped, not cut.
    for (const auto& [text, most] :
         {std::pair{std::string("b"), 256}, std::pair{std::string(u8"ä"), 256},
          std::pair{std::string(u8"音"), 256}, std::pair{std::string(u8"🎚"), 128}}) {
        store.writeText("CurrDir", repeated(text, most));
        store.writeText("CurrBank", repeated(text, most) + "x");
        store.remove("CurrPreset");
        {
            ControllerProbe other(store);
            EXPECT_EQ(other.getCurrDir(), repeated(text, most));
            EXPECT_STREQ(other.getCurrBank(), "");
            EXPECT_STREQ(other.getCurrPreset(), "") << "nothing is stored";
            std::strcpy(other.getCurrBank(), "two.zkb");
            std::strcpy(other.getCurrPreset(), "one.zkr");
        }
        EXPECT_EQ(store.readText("CurrDir"), repeated(text, most));
        EXPECT_EQ(store.readText("CurrBank"), "two.zkb");
        EXPECT_EQ(store.readText("CurrPreset"), "one.zkr");
    }
}

TEST_F(Presets, AStateIsEightBytesAndTheWholeBank)
{
    fillWithOddValues(controller);
    controller.setCurrentPreset(17);
    MemoryStream state;
    for (int round = 0; round < 2; ++round) {  // also over existing contents, from their end
        EXPECT_EQ(controller.getState(&state), kResultOk);
        ASSERT_EQ(state.getSize(), 48625);
    }
    EXPECT_EQ(std::memcmp(state.getData(), "\0\0\0\2\x36\x34\x74\x5A\x36\x34\x74\x5A\x38", 13), 0);

    ControllerProbe other(store);
    EditorProbe editor(&other);
    other.editorAttached(&editor);
    EXPECT_EQ(other.setState(&state), kResultOk) << "the stream was at its end";
    EXPECT_EQ(other.bank(), controller.bank());
    EXPECT_EQ(other.getCurrentPreset(), 17);
    EXPECT_EQ(other.host.edits.size(), 58u);
    ASSERT_EQ(editor.told.size(), 59u);
    EXPECT_EQ(editor.told.back(), (Values::value_type{1002, 0.0}));
    other.editorRemoved(&editor);
    EXPECT_EQ(other.setState(nullptr), kResultFalse);
    EXPECT_EQ(other.getState(nullptr), kResultOk);
    other.terminate();
    EXPECT_EQ(other.getState(&state), kInternalError);
    EXPECT_EQ(other.setState(&state), kInternalError);
}

// Of VST 2 hosts, which set them at any time; the wrapper hands them over when it is asked.
TEST_F(Presets, ValuesThatTheHostSetBeforeAChangeGoIntoThePresetOfBefore)
{
    ControllerProbe other(store);
    fillWithOddValues(other);
    MemoryStream state;
    other.getState(&state);
    const auto selectBefore = [this](int32 index) {
        controller.setCurrentPreset(index);
        controller.host.pending = [this] { controller.setParamNormalized(kLGainL, 0.875); };
    };
    selectBefore(4);
    controller.setCurrentPreset(5);
    EXPECT_EQ(controller.preset(4).values[kLGainL], 0.875f);
    EXPECT_NE(controller.preset(5).values[kLGainL], 0.875f);

    const TemporaryFolder folder;
    const std::string file = folder / "one.zkr";
    other.savePreset(file.c_str());
    selectBefore(6);
    controller.loadPreset(file.c_str(), false);
    EXPECT_EQ(controller.preset(6).values[kLGainL], other.preset(0).values[kLGainL]);

    selectBefore(7);
    controller.setState(&state);
    EXPECT_EQ(controller.bank(), other.bank());
}

}  // namespace
