// What a position of each parameter reads as, and which texts can be typed.
#include "ParameterClasses.h"
#include "ParameterIds.h"
#include "ParameterTable.h"

#include "pluginterfaces/base/ustring.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <locale>
#include <string>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

struct ParameterDisplay : testing::Test {
    ParameterDisplay() { addParameters(parameters); }

    std::string shown(ParamID id, double value)
    {
        String128 wide = {};
        parameters.getParameter(id)->toString(value, wide);
        char narrow[129] = {};
        UString(wide, 128).toAscii(narrow, 128);
        return narrow;
    }

    ParameterContainer parameters;
};

TEST_F(ParameterDisplay, GainsReadInTenthsAndDrivesInQuartersOfADecibel)
{
    const struct {
        double value;
        const char *gain, *drive;
    } rows[] = {
        {0.0, "-16.00", "-16.00"},       {1.0, "16.00", "16.00"},
        {0.5, "0.00", "0.00"},           {0.503125, "0.10", "0.00"},   // 0.1 dB
        {0.5078125, "0.30", "0.25"},     {0.49375, "-0.20", "-0.25"},  // 0.25 dB; -0.2 dB
        {0.25, "-8.00", "-8.00"},        {0.75 + 1 / 320.0, "8.10", "8.00"},
        {0.0015624, "-16.00", "-16.00"},  // just under half a tenth
        {0.0015626, "-15.90", "-16.00"}, {0.0039063, "-15.90", "-15.75"},
        {1.5, "32.00", "32.00"},         {-0.25, "-23.90", "-23.75"},  // cut off towards zero
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(kLGainR2, row.value), row.gain) << row.value;
        EXPECT_EQ(shown(kDriveL, row.value), row.drive) << row.value;
    }
    EXPECT_EQ(shown(kOutputL, NAN), "-16.00");
    for (const double far : {1e9, 1e300, double{INFINITY}}) {
        EXPECT_NE(shown(kOutputL, far).find(".00"), std::string::npos) << far;
        EXPECT_EQ(shown(kOutputL, -far).front(), '-') << far;
        EXPECT_EQ(shown(kDriveR, -far).front(), '-') << far;
    }
}

TEST_F(ParameterDisplay, FrequenciesReadAsTheStepAndOffAtTheStart)
{
    const struct {
        ParamID id;
        int last;
        const char *first, *second, *end;
    } rows[] = {{kHpfL, 11, "20.00", "30.00", "800.00"},
                {kHpfR, 11, "20.00", "30.00", "800.00"},
                {kLFreqL, 9, "550.00", "430.00", "33.00"},
                {kLFreqR2, 9, "550.00", "430.00", "33.00"},
                {kMFreqR, 9, "5600.00", "4600.00", "680.00"},
                {kMFreqL2, 9, "5600.00", "4600.00", "680.00"},
                {kHFreqR, 9, "28000.00", "24000.00", "6800.00"},
                {kHFreqL2, 9, "28000.00", "24000.00", "6800.00"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.id);
        EXPECT_EQ(shown(row.id, 0.0), "Off");
        EXPECT_EQ(shown(row.id, 0.49 / row.last), "Off");
        EXPECT_EQ(shown(row.id, 1.0 / row.last), row.first);
        EXPECT_EQ(shown(row.id, 2.0 / row.last), row.second);
        EXPECT_EQ(shown(row.id, 1.0), row.end);
        EXPECT_EQ(shown(row.id, 7.0), row.end);
        EXPECT_EQ(shown(row.id, -7.0), "Off");
        EXPECT_EQ(shown(row.id, NAN), "Off");
    }
    EXPECT_EQ(shown(kHFreqL, 4.0 / 9.0), "17500.00");
}

TEST_F(ParameterDisplay, SwitchesAndSelectorsReadAsTheirPosition)
{
    EXPECT_EQ(shown(kPower, 0.5), "Off");
    EXPECT_EQ(shown(kPower, 0.5000001), "On");
    EXPECT_EQ(shown(kMS, 0.4999999), "Stereo");
    EXPECT_EQ(shown(kMS, 0.5), "MidSide");
    EXPECT_EQ(shown(kMS, NAN), "Stereo");
    const char* const channels[] = {"Middle", "Left", "Stereo", "Right", "Side"};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(shown(kChannel, i / 4.0), channels[i]);
    EXPECT_EQ(shown(kChannel, 0.124), "Middle");
    EXPECT_EQ(shown(kChannel, 0.125), "Left");
    for (const double outside : {2.0, -2.0, 1e300, -1e300, double{NAN}})
        EXPECT_LT(shown(kChannel, outside).size(), 8u) << outside;
    EXPECT_EQ(shown(kLatency, 0.002), "2.00");
    EXPECT_EQ(shown(kLatency, 0.0021768707), "2.18");  // 96 samples at 44.1 kHz
}

struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST_F(ParameterDisplay, AHostThatWritesDecimalCommasDoesNotChangeTheTexts)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "German"})
        if (std::setlocale(LC_ALL, name))
            break;
    const std::locale global = std::locale::global(std::locale(std::locale(), new Comma));
    EXPECT_EQ(shown(kLGainL, 0.503125), "0.10");
    EXPECT_EQ(shown(kLatency, 0.0021768707), "2.18");
    std::locale::global(global);
    std::setlocale(LC_ALL, before.c_str());
}

TEST_F(ParameterDisplay, TypedTextIsRefusedWithoutATraceExceptByPlainSwitches)
{
    for (const ParamID id : {kChannel, kMS, kDriveL, kHpfL, kOutputL, kLFreqL, kLGainL, kLatency})
        for (const TChar* text : {STR16("0.25"), STR16("5600.00"), STR16("Off"), STR16("")}) {
            double value = 0.125;
            EXPECT_FALSE(parameters.getParameter(id)->fromString(text, value)) << id;
            EXPECT_EQ(value, 0.125) << id;
        }
    double value = 0.125;
    EXPECT_TRUE(parameters.getParameter(kPower)->fromString(STR16("0.25"), value));
    EXPECT_EQ(value, 0.25);
}

}  // namespace
