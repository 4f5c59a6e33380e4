// Banks to JSON and back, and JSON written by hand. The display texts are the plug-in's.
#include "tools/banks/BankJson.h"
#include "tests/tools/Complaint.h"
#include "tools/banks/PresetFile.h"
#include "tools/host/OpenPlugin.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace tool;

std::string bank(const std::string& rest)
{
    return R"({"format": "zkrt46-bank", "version": 1, )" + rest + "}";
}

// A bank whose third preset has these members.
std::string preset(const std::string& members)
{
    return bank(R"("presets": [{"name": "A"}, {"name": "B"}, {)" + members + "}]");
}

std::string setting(const std::string& parameters)
{
    return preset(R"("name": "C", "parameters": {)" + parameters + "}");
}

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

class BankJson : public ::testing::Test {
protected:
    Displays displays{ZKRT46_LIBRARY};

    void expectSameBytes(const BankContent& bank)
    {
        const BankContent back =
            bankFromJson(bankToJson(bank, displays.get()), "bank.json", displays.get());
        EXPECT_EQ(back.currentPreset, bank.currentPreset);
        EXPECT_EQ(std::memcmp(back.presets.data(), bank.presets.data(), 6144), 0);
    }
};

TEST_F(BankJson, GivesTheSameBytesBack)
{
    expectSameBytes({factoryBank(), 0});
    std::mt19937 random(46);
    for (int round = 0; round < 20; ++round) {
        BankContent bank{factoryBank(), round};
        for (PresetSlot& slot : bank.presets) {
            for (char& c : slot.name)
                c = static_cast<char>(random() % (round % 2 ? 256 : 128));
            for (float& value : slot.values) {
                // Any float from 0 to 1, denormals included; and minus zero.
                const auto bits = static_cast<std::uint32_t>(random() % 0x3F800001u);
                std::memcpy(&value, &bits, sizeof(value));
            }
            slot.values[random() % 58] = -0.0f;
        }
        // A valid name, one without a terminator, and six kinds of invalid UTF-8.
        const std::string names[]{"\"q\\\n\x7F\xC3\xA9",
                                  "24 bytes, no terminator.",
                                  "\xED\xA0\x80",
                                  "\xF4\x90\x80\x80",
                                  "\xC0\x80",
                                  "\xE0\x9F\xBF",
                                  "\xF0\x8F\xBF\xBF",
                                  "\xF5\x80\x80\x80"};
        for (std::size_t i = 0; i < std::size(names); ++i) {
            std::memset(bank.presets[i].name, 0, kPresetNameSize);
            names[i].copy(bank.presets[i].name, kPresetNameSize);
        }
        std::memset(bank.presets[8].name, 0, kPresetNameSize);
        expectSameBytes(bank);
    }
}

TEST_F(BankJson, AcceptsHandWrittenValues)
{
    const BankContent bank = bankFromJson("\xEF\xBB\xBF" + setting(R"(
        "lgainr": "-16.00 dB", "LFreqL": {"display": "82"}, "2x": "On", "HGainL": {"stored": 0.75},
        "HGainR": "0.75n", "MGainL": {"display": "0", "stored": 0.5006})"),
                                          "a.json", displays.get());
    const PresetSlot& slot = bank.presets[2];
    EXPECT_STREQ(slot.name, "C");
    EXPECT_EQ(slot.values[kLGainR], 0.0f);
    EXPECT_EQ(slot.values[kLFreqL], 7.0f / 9.0f);  // 82 Hz is entry 7 of 0 to 9
    EXPECT_EQ(slot.values[k2x], 1.0f);
    EXPECT_EQ(slot.values[kHGainL], 0.75f);
    EXPECT_EQ(slot.values[kHGainR], 0.75f);
    EXPECT_EQ(slot.values[kMGainL], 0.5006f) << "0.5006 * 320 + 0.5 is 160.69: displayed as 0.00";
    EXPECT_EQ(slot.values[kLink], 1.0f) << "a parameter that is not listed has its default";
    EXPECT_EQ(slot.values[kMGainR], 0.5f);
    EXPECT_STREQ(bank.presets[3].name, "Init");
    EXPECT_EQ(bank.presets[3].values[k2x], 0.0f);
}

TEST_F(BankJson, ErrorMessagesNamePlaceAndCause)
{
    const std::pair<std::string, const char*> rows[]{
        {"{\n  \"format\": zkr", "a.json:2:13: "},
        {"{\"a\": 1} x", "a.json:1:10: "},
        {"", "a.json:1:1: "},
        {"{\"a\": \"\xFF\"}", "a.json:1:8: "},
        {"[1, 1e999]", "a.json"},
        {std::string(100000, '['), "a.json: it is nested too deeply"},
        {"[" + std::string(100000, '1') + "]", "a.json"},
        {"[0" + repeated(",0", 30000) + "]", "a.json: there are too many values"},
        {"[]", "a.json: expected an object in braces, not a list"},
        {"{}", "a.json: \"format\" is missing"},
        {R"({"format": 1})", "\"format\" must be a string, not a number"},
        {R"({"format": "zkrt46-preset", "version": 1})", "expected \"zkrt46-bank\""},
        {R"({"format": "zkrt46-bank", "version": 2})", "version 2 is not known"},
        {bank(R"("presets": [], "preset": 1)"),
         "unknown key \"preset\"; there can be format, version, currentPreset, presets"},
        {bank(R"("presets": [], "presets": [])"), "\"presets\" stands twice"},
        {bank(R"("currentPreset": 24, "presets": [])"),
         "\"currentPreset\" must be a whole number from 0 to 23"},
        {bank(R"("currentPreset": 1.5, "presets": [])"), "\"currentPreset\" must be"},
        {bank(R"("presets": [)" + repeated(R"({"name": "x"},)", 24) + R"({"name": "x"}])"),
         "there are 25 presets"},
        {preset(R"("value": {})"), "unknown key \"value\""},
        {preset(""), "preset 2: \"name\" is missing"},
        {preset(R"("name": "123456789012345678901234")"), "has 24 bytes; there is room"},
        {preset(R"("name": "a\u0000b")"), "zero character"},
        {preset(R"("name": "C", "nameBytes": "43")"), "48 hexadecimal digits"},
        {preset(R"("name": "D", "nameBytes": "43)" + std::string(46, '0') + '"'),
         "\"name\" and \"nameBytes\" disagree"},
        {setting(R"("LGainX": "0")"),
         "a.json: preset 2 \"C\": the plug-in has no parameter 'LGainX'"},
        {setting(R"("LGainL": "0", "lgainl": "0")"), "LGainL: the parameter stands"},
        {setting(R"("LGainL": 0.5)"), "LGainL: a bare number could mean two things"},
        {setting(R"("LGainL": {})"), "expected \"display\" or \"stored\""},
        {setting(R"("LGainL": null)"), "expected an object in braces, not null"},
        {setting(R"("LGainL": true)"), "expected an object in braces, not true or false"},
        {setting(R"("LGainL": {"stored": 1.0000000001})"), "must lie from 0 to 1"},
        {setting(R"("LGainL": {"stored": -1e-9})"), "must lie from 0 to 1"},
        {setting(R"("LGainL": {"display": "3.50 dB", "stored": 0.5})"),
         "LGainL: \"display\" says '3.50 dB', but \"stored\", 0.5, is '0.00 dB'"},
    };
    for (const auto& [text, words] : rows) {
        const std::string said =
            complaintOf([&, &json = text] { bankFromJson(json, "a.json", displays.get()); });
        EXPECT_NE(said.find(words), std::string::npos) << said << "\n  instead of " << words;
    }
}

}  // namespace
