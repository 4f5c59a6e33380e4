// Values as people type them, and lists of them in time.
#include "ParameterText.h"
#include "Automation.h"
#include "Complaint.h"
#include "FakePlugin.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <sstream>
#include <tuple>

namespace {

using namespace tool;

std::string tenths(float value)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%.2f",
                  static_cast<double>(static_cast<int>(value * 320.0f + 0.5f) - 160) * 0.1);
    return text;
}

ParameterText someParameters()
{
    const auto onOff = [](float value) { return value > 0.5f ? "On" : "Off"; };
    const auto frequency = [](float value) {
        const char* steps[]{"Off", "550.00", "82.00", "33.00"};
        return steps[static_cast<int>(value * 3.0f + 0.5f)];
    };
    const auto plain = [](float value) { return std::to_string(value); };
    return ParameterText(std::make_unique<FakePlugin>(std::vector<FakeParameter>{
        {"Power", "", 1, onOff, 1.0f},
        {"LFreqL", "Hz", 3, frequency, 0.0f},
        {"LGainL", "dB", 320, tenths, 0.5f},
        {"LGainL2", "dB", 320, tenths, 0.5f},
        {"Smooth", "", 0, plain, 0.25f},
    }));
}

std::string complaint(const std::string& setting)
{
    return complaintOf([&] { someParameters().parse(setting); });
}

TEST(ParameterText, TakesAValueInEveryFormTheDisplayCanBeMeant)
{
    ParameterText parameters = someParameters();
    const struct {
        const char* text;
        int index;
        double value;
    } cases[]{
        {"Power=On", 0, 1.0},
        {"power=off", 0, 0.0},
        {"LFreqL=82.00", 1, 2.0 / 3.0},
        {"LFreqL=82", 1, 2.0 / 3.0},
        {" LFreqL = 33 hz ", 1, 1.0},
        {"LFreqL=Off", 1, 0.0},
        {"LGainL=+3.5", 2, 195.0 / 320.0},
        {"LGainL=-16", 2, 0.0},
        {"LGainL=-0", 2, 0.5},
        {"LGainL=3.5dB", 2, 195.0 / 320.0},
        {"LGainL2=16.0", 3, 1.0},
        {"LGainL=0.6015625n", 2, 0.6015625},
        {"Smooth=0.3n", 4, 0.3},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.text);
        const Assignment assignment = parameters.parse(one.text);
        EXPECT_EQ(assignment.index, one.index);
        EXPECT_EQ(assignment.value, static_cast<float>(one.value));
    }
    EXPECT_EQ(parameters.initialValue(2), 0.5f) << "reading the displays left the knob moved";
}

TEST(ParameterText, SaysWhatWouldHaveBeenRight)
{
    const std::pair<const char*, const char*> rows[]{
        {"LGainL=3.55", "LGainL cannot be '3.55'; the nearest values are 3.50 and 3.60 dB"},
        {"LGainL=16.1", "LGainL cannot be '16.1'; it goes from -16.00 to 16.00 dB"},
        {"LFreqL=83", "LFreqL cannot be '83'; it can be Off, 550.00, 82.00, 33.00"},
        {"LGainR=1", "the plug-in has no parameter 'LGainR'; similar ones are LGainL, LGainL2"},
        {"Quux=1", "the plug-in has no parameter 'Quux'; 'zkrt46 params' lists them"},
    };
    for (const auto& [setting, words] : rows)
        EXPECT_EQ(complaint(setting), words);
    for (const char* bad :
         {"LGainL", "LGainL=", "LGainL=+-3", "LGainL=nan", "LGainL=inf", "LGainL=3.5x",
          "LGainL=1.1n", "LGainL=-0.1n", "LGainL=nann", "Power=1", "Smooth=0.3", "=On"})
        EXPECT_NE(complaint(bad), "none") << bad;
}

std::vector<AutomationPoint> parsed(const std::string& text)
{
    ParameterText parameters = someParameters();
    std::istringstream stream(text);
    return parseAutomation(stream, "moves.csv", parameters);
}

TEST(Automation, ReadsTheUsualSeparatorsAndSortsByTime)
{
    const std::vector<AutomationPoint> points = parsed("\xEF\xBB\xBFtime, title, value\r\n"
                                                       "# a comment\r\n"
                                                       "\r\n"
                                                       "2.5, LGainL, +3.5   # louder\r\n"
                                                       "1;Power;off\n"
                                                       "1\tPower\tOn\n"
                                                       "0.25 LFreqL 82");
    // Changes of one time keep the order of the file: the last one counts.
    const std::tuple<double, int, float> expected[]{
        {0.25, 1, 2.0f / 3.0f}, {1.0, 0, 0.0f}, {1.0, 0, 1.0f}, {2.5, 2, 195.0f / 320.0f}};
    ASSERT_EQ(points.size(), std::size(expected));
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_EQ(
            std::tuple(points[i].seconds, points[i].assignment.index, points[i].assignment.value),
            expected[i]);
}

TEST(Automation, KeepsTheOrderOfManyChangesAtOneTime)
{
    std::ostringstream text;
    for (int step = 0; step < 100; ++step)
        text << (step % 2 ? "1" : "2") << ",Smooth," << step / 100.0 << "n\n";
    const std::vector<AutomationPoint> points = parsed(text.str());
    ASSERT_EQ(points.size(), 100u);
    // The odd ones, then the even ones.
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(points[static_cast<std::size_t>(i)].assignment.value,
                  static_cast<float>((i < 50 ? 2 * i + 1 : 2 * i - 100) / 100.0));
}

TEST(Automation, NamesTheLineThatIsWrong)
{
    const std::pair<std::string, const char*> rows[]{
        {"1,Power,On\n\nsoon,Power,Off\n", "moves.csv:3: 'soon' is not a time in seconds"},
        {"-1,Power,On", "moves.csv:1: the time -1 lies before the start"},
        {"1,Power", "moves.csv:1: expected time, title and value"},
        {"1,Power,On,Off", "moves.csv:1: expected time, title and value"},
        {"1,LGainL,99", "moves.csv:1: LGainL cannot be '99'; it goes from -16.00 to 16.00 dB"},
        {"inf,Power,On", "moves.csv:1: 'inf' is not a time in seconds"},
        // Column heads are heads on the first line only.
        {"1,Power,On\ntime,title,value", "moves.csv:2: 'time' is not a time in seconds"},
        {std::string(100000, 'x'), "moves.csv:1: the line is too long"},
        {"", "none"},
    };
    for (const auto& [text, words] : rows)
        EXPECT_EQ(complaintOf([&] { parsed(text); }), words);
}

}  // namespace
