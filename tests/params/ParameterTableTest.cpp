// The 59 parameters with the ids, titles and defaults that stored projects and presets rely on.
#include "params/PitchNamesController.h"
#include "tests/params/ParameterDisplay.h"

#include "pluginterfaces/vst/ivstcomponent.h"

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

struct Expected {
    std::string title;  // an asterisk makes two parameters, L and R
    int steps;
    double initial;
    const char *units, *display;
};

// In order of id. A list of its own: stored projects rely on it, so the table must not drift.
// clang-format off
const Expected kExpected[] = {
    {"Power", 1, 1.0, "", "On"},         {"BpsCh1", 1, 0.0, "", "Off"},
    {"BpsCh2", 1, 0.0, "", "Off"},       {"Channel", 4, 0.5, "", "Stereo"},
    {"MS", 1, 0.0, "", "Stereo"},        {"QB11", 1, 0.0, "", "Off"},
    {"2x", 1, 0.0, "", "Off"},           {"Link", 1, 1.0, "", "On"},
    {"Drive*", 128, 0.5, "dB", "0.00"},  {"Hpf*", 11, 0.0, "Hz", "Off"},
    {"Output*", 320, 0.5, "dB", "0.00"}, {"28k*", 1, 0.0, "", "Off"},
    {"Phase*", 1, 0.0, "", "Off"},       {"TrfoDs*", 1, 0.0, "", "Off"},
    {"AmpDsb*", 1, 0.0, "", "Off"},      {"Proc*", 1, 1.0, "", "On"},
    {"LShelf*", 1, 0.0, "", "Off"},      {"LFreq*", 9, 0.0, "Hz", "Off"},
    {"LGain*", 320, 0.5, "dB", "0.00"},  {"MFreq*", 9, 0.0, "Hz", "Off"},
    {"MGain*", 320, 0.5, "dB", "0.00"},  {"HShelf*", 1, 0.0, "", "Off"},
    {"HFreq*", 9, 0.0, "Hz", "Off"},     {"HGain*", 320, 0.5, "dB", "0.00"},
    {"Proc*2", 1, 1.0, "", "On"},        {"LShlf*2", 1, 0.0, "", "Off"},
    {"LFreq*2", 9, 0.0, "Hz", "Off"},    {"LGain*2", 320, 0.5, "dB", "0.00"},
    {"MFreq*2", 9, 0.0, "Hz", "Off"},    {"MGain*2", 320, 0.5, "dB", "0.00"},
    {"HShlf*2", 1, 0.0, "", "Off"},      {"HFreq*2", 9, 0.0, "Hz", "Off"},
    {"HGain*2", 320, 0.5, "dB", "0.00"}, {"Latency", 0, 0.0, "ms", "0.00"},
};
// clang-format on

TEST(ParameterTable, EveryParameterIsWhereStoredProjectsExpectItAndShowsItsDefault)
{
    auto controller = owned(new PitchNamesController);
    ASSERT_EQ(controller->initialize(nullptr), kResultOk);
    ASSERT_EQ(controller->getParameterCount(), 59);
    int32 index = 0;
    for (const Expected& expected : kExpected)
        for (const char side : {'L', 'R'}) {
            std::string title = expected.title;
            const std::size_t asterisk = title.find('*');
            if (asterisk != title.npos)
                title[asterisk] = side;
            else if (side == 'R')
                continue;
            SCOPED_TRACE(title);
            ParameterInfo info{};
            ASSERT_EQ(controller->getParameterInfo(index, info), kResultTrue);
            EXPECT_EQ(info.id, index == 58 ? 59u : static_cast<ParamID>(index));
            EXPECT_EQ(info.flags, index == 58 ? 2 : 1);
            EXPECT_EQ(ascii(info.title), title);
            EXPECT_EQ(ascii(info.shortTitle), "");
            EXPECT_EQ(ascii(info.units), expected.units);
            EXPECT_EQ(info.stepCount, expected.steps);
            EXPECT_EQ(info.defaultNormalizedValue, expected.initial);
            EXPECT_EQ(controller->getParamNormalized(info.id), expected.initial);
            EXPECT_EQ(info.unitId, 0);
            String128 text = {};
            ASSERT_EQ(controller->getParamStringByValue(info.id, expected.initial, text),
                      kResultTrue);
            EXPECT_EQ(ascii(text), expected.display);
            ++index;
        }
    EXPECT_EQ(index, 59);
    EXPECT_EQ(controller->getParameterObject(58), nullptr);
    EXPECT_EQ(controller->terminate(), kResultOk);
}

TEST(ParameterTable, OneUnitWithoutProgramsIsListedAndASecondInitializeAddsNothing)
{
    auto controller = owned(new PitchNamesController);
    ASSERT_EQ(controller->initialize(controller->unknownCast()), kResultOk);
    EXPECT_NE(controller->initialize(nullptr), kResultOk);
    EXPECT_EQ(controller->getParameterCount(), 59);
    ASSERT_EQ(controller->getUnitCount(), 1);
    EXPECT_EQ(controller->getProgramListCount(), 0);
    UnitInfo unit{};
    ASSERT_EQ(controller->getUnitInfo(0, unit), kResultTrue);
    EXPECT_EQ(ascii(unit.name), "Unit1");
    EXPECT_EQ(unit.id, 1);
    EXPECT_EQ(unit.parentUnitId, 0);
    EXPECT_EQ(unit.programListId, -1);
    controller->terminate();
}

}  // namespace
