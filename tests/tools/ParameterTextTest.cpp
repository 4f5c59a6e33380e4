// Typed parameter values, and automation lists. The display texts are the plug-in's.
#include "tools/common/ParameterText.h"
#include "params/ids/ParameterIds.h"
#include "tests/tools/Complaint.h"
#include "tools/audio/Automation.h"
#include "tools/host/OpenPlugin.h"

#include <gtest/gtest.h>
#include <sstream>
#include <tuple>

namespace {

using namespace tool;

struct ParameterTexts : ::testing::Test {
    ParameterText parameters{host::openPlugin(ZKRT46_LIBRARY)};

    std::vector<AutomationPoint> automation(const std::string& text)
    {
        std::istringstream stream(text);
        return parseAutomation(stream, "moves.csv", parameters);
    }
};

TEST_F(ParameterTexts, AcceptsEveryNotationOfADisplayedValue)
{
    const struct {
        const char* text;
        int index;
        double value;
        int right = -1;  // where the title means both channels
    } cases[]{
        {"Power=On", kPower, 1.0},
        {"power=off", kPower, 0.0},
        {"LFreqL=82.00", kLFreqL, 7.0 / 9.0},
        {" LFreqL = 82 hz ", kLFreqL, 7.0 / 9.0},
        {"LFreqL=Off", kLFreqL, 0.0},
        {"LGainL=+3.5", kLGainL, 195.0 / 320.0},
        {"LGainL=-16", kLGainL, 0.0},
        {"LGainL=-0", kLGainL, 0.5},
        {"LGainR=3.5dB", kLGainR, 195.0 / 320.0},
        {"LGainL=0.6015625n", kLGainL, 0.6015625},
        {"lgain=+3.5", kLGainL, 195.0 / 320.0, kLGainR},
        {"LGain2=-16", kLGainL2, 0.0, kLGainR2},
        {"28k=On", k28kL, 1.0, k28kR},
    };
    const float before = parameters.initialValue(kLGainL);
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        const std::vector<Assignment> parsed = parameters.parse(one.text);
        ASSERT_EQ(parsed.size(), one.right < 0 ? 1u : 2u);
        EXPECT_EQ(parsed.front().index, one.index);
        EXPECT_EQ(parsed.back().index, one.right < 0 ? one.index : one.right);
        for (const Assignment& assignment : parsed)
            EXPECT_EQ(assignment.value, static_cast<float>(one.value));
    }
    EXPECT_EQ(parameters.initialValue(kLGainL), before)
        << "reading the display texts changed the parameter";
}

TEST_F(ParameterTexts, ErrorMessagesListValidValues)
{
    const std::pair<const char*, const char*> rows[]{
        {"LGainL=3.55", "LGainL cannot be '3.55'; the nearest values are 3.50 and 3.60 dB"},
        {"LGainL=16.1", "LGainL cannot be '16.1'; it goes from -16.00 to 16.00 dB"},
        {"LFreqL=83", "LFreqL cannot be '83'; it can be Off, 550.00, 430.00"},
        {"BpsCh=On", "the plug-in has no parameter 'BpsCh'; similar ones are BpsCh1, BpsCh2"},
        {"LGainX=1", "the plug-in has no parameter 'LGainX'; similar ones are LGainL, LGainR"},
        {"Quux=1", "the plug-in has no parameter 'Quux'; 'zkrt46 params' lists them"},
    };
    const auto complaint = [this](const char* text) {
        return complaintOf([&] { parameters.parse(text); });
    };
    for (const auto& [setting, words] : rows)
        EXPECT_EQ(complaint(setting).rfind(words, 0), 0u) << complaint(setting);
    for (const char* bad : {"LGainL", "LGainL=", "LGainL=+-3", "LGainL=nan", "LGainL=inf",
                            "LGainL=3.5x", "LGainL=1.1n", "LGainL=-0.1n", "Power=1", "=On"})
        EXPECT_NE(complaint(bad), "none") << bad;
}

TEST_F(ParameterTexts, AutomationAcceptsTheUsualSeparatorsAndIsSortedByTime)
{
    std::string text =
        "\xEF\xBB\xBFtime, title, value\r\n# a comment\r\n\r\n"
        "2.5, LGainL, +3.5   # louder\r\n1;Power;off\n1\tPower\tOn\n0.25 LFreq 82\n";
    // Changes at one time keep the file's order: the last one applies.
    std::vector<std::tuple<double, int, float>> expected{{0.25, kLFreqL, 7.0f / 9.0f},
                                                         {0.25, kLFreqR, 7.0f / 9.0f},
                                                         {1.0, kPower, 0.0f},
                                                         {1.0, kPower, 1.0f},
                                                         {2.5, kLGainL, 195.0f / 320.0f}};
    for (int step = 0; step < 64; ++step) {
        text += "3,MGainL," + std::to_string(step / 64.0) + "n\n";
        expected.emplace_back(3.0, kMGainL, static_cast<float>(step) / 64.0f);
    }
    std::vector<std::tuple<double, int, float>> points;
    for (const auto& [seconds, assignment] : automation(text))
        points.emplace_back(seconds, assignment.index, assignment.value);
    EXPECT_EQ(points, expected);
}

TEST_F(ParameterTexts, AutomationNamesTheLineThatIsWrong)
{
    const std::pair<std::string, const char*> rows[]{
        {"1,Power,On\n\nsoon,Power,Off\n", "moves.csv:3: 'soon' is not a time in seconds"},
        {"-1,Power,On", "moves.csv:1: the time -1 lies before the start"},
        {"1,Power", "moves.csv:1: expected time, title and value"},
        {"1,Power,On,Off", "moves.csv:1: expected time, title and value"},
        {"1,LGainL,99", "moves.csv:1: LGainL cannot be '99'; it goes from -16.00 to 16.00 dB"},
        {"inf,Power,On", "moves.csv:1: 'inf' is not a time in seconds"},
        // Only the first line may be a header.
        {"1,Power,On\ntime,title,value", "moves.csv:2: 'time' is not a time in seconds"},
        {std::string(100000, 'x'), "moves.csv:1: the line is too long"},
        {"", "none"},
    };
    for (const auto& [text, words] : rows)
        EXPECT_EQ(complaintOf([&, &lines = text] { automation(lines); }), words);
}

}  // namespace
