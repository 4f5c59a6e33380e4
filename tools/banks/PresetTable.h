// Presets and banks as tables of text.
#pragma once

#include "tools/banks/BankJson.h"

#include <string>
#include <vector>

namespace tool {

// Columns as wide as their widest cell, two spaces apart; each row begins with `indent`.
std::string asTable(const std::vector<std::vector<std::string>>& rows,
                    const std::string& indent = "");

enum class Shown { Changed, All };

// Title, display with unit and stored value of every parameter, or of those that differ from the
// default preset.
std::string presetTable(const PresetSlot& preset, Shown shown, ParameterText& parameters,
                        const std::string& indent = "");

// How many parameters differ from the default preset.
int changedCount(const PresetSlot& preset);

// Index, name and number of changes of every preset.
std::string bankTable(const Bank& bank);

// One row for each difference: preset, parameter, display in either bank, and the stored values
// where the displays are the same. Empty for banks that are equal in every byte.
std::string differenceTable(const BankContent& left, const BankContent& right,
                            ParameterText& parameters);

}  // namespace tool
