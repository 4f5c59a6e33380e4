// Values as people type them, and lists of them in time.
#include "ParameterText.h"
#include "Automation.h"
#include "FakePlugin.h"
#include "ToolError.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <sstream>

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
    ParameterText parameters = someParameters();
    try {
        parameters.parse(setting);
    } catch (const ToolError& error) {
        return error.what();
    }
    return "accepted";
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
    EXPECT_EQ(complaint("LGainL=3.55"),
              "LGainL cannot be '3.55'; the nearest values are 3.50 and 3.60 dB");
    EXPECT_EQ(complaint("LGainL=16.1"), "LGainL cannot be '16.1'; it goes from -16.00 to 16.00 dB");
    EXPECT_EQ(complaint("LFreqL=83"), "LFreqL cannot be '83'; it can be Off, 550.00, 82.00, 33.00");
    EXPECT_EQ(complaint("LGainR=1"),
              "the plug-in has no parameter 'LGainR'; similar ones are LGainL, LGainL2");
    EXPECT_EQ(complaint("Quux=1"),
              "the plug-in has no parameter 'Quux'; 'zkrt46 params' lists them");
    for (const char* bad :
         {"LGainL", "LGainL=", "LGainL=+-3", "LGainL=nan", "LGainL=inf", "LGainL=3.5x",
          "LGainL=1.1n", "LGainL=-0.1n", "LGainL=nann", "Power=1", "Smooth=0.3", "=On"})
        EXPECT_NE(complaint(bad), "accepted") << bad;
}

std::string automationComplaint(const std::string& text)
{
    ParameterText parameters = someParameters();
    std::istringstream stream(text);
    try {
        parseAutomation(stream, "moves.csv", parameters);
    } catch (const ToolError& error) {
        return error.what();
    }
    return "accepted";
}

TEST(Automation, ReadsTheUsualSeparatorsAndSortsByTime)
{
    ParameterText parameters = someParameters();
    std::istringstream text("\xEF\xBB\xBFtime, title, value\r\n"
                            "# a comment\r\n"
                            "\r\n"
                            "2.5, LGainL, +3.5   # louder\r\n"
                            "1;Power;off\n"
                            "1\tPower\tOn\n"
                            "0.25 LFreqL 82");
    const std::vector<AutomationPoint> points = parseAutomation(text, "moves.csv", parameters);
    ASSERT_EQ(points.size(), 4u);
    EXPECT_EQ(points[0].seconds, 0.25);
    EXPECT_EQ(points[0].assignment.index, 1);
    // Changes of one time keep the order of the file: the last one counts.
    EXPECT_EQ(points[1].assignment.value, 0.0f);
    EXPECT_EQ(points[2].assignment.value, 1.0f);
    EXPECT_EQ(points[3].seconds, 2.5);
    EXPECT_EQ(points[3].assignment.value, 195.0f / 320.0f);
}

TEST(Automation, KeepsTheOrderOfManyChangesAtOneTime)
{
    ParameterText parameters = someParameters();
    std::ostringstream text;
    for (int step = 0; step < 100; ++step)
        text << (step % 2 ? "1" : "2") << ",Smooth," << step / 100.0 << "n\n";
    std::istringstream lines(text.str());
    const std::vector<AutomationPoint> points = parseAutomation(lines, "moves.csv", parameters);
    ASSERT_EQ(points.size(), 100u);
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (i != 50) {  // where the second time begins
            EXPECT_GT(points[i].assignment.value, points[i - 1].assignment.value) << i;
        }
    }
}

TEST(Automation, NamesTheLineThatIsWrong)
{
    EXPECT_EQ(automationComplaint("1,Power,On\n\nsoon,Power,Off\n"),
              "moves.csv:3: 'soon' is not a time in seconds");
    EXPECT_EQ(automationComplaint("-1,Power,On"), "moves.csv:1: the time -1 lies before the start");
    EXPECT_EQ(automationComplaint("1,Power"), "moves.csv:1: expected time, title and value");
    EXPECT_EQ(automationComplaint("1,Power,On,Off"), "moves.csv:1: expected time, title and value");
    EXPECT_EQ(automationComplaint("1,LGainL,99"),
              "moves.csv:1: LGainL cannot be '99'; it goes from -16.00 to 16.00 dB");
    EXPECT_EQ(automationComplaint("inf,Power,On"), "moves.csv:1: 'inf' is not a time in seconds");
    // Column heads are heads on the first line only.
    EXPECT_NE(automationComplaint("1,Power,On\ntime,title,value"), "accepted");
    EXPECT_EQ(automationComplaint(std::string(100000, 'x')), "moves.csv:1: the line is too long");
    EXPECT_EQ(automationComplaint(""), "accepted");
}

}  // namespace
