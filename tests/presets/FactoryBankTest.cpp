// The 24 presets that a new instance starts from. Ids and values are those of users' projects.
#include "FactoryBank.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>

namespace {

using Ids = std::initializer_list<std::size_t>;
using Values = std::array<float, 58>;

Values valuesOf(std::size_t preset)
{
    Values values{};
    std::copy_n(factoryBank().at(preset).values, values.size(), values.begin());
    return values;
}

// All 58 defaults, some replaced.
Values defaultsBut(const std::map<std::size_t, float>& changes)
{
    Values values{};
    for (const std::size_t on : Ids{0, 7, 22, 23, 40, 41})
        values[on] = 1.0f;
    for (const std::size_t middle :
         Ids{3, 8, 9, 12, 13, 28, 29, 32, 33, 38, 39, 46, 47, 50, 51, 56, 57})
        values[middle] = 0.5f;
    for (const auto& [id, value] : changes)
        values[id] = value;
    return values;
}

// clang-format off
TEST(FactoryBank, NamesStandInTheirOrder)
{
    const std::array<const char*, 24> names = {
        "Default", "Fat Kick", "Give it air", "Vox", "Female", "LowFi Bass", "Metal Kick",
        "Drum group", "Drums1", "Drums2", "Round", "Mastering 96k Gentle", "Mastering 96k Open",
        "Mastering round", "Mastering loudness", "Old phone", "Wide warm guitar", "Pseudo amp",
        "Experimental Bass", "R101", "Tshirt", "Init", "Init", "Init"};
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_STREQ(factoryBank()[i].name, names[i]);
}

TEST(FactoryBank, AgreedPresetsHoldTheirValuesAndDefaultsElsewhere)
{
    for (const std::size_t plain : Ids{0, 21, 22, 23})
        EXPECT_EQ(valuesOf(plain), defaultsBut({})) << plain;
    EXPECT_EQ(valuesOf(1), defaultsBut({{26, 1.0f}, {27, 1.0f}, {28, 0.88f}, {29, 0.88f}}));
    EXPECT_EQ(valuesOf(2), defaultsBut({{5, 1.0f}, {14, 1.0f}, {15, 1.0f}}));
    EXPECT_EQ(valuesOf(14), defaultsBut({
        {4, 1.0f}, {5, 1.0f}, {18, 1.0f}, {19, 1.0f}, {20, 1.0f}, {21, 1.0f},
        {26, 0.78f}, {27, 0.78f}, {28, 0.61f}, {29, 0.58f}, {30, 1.0f}, {31, 1.0f},
        {32, 0.49f}, {33, 0.49f}, {36, 0.11f}, {37, 0.11f}, {38, 0.52f}, {39, 0.55f}}));
    EXPECT_EQ(valuesOf(18), defaultsBut({
        {2, 1.0f}, {3, 1.0f}, {5, 1.0f}, {7, 0.0f}, {8, 1.0f}, {9, 0.0f},
        {12, 0.8f}, {13, 0.8f}, {19, 1.0f}, {20, 1.0f}, {21, 1.0f}}));
    EXPECT_EQ(valuesOf(19), defaultsBut({
        {4, 1.0f}, {5, 1.0f}, {6, 1.0f}, {7, 0.0f}, {15, 1.0f}, {23, 0.0f},
        {26, 0.89f}, {28, 0.82f}, {48, 0.44f}, {49, 0.44f}, {50, 0.75f}, {51, 0.73f}}));
}
// clang-format on

TEST(FactoryBank, StereoPresetsTreatLeftAndRightAlike)
{
    for (const std::size_t i : Ids{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 15, 17, 20})
        for (std::size_t left = kDriveL; left < kPresetParamCount; left += 2)
            EXPECT_EQ(valuesOf(i)[left], valuesOf(i)[left + 1])
                << factoryBank()[i].name << ", id " << left;
}

TEST(FactoryBank, ValuesAreNormalisedAndNoneLiesIdleBehindASwitchOrAnAbsentBand)
{
    const Values plain = defaultsBut({});
    for (std::size_t i = 0; i < 24; ++i) {
        SCOPED_TRACE(factoryBank()[i].name);
        const Values values = valuesOf(i);
        const auto untouched = [&](std::size_t first, std::size_t last) {
            return std::equal(&values[first], &values[last] + 1, &plain[first]);
        };
        for (const float value : values)
            EXPECT_TRUE(value >= 0.0f && value <= 1.0f) << value;
        EXPECT_TRUE(values[kQB11] == 1.0f || untouched(kDriveL, kAmpDsbR));
        EXPECT_TRUE(values[k2x] == 1.0f || untouched(kProcL2, kHGainR2));
        // The gain's id is two above the frequency's, the shelf switch's two below.
        for (const std::size_t frequency : Ids{26, 27, 30, 31, 36, 37, 44, 45, 48, 49, 54, 55})
            EXPECT_TRUE(values[frequency] > 0.0f || values[frequency + 2] == 0.5f) << frequency;
        for (const std::size_t shelf : Ids{24, 25, 34, 35, 42, 43, 52, 53})
            EXPECT_TRUE(values[shelf] == 0.0f || (values[shelf] == 1.0f && values[shelf + 2] > 0))
                << shelf;
    }
}

}  // namespace
