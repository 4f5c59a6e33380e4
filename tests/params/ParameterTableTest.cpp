// The 59 parameters as projects and presets of users hold them.
#include "PitchNamesController.h"

#include "pluginterfaces/base/ustring.h"
#include "pluginterfaces/vst/ivstcomponent.h"

#include <gtest/gtest.h>

#include <string>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

std::string ascii(const TChar* text)
{
    char narrow[129] = {};
    UString(const_cast<TChar*>(text), 128).toAscii(narrow, 128);
    return narrow;
}

struct Expected {
    const char* title;
    int steps;
    double initial;
    const char *units, *display;
};

// By id. Written down by hand from what stored projects rely on.
// clang-format off
constexpr Expected kExpected[] = {
    {"Power", 1, 1.0, "", "On"},          {"BpsCh1", 1, 0.0, "", "Off"},
    {"BpsCh2", 1, 0.0, "", "Off"},        {"Channel", 4, 0.5, "", "Stereo"},
    {"MS", 1, 0.0, "", "Stereo"},         {"QB11", 1, 0.0, "", "Off"},
    {"2x", 1, 0.0, "", "Off"},            {"Link", 1, 1.0, "", "On"},
    {"DriveL", 128, 0.5, "dB", "0.00"},   {"DriveR", 128, 0.5, "dB", "0.00"},
    {"HpfL", 11, 0.0, "Hz", "Off"},       {"HpfR", 11, 0.0, "Hz", "Off"},
    {"OutputL", 320, 0.5, "dB", "0.00"},  {"OutputR", 320, 0.5, "dB", "0.00"},
    {"28kL", 1, 0.0, "", "Off"},          {"28kR", 1, 0.0, "", "Off"},
    {"PhaseL", 1, 0.0, "", "Off"},        {"PhaseR", 1, 0.0, "", "Off"},
    {"TrfoDsL", 1, 0.0, "", "Off"},       {"TrfoDsR", 1, 0.0, "", "Off"},
    {"AmpDsbL", 1, 0.0, "", "Off"},       {"AmpDsbR", 1, 0.0, "", "Off"},
    {"ProcL", 1, 1.0, "", "On"},          {"ProcR", 1, 1.0, "", "On"},
    {"LShelfL", 1, 0.0, "", "Off"},       {"LShelfR", 1, 0.0, "", "Off"},
    {"LFreqL", 9, 0.0, "Hz", "Off"},      {"LFreqR", 9, 0.0, "Hz", "Off"},
    {"LGainL", 320, 0.5, "dB", "0.00"},   {"LGainR", 320, 0.5, "dB", "0.00"},
    {"MFreqL", 9, 0.0, "Hz", "Off"},      {"MFreqR", 9, 0.0, "Hz", "Off"},
    {"MGainL", 320, 0.5, "dB", "0.00"},   {"MGainR", 320, 0.5, "dB", "0.00"},
    {"HShelfL", 1, 0.0, "", "Off"},       {"HShelfR", 1, 0.0, "", "Off"},
    {"HFreqL", 9, 0.0, "Hz", "Off"},      {"HFreqR", 9, 0.0, "Hz", "Off"},
    {"HGainL", 320, 0.5, "dB", "0.00"},   {"HGainR", 320, 0.5, "dB", "0.00"},
    {"ProcL2", 1, 1.0, "", "On"},         {"ProcR2", 1, 1.0, "", "On"},
    {"LShlfL2", 1, 0.0, "", "Off"},       {"LShlfR2", 1, 0.0, "", "Off"},
    {"LFreqL2", 9, 0.0, "Hz", "Off"},     {"LFreqR2", 9, 0.0, "Hz", "Off"},
    {"LGainL2", 320, 0.5, "dB", "0.00"},  {"LGainR2", 320, 0.5, "dB", "0.00"},
    {"MFreqL2", 9, 0.0, "Hz", "Off"},     {"MFreqR2", 9, 0.0, "Hz", "Off"},
    {"MGainL2", 320, 0.5, "dB", "0.00"},  {"MGainR2", 320, 0.5, "dB", "0.00"},
    {"HShlfL2", 1, 0.0, "", "Off"},       {"HShlfR2", 1, 0.0, "", "Off"},
    {"HFreqL2", 9, 0.0, "Hz", "Off"},     {"HFreqR2", 9, 0.0, "Hz", "Off"},
    {"HGainL2", 320, 0.5, "dB", "0.00"},  {"HGainR2", 320, 0.5, "dB", "0.00"},
    {nullptr, 0, 0.0, "", ""},            {"Latency", 0, 0.0, "ms", "0.00"},
};
// clang-format on

TEST(ParameterTable, EveryParameterIsWhereStoredProjectsExpectItAndShowsItsDefault)
{
    auto controller = owned(new PitchNamesController);
    ASSERT_EQ(controller->initialize(nullptr), kResultOk);
    ASSERT_EQ(controller->getParameterCount(), 59);
    for (int32 i = 0; i < 59; ++i) {
        const int32 id = i < 58 ? i : 59;
        const Expected& expected = kExpected[id];
        SCOPED_TRACE(expected.title);
        ParameterInfo info{};
        ASSERT_EQ(controller->getParameterInfo(i, info), kResultTrue);
        EXPECT_EQ(info.id, static_cast<ParamID>(id));
        EXPECT_EQ(ascii(info.title), expected.title);
        EXPECT_EQ(ascii(info.shortTitle), "");
        EXPECT_EQ(ascii(info.units), expected.units);
        EXPECT_EQ(info.stepCount, expected.steps);
        EXPECT_EQ(info.defaultNormalizedValue, expected.initial);
        EXPECT_EQ(controller->getParamNormalized(info.id), expected.initial);
        EXPECT_EQ(info.unitId, 0);
        EXPECT_EQ(info.flags, id == 59 ? 2 : 1);
        String128 text = {};
        ASSERT_EQ(controller->getParamStringByValue(info.id, expected.initial, text), kResultTrue);
        EXPECT_EQ(ascii(text), expected.display);
    }
    EXPECT_EQ(controller->getParameterObject(58), nullptr);
    EXPECT_EQ(controller->terminate(), kResultOk);
}

TEST(ParameterTable, OneUnitWithoutProgramsIsListedAndASecondStartAddsNothing)
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
    UnitID ofBus = 5;
    EXPECT_EQ(controller->getUnitByBus(kEvent, kInput, 0, 0, ofBus), kResultTrue);
    EXPECT_EQ(ofBus, 0);
    controller->terminate();
}

}  // namespace
