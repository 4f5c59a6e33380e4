// Checking goes on after a fault as long as the next record can be located.
#include "tools/banks/RecordCheck.h"

#include "platform/Utf8.h"
#include "tools/banks/PresetName.h"

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

std::string numberText(float value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.9g", static_cast<double>(value));
    return text;
}

}  // namespace

RecordCheck::RecordCheck(const FileParts& parts, const std::vector<std::string>& titles,
                         BankReport& report)
    : parts(parts), titles(titles), report(report), bank(parts.kind != FileKind::Preset)
{
}

void RecordCheck::run()
{
    const ByteView records{parts.records.data(), parts.records.size()};
    RecordReader reader(records, parts.header.recordCount, parts.swap);
    std::size_t end = 0;
    int number = 0;
    Record record{};
    while (reader.next(record)) {
        ++number;
        if (parts.recordsAt + reader.position() < parts.end)
            checkRecord(record, parts.recordsAt + reader.position());
        end = reader.position() + kRecordHeadSize + static_cast<std::size_t>(record.size);
    }
    if (reader.fault() != RecordReader::Fault::None) {
        explainFault(reader.fault(), record, parts.recordsAt + reader.position(), number + 1);
        return;
    }
    const std::size_t inFile = parts.end - std::min(parts.end, parts.recordsAt);
    const std::size_t lookedAt = std::min(inFile, records.size);
    if (end < lookedAt)
        report.note("trailing bytes", parts.recordsAt + end,
                    std::to_string(lookedAt - end)
                        + " bytes follow the last record and are not looked at",
                    Outcome::Partly);
    if (report.isTaken())
        checkCompleteness();
}

void RecordCheck::explainFault(RecordReader::Fault fault, const Record& record, std::size_t at,
                               int number)
{
    const std::string which =
        "record " + std::to_string(number) + " of " + std::to_string(parts.header.recordCount);
    const std::size_t left = parts.recordsAt + parts.records.size() - at;
    const std::string rest = std::to_string(left) + " bytes are left";
    if (fault == RecordReader::Fault::HeadCutOff)
        report.fault("records", at,
                     left == 0 ? which + " should begin here, where the records end"
                               : which + " is cut off in its head of "
                             + std::to_string(kRecordHeadSize) + " bytes: " + rest,
                     Outcome::Undone);
    else if (fault == RecordReader::Fault::BadSize)
        report.fault("records", at + Record::kSizeAt,
                     which + " has the negative size " + std::to_string(record.size),
                     Outcome::Undone);
    else
        report.fault("records", at + Record::kSizeAt,
                     which + " says that " + std::to_string(record.size)
                         + " bytes follow its head, but only "
                         + std::to_string(left - kRecordHeadSize) + " are left",
                     Outcome::Undone);
}

void RecordCheck::checkRecord(const Record& record, std::size_t at)
{
    if (bank && (record.preset < 0 || record.preset >= kPresetCount)) {
        report.note("records of presets beyond the bank", at + Record::kPresetAt,
                    "a record of preset " + std::to_string(record.preset)
                        + ", which lies outside 0 to " + std::to_string(kPresetCount - 1)
                        + ", is skipped",
                    Outcome::Partly);
        return;
    }
    if (!bank && record.preset != 0)
        report.note("records of other presets", at + Record::kPresetAt,
                    "a record tells that it belongs to preset " + std::to_string(record.preset)
                        + " instead of 0; in a preset file this is not looked at");
    const std::size_t preset = bank ? static_cast<std::size_t>(record.preset) : 0;
    if (record.kind == kNameRecord)
        checkName(record, at, preset);
    else if (record.kind == kValueRecord)
        checkValue(record, at, preset);
    else
        report.note("records of unknown kinds", at,
                    "a record of the unknown kind " + std::to_string(record.kind) + " is skipped",
                    Outcome::Partly);
}

void RecordCheck::checkName(const Record& record, std::size_t at, std::size_t preset)
{
    const std::uint8_t* name = recordName(record);
    if (!name) {
        report.fault("short name records", at + Record::kSizeAt,
                     "a name record" + ofPreset(preset) + " holds " + std::to_string(record.size)
                         + " bytes, too few for a name, and is skipped",
                     Outcome::Partly);
        return;
    }
    Seen& known = seen[preset];
    if (bank && known.values.any()) {
        report.note("presets reset by a late name record", at,
                    std::to_string(known.values.count()) + " values" + ofPreset(preset)
                        + " stand ahead of this name record, which resets them to the default",
                    Outcome::Partly);
        known.values.reset();
    }
    if (known.name)
        report.note("repeated names", at,
                    "a second name record" + ofPreset(preset) + "; the later one counts",
                    Outcome::Partly);
    known.name = true;
    checkNameText(reinterpret_cast<const char*>(name), at + Record::kBodyAt, preset);
    if (static_cast<std::size_t>(record.size) != kNameBodySize)
        report.note("name records of another size", at + Record::kSizeAt,
                    "a name record" + ofPreset(preset) + " holds " + std::to_string(record.size)
                        + " bytes instead of " + std::to_string(kNameBodySize) + "; the first "
                        + std::to_string(kPresetNameSize) + " are the name");
    checkReserved(record, at, kPresetNameSize, kNameBodySize);
}

