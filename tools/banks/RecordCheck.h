// RecordCheck: checks the records of a preset or bank one by one.
#pragma once

#include "tools/banks/BankCheck.h"

#include <array>
#include <bitset>

namespace tool {

class RecordCheck {
public:
    RecordCheck(const FileParts& parts, const std::vector<std::string>& titles, BankReport& report);
    void run();

private:
    // The records read so far for a preset.
    struct Seen {
        bool name = false;
        std::bitset<kPresetParamCount> values;
    };

    void checkRecord(const Record& record, std::size_t at);
    void checkName(const Record& record, std::size_t at, std::size_t preset);
    void checkNameText(const char* name, std::size_t at, std::size_t preset);
    void checkValue(const Record& record, std::size_t at, std::size_t preset);
    void checkReserved(const Record& record, std::size_t at, std::size_t from, std::size_t to);
    void explainFault(RecordReader::Fault fault, const Record& record, std::size_t at, int number);
    void checkCompleteness();
    void checkMissingValues(std::size_t preset);

    std::string titleOf(std::size_t id) const;
    // " of preset 3" in a bank.
    std::string ofPreset(std::size_t preset) const;

    const FileParts& parts;
    const std::vector<std::string>& titles;
    BankReport& report;
    bool bank;
    std::array<Seen, kPresetCount> seen{};
};

}  // namespace tool
