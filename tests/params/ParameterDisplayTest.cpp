// The text of each parameter's positions, and which typed texts are accepted.
#include "tests/params/ParameterDisplay.h"

#include <clocale>
#include <cmath>
#include <locale>
#include <string>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

TEST_F(ParameterDisplay, LevelsReadAsTheNearestStepAlsoBeyondTheEnds)
{
    const struct {
        double value;
        const char *gain, *drive;
    } rows[] = {
        {0.0015624, "-16.00", "-16.00"},  // just under half a tenth
        {0.0015626, "-15.90", "-16.00"}, {0.0039063, "-15.90", "-15.75"},
        {1.5, "32.00", "32.00"},         {-0.25, "-23.90", "-23.75"},  // truncated towards zero
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

TEST_F(ParameterDisplay, SwitchesAndSelectorsReadAsTheirPosition)
{
    const struct {
        ParamID id;
        double value;
        const char* text;
    } rows[] = {{kPower, 0.5, "Off"},        {kPower, 0.5000001, "On"},
                {kMS, 0.4999999, "Stereo"},  {kMS, 0.5, "MidSide"},
                {kMS, NAN, "Stereo"},        {kHpfL, NAN, "Off"},
                {kHpfL, -INFINITY, "Off"},   {kHpfL, 0.5 / 11 - 1e-12, "Off"},
                {kHpfL, 0.5 / 11, "20.00"},  // half-way to the first step
                {kHpfL, INFINITY, "800.00"}, {kChannel, 0.124, "Middle"},
                {kChannel, 0.125, "Left"},   {kChannel, 0.375, "Stereo"},
                {kChannel, 0.75, "Right"},   {kChannel, 1.0, "Side"}};
    for (const auto& row : rows)
        EXPECT_EQ(shown(row.id, row.value), row.text) << row.id << " at " << row.value;
    for (const double outside : {2.0, -2.0, 1e300, -1e300, double{NAN}})
        EXPECT_LT(shown(kChannel, outside).size(), 8u) << outside;
}

struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST_F(ParameterDisplay, AHostThatWritesDecimalCommasDoesNotChangeTheTexts)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        std::setlocale(LC_ALL, "German");
    const std::locale global = std::locale::global(std::locale(std::locale(), new Comma));
    EXPECT_EQ(shown(kLGainL, 0.503125), "0.10");
    EXPECT_EQ(shown(kLatency, 0.0021768707), "2.18");
    std::locale::global(global);
    std::setlocale(LC_ALL, before.c_str());
}

TEST_F(ParameterDisplay, TypedTextIsAcceptedOnlyByPlainSwitches)
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