void RecordCheck::checkNameText(const char* name, std::size_t at, std::size_t preset)
{
    if (isPlainName(name))
        return;
    const std::string field(name, kPresetNameSize);
    const std::size_t length = std::min(field.find('\0'), kPresetNameSize);
    const std::string text = field.substr(0, length);
    const std::string which = "the name" + ofPreset(preset) + ", \"" + printable(text) + "\", ";
    if (length == kPresetNameSize)
        report.note("names without a terminator", at,
                    which + "fills all " + std::to_string(kPresetNameSize)
                        + " bytes and has no terminator");
    const std::size_t behind = field.find_first_not_of('\0', length);
    if (behind != std::string::npos)
        report.note("names with bytes behind them", at + behind,
                    which + "has other bytes behind its terminator");
    if (!platform::isUtf8(text))
        report.note("names that are not UTF-8", at, which + "is not UTF-8");
}

void RecordCheck::checkValue(const Record& record, std::size_t at, std::size_t preset)
{
    const auto entry = recordValue(record, parts.swap);
    if (!entry) {
        report.fault("short value records", at + Record::kSizeAt,
                     "a value record" + ofPreset(preset) + " holds " + std::to_string(record.size)
                         + " bytes, too few for a value, and is skipped",
                     Outcome::Partly);
        return;
    }
    if (static_cast<std::size_t>(record.size) != kValueBodySize)
        report.note("value records of another size", at + Record::kSizeAt,
                    "a value record" + ofPreset(preset) + " holds " + std::to_string(record.size)
                        + " bytes instead of " + std::to_string(kValueBodySize));
    checkReserved(record, at, ValueEntry::kIdAt + sizeof(entry->id), ValueEntry::kValueAt);
    checkReserved(record, at, ValueEntry::kValueAt + sizeof(entry->value), kValueBodySize);
    if (entry->id < 0 || static_cast<unsigned>(entry->id) >= kPresetParamCount) {
        report.note("values of unknown parameters", at + Record::kBodyAt + ValueEntry::kIdAt,
                    "a value" + ofPreset(preset) + " for the unknown parameter "
                        + std::to_string(entry->id) + " is skipped",
                    Outcome::Partly);
        return;
    }
    const auto id = static_cast<std::size_t>(entry->id);
    if (!isNormalised(entry->value))
        report.fault("values outside 0 to 1", at + Record::kBodyAt + ValueEntry::kValueAt,
                     "the value of " + titleOf(id) + ofPreset(preset) + " is "
                         + numberText(entry->value) + ", which lies outside 0 to 1",
                     Outcome::Undone);
    if (seen[preset].values[id])
        report.note("repeated values", at + Record::kBodyAt + ValueEntry::kIdAt,
                    "a second value of " + titleOf(id) + ofPreset(preset)
                        + "; the later one counts",
                    Outcome::Partly);
    seen[preset].values[id] = true;
}

// Bytes of the body that the plug-in writes as zeros, as far as the body has them.
void RecordCheck::checkReserved(const Record& record, std::size_t at, std::size_t from,
                                std::size_t to)
{
    const auto size = std::min(to, static_cast<std::size_t>(record.size));
    for (std::size_t i = from; i < size; ++i) {
        if (record.body[i] == 0)
            continue;
        report.note("records with reserved bytes that are not zero", at + Record::kBodyAt + i,
                    "a reserved byte of a record is not zero; it is not looked at");
        return;
    }
}

// Reports what is missing after all records have been read.
void RecordCheck::checkCompleteness()
{
    std::string absent;
    for (std::size_t preset = 0; preset < (bank ? seen.size() : 1); ++preset) {
        const Seen& known = seen[preset];
        if (bank && !known.name && known.values.none())
            absent += (absent.empty() ? "" : ", ") + std::to_string(preset);
        else if (bank && !known.name)
            report.note("presets without a name record", std::nullopt,
                        "there are values but no name record" + ofPreset(preset)
                            + ": the values are laid over the preset that the plug-in has there",
                        Outcome::Partly);
        else if (!known.name)
            report.note("presets without a name record", std::nullopt,
                        "there is no name record: the preset gets the name of the default preset",
                        Outcome::Partly);
        if (known.name || !bank)
            checkMissingValues(preset);
    }
    // A host's file of one preset has no records of the others.
    if (!absent.empty() && parts.kind != FileKind::HostPreset)
        report.note("absent presets", std::nullopt,
                    "there are no records of preset " + absent
                        + ": the plug-in keeps what it has there",
                    Outcome::Partly);
}

void RecordCheck::checkMissingValues(std::size_t preset)
{
    constexpr std::size_t kMaxNamed = 5;
    const auto& values = seen[preset].values;
    const std::size_t missing = values.size() - values.count();
    if (missing == 0)
        return;
    std::string names;
    std::size_t named = 0;
    for (std::size_t id = 0; id < values.size(); ++id)
        if (!values[id] && ++named <= kMaxNamed)
            names += (names.empty() ? "" : ", ") + titleOf(id);
    report.note(
        "presets with missing values", std::nullopt,
        "there is no value" + ofPreset(preset) + " for " + names
            + (missing > kMaxNamed ? " and " + std::to_string(missing - kMaxNamed) + " more" : "")
            + ": the default is taken",
        Outcome::Partly);
}

std::string RecordCheck::titleOf(std::size_t id) const
{
    return id < titles.size() ? titles[id] : "parameter " + std::to_string(id);
}

std::string RecordCheck::ofPreset(std::size_t preset) const
{
    return bank ? " of preset " + std::to_string(preset) : "";
}

}  // namespace tool
