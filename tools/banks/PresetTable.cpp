#include "tools/banks/PresetTable.h"

#include "platform/Utf8.h"
#include "tools/banks/PresetName.h"

#include <algorithm>
#include <cstring>

namespace tool {

namespace {

using Row = std::vector<std::string>;

bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof(a)) == 0;
}

bool isChanged(const PresetSlot& preset, std::size_t id)
{
    return !sameBits(preset.values[id], factoryBank().front().values[id]);
}

void compareNames(const std::string& label, const PresetSlot& left, const PresetSlot& right,
                  std::vector<Row>& rows)
{
    if (std::memcmp(left.name, right.name, kPresetNameSize) == 0)
        return;
    if (nameOf(left) == nameOf(right))
        rows.push_back({label, "(bytes behind the name)", "", ""});
    else
        rows.push_back({label, "(name)", printable(nameOf(left)), printable(nameOf(right))});
}

}  // namespace

std::string asTable(const std::vector<Row>& rows, const std::string& indent)
{
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], platform::countCharacters(row[column]));
    }
    std::string text;
    for (const Row& row : rows) {
        std::string line = indent;
        for (std::size_t column = 0; column < row.size(); ++column)
            line += row[column]
                + std::string(widths[column] - platform::countCharacters(row[column]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

std::string presetTable(const PresetSlot& preset, Shown shown, ParameterText& parameters,
                        const std::string& indent)
{
    std::vector<Row> rows{{"Title", "Display", "Stored"}};
    for (std::size_t id = 0; id < kPresetParamCount; ++id)
        if (shown == Shown::All || isChanged(preset, id))
            rows.push_back({parameters.title(static_cast<int>(id)),
                            displayWithUnit(parameters, id, preset.values[id]),
                            storedText(preset.values[id])});
    if (rows.size() == 1)
        return indent + "Every parameter is at its default.\n";
    return asTable(rows, indent);
}

int changedCount(const PresetSlot& preset)
{
    int count = 0;
    for (std::size_t id = 0; id < kPresetParamCount; ++id)
        count += isChanged(preset, id) ? 1 : 0;
    return count;
}

std::string bankTable(const Bank& bank)
{
    std::vector<Row> rows{{"Index", "Name", "Changed"}};
    for (std::size_t index = 0; index < bank.size(); ++index) {
        const int changed = changedCount(bank[index]);
        rows.push_back({std::to_string(index), printable(nameOf(bank[index])),
                        changed == 0 ? "-" : std::to_string(changed)});
    }
    return asTable(rows);
}

std::string differenceTable(const BankContent& left, const BankContent& right,
                            ParameterText& parameters)
{
    std::vector<Row> rows{{"Preset", "Parameter", "First", "Second"}};
    if (left.currentPreset != right.currentPreset)
        rows.push_back({"", "(current preset)", std::to_string(left.currentPreset),
                        std::to_string(right.currentPreset)});
    for (std::size_t index = 0; index < left.presets.size(); ++index) {
        const PresetSlot& one = left.presets[index];
        const PresetSlot& other = right.presets[index];
        const std::string label = presetLabel(index, one);
        compareNames(label, one, other, rows);
        for (std::size_t id = 0; id < kPresetParamCount; ++id) {
            if (sameBits(one.values[id], other.values[id]))
                continue;
            std::string first = displayWithUnit(parameters, id, one.values[id]);
            std::string second = displayWithUnit(parameters, id, other.values[id]);
            if (first == second) {
                first += " (" + storedText(one.values[id]) + ")";
                second += " (" + storedText(other.values[id]) + ")";
            }
            rows.push_back({label, parameters.title(static_cast<int>(id)), first, second});
        }
    }
    return rows.size() == 1 ? "" : asTable(rows);
}

}  // namespace tool
