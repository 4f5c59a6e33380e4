// The 24 presets that a new instance starts from, against the list that users' projects rely on.
#include "FactoryBank.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>
#include <string>

namespace {

TEST(FactoryBank, HoldsTheNamesAndValuesOfTheList)
{
    std::ifstream list(ZKR_FACTORY);
    std::array<float, kPresetParamCount> first{};
    std::size_t count = 0;
    for (std::string line; std::getline(list, line);) {
        if (line.empty() || line.front() == '#')
            continue;
        SCOPED_TRACE(line);
        ASSERT_LT(count, factoryBank().size());
        const PresetSlot& preset = factoryBank()[count];
        EXPECT_EQ(preset.name, line.substr(0, line.find(':')));
        auto values = first;
        std::istringstream changes(line.substr(line.find(':') + 1));
        std::size_t id = 0;
        char equals = 0;
        for (float value = 0.0f; changes >> id >> equals >> value;)
            values.at(id) = value;
        EXPECT_TRUE(changes.eof()) << "the list is damaged";
        for (id = 0; id < values.size(); ++id)
            EXPECT_EQ(preset.values[id], values[id]) << "id " << id;
        if (count++ == 0)
            first = values;
    }
    EXPECT_EQ(count, factoryBank().size());
}

}  // namespace
