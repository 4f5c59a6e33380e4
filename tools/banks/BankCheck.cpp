// Checks the start and the header of a file; RecordCheck does the records.
#include "tools/banks/BankCheck.h"

#include "tools/banks/HostFile.h"
#include "tools/banks/RecordCheck.h"

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

std::string hex(std::uint32_t value, int digits)
{
    char text[16];
    std::snprintf(text, sizeof(text), "0x%0*X", digits, value);
    return text;
}

bool isState(ByteView file)
{
    if (file.size < kStatePrefix.size())
        return false;
    return std::equal(kStatePrefix.begin(), kStatePrefix.end(), file.data)
        || (file.size == kStateSize && !readImageStart(file));
}

// Fields that the plug-in ignores or corrects.
void checkIgnoredFields(const FileParts& parts, const std::uint8_t* image, std::size_t base,
                        BankReport& report)
{
    const bool preset = parts.kind == FileKind::Preset;
    const FileHeader& header = parts.header;
    const FileHeader usual = readHeader(ImageWriter(header.kind, 0, 0, 0).take().data());
    if (header.formatWord != usual.formatWord)
        report.note("format words", base + FileHeader::kFormatAt,
                    "the format word is " + hex(header.formatWord, 8) + " instead of "
                        + hex(usual.formatWord, 8) + "; it is not looked at");
    if (header.parameterCount != usual.parameterCount)
        report.note("parameter counts", base + FileHeader::kParametersAt,
                    "the parameter count is " + std::to_string(header.parameterCount)
                        + " instead of " + std::to_string(usual.parameterCount)
                        + "; it is not looked at");
    if (preset && header.currentPreset != 0)
        report.note("current presets", base + FileHeader::kCurrentAt,
                    "the current preset is " + std::to_string(header.currentPreset)
                        + " instead of 0; in a preset file it is not looked at");
    if (!preset && (header.currentPreset < 0 || header.currentPreset >= kPresetCount))
        report.note("current presets", base + FileHeader::kCurrentAt,
                    "the current preset is " + std::to_string(header.currentPreset)
                        + ", which lies outside 0 to " + std::to_string(kPresetCount - 1)
                        + "; preset 0 is taken instead");
    const std::uint8_t* reserved = image + FileHeader::kReservedAt;
    const std::uint8_t* end = image + kFileHeaderSize;
    const std::uint8_t* odd = std::find_if(reserved, end, [](std::uint8_t b) { return b != 0; });
    if (odd != end)
        report.note("reserved bytes", base + static_cast<std::size_t>(odd - image),
                    "a reserved byte of the header is not zero; it is not looked at");
}

// The payload of a file. Values of the store and projects are read without the payload size.
bool takePayload(FileParts& parts, ByteView image, BankReport& report)
{
    const std::size_t left = image.size - kFileHeaderSize;
    const std::size_t readable = std::min(image.size, kMaxFileSize) - kFileHeaderSize;
    const std::int32_t size = parts.header.payloadSize;
    const std::string apart = " (a stored default or memory slot is read to its end instead)";
    if (size < 0) {
        report.fault("payload sizes", FileHeader::kPayloadAt,
                     "the payload size is negative, " + std::to_string(size) + apart,
                     Outcome::NoEffect);
        return false;
    }
    if (static_cast<std::size_t>(size) > left) {
        report.fault("payload sizes", FileHeader::kPayloadAt,
                     "the payload size is " + std::to_string(size) + ", but only "
                         + std::to_string(left) + " bytes follow the header" + apart,
                     Outcome::NoEffect);
        return false;
    }
    if (static_cast<std::size_t>(size) > readable) {
        report.fault("payload sizes", FileHeader::kPayloadAt,
                     "the payload size is " + std::to_string(size) + ", but of a file the first "
                         + std::to_string(kMaxFileSize >> 20) + " MiB are read",
                     Outcome::NoEffect);
        return false;
    }
    const std::uint8_t* first = image.data + kFileHeaderSize;
    parts.records.assign(first, first + size);
    if (static_cast<std::size_t>(size) < left)
        report.note("bytes behind the payload", kFileHeaderSize + static_cast<std::size_t>(size),
                    std::to_string(left - static_cast<std::size_t>(size))
                        + " bytes follow the payload and are not looked at",
                    Outcome::Partly);
    return true;
}

bool checkRecordCount(const FileParts& parts, std::size_t base, BankReport& report)
{
    const std::int32_t count = parts.header.recordCount;
    if (count >= 0)
        return true;
    const bool preset = parts.kind == FileKind::Preset;
    report.fault("record counts", base + FileHeader::kRecordsAt,
                 "the record count is negative, " + std::to_string(count)
                     + (preset ? "; the plug-in resets the selected preset to the default" : ""),
                 preset ? Outcome::Partly : Outcome::NoEffect);
    return false;
}

// The plug-in copies a project's state into a buffer of fixed size and uses only the record count
// and the records.
std::optional<FileParts> takeStateApart(ByteView file, BankReport& report)
{
    const std::size_t base = kStatePrefix.size();
    report.kind = FileKind::State;
    std::vector<std::uint8_t> buffer(file.data, file.data + std::min(file.size, kStateSize));
    if (file.size > kStateSize)
        report.note("state sizes", kStateSize,
                    std::to_string(file.size - kStateSize)
                        + " bytes follow the state and are not looked at",
                    Outcome::Partly);
    buffer.resize(kStateSize);
    const auto odd = std::mismatch(kStatePrefix.begin(), kStatePrefix.end(), buffer.begin()).first;
    if (odd != kStatePrefix.end())
        report.note("prefixes", static_cast<std::size_t>(odd - kStatePrefix.begin()),
                    "the prefix of the state is not the usual one; it is not looked at");
    const std::uint8_t* image = buffer.data() + base;
    FileParts parts{FileKind::State,        false,     readHeader(image),
                    base + kFileHeaderSize, file.size, {}};
    const std::int32_t payload = parts.header.payloadSize;
    const bool whole =
        payload >= 0 && file.size >= parts.recordsAt + static_cast<std::size_t>(payload);
    if (file.size < kStateSize && !whole)
        report.fault("state sizes", file.size,
                     "the state ends here instead of at byte " + std::to_string(kStateSize)
                         + "; VST 3 refuses it, and in VST 2 the rest is what the plug-in's buffer "
                           "held before, in a new instance zeros",
                     Outcome::Partly);
    if (parts.header.magic != kMagic)
        report.note("magics", base, "the magic is not \"64tZ\"; in a state it is not looked at");
    if (parts.header.kind != kBankKind)
        report.note("kinds", base + FileHeader::kKindAt,
                    "the kind is " + hex(parts.header.kind, 2) + " instead of " + hex(kBankKind, 2)
                        + ", a bank; in a state it is not looked at");
    const bool exact = whole && file.size == parts.recordsAt + static_cast<std::size_t>(payload);
    if (payload != static_cast<std::int32_t>(kBankImageSize - kFileHeaderSize) && !exact)
        report.note("payload sizes", base + FileHeader::kPayloadAt,
                    "the payload size is " + std::to_string(parts.header.payloadSize)
                        + "; in a state it is not looked at");
    checkIgnoredFields(parts, image, base, report);
    if (!checkRecordCount(parts, base, report))
        return std::nullopt;
    parts.records.assign(buffer.begin() + static_cast<std::ptrdiff_t>(parts.recordsAt),
                         buffer.end());
    return parts;
}

// Of a host's file, a state with faults in its header is not taken at all.
std::optional<FileParts> takeHostFileApart(ByteView file, BankReport& report)
{
    const auto content = readHostFile(file, report);
    if (!content)
        return std::nullopt;
    BankReport ofState;
    auto parts = takeStateApart({content->state.data(), content->state.size()}, ofState);
    report.append(ofState, content->stateAt, Outcome::NoEffect);
    if (parts) {
        parts->kind = content->kind;
        parts->recordsAt += content->stateAt;
        parts->end += content->stateAt;
    }
    return parts;
}

}  // namespace

std::optional<FileParts> takeApart(ByteView file, BankReport& report)
{
    if (isHostFile(file))
        return takeHostFileApart(file, report);
    if (isState(file))
        return takeStateApart(file, report);
    if (file.size <= FileHeader::kKindAt) {
        report.fault("sizes", file.size,
                     "the file ends here, within the first five bytes that tell what it is",
                     Outcome::Ignored);
        return std::nullopt;
    }
    const auto start = readImageStart(file);
    if (!start) {
        report.fault("magics", 0,
                     "the file does not begin with \"64tZ\": it is no preset and no bank",
                     Outcome::Ignored);
        return std::nullopt;
    }
    if (start->kind != kPresetKind && start->kind != kBankKind) {
        report.fault("kinds", FileHeader::kKindAt,
                     "the kind is " + hex(start->kind, 2) + ", neither " + hex(kBankKind, 2)
                         + ", a bank, nor " + hex(kPresetKind, 2) + ", a preset",
                     Outcome::NoEffect);
        return std::nullopt;
    }
    report.kind = start->kind == kPresetKind ? FileKind::Preset : FileKind::Bank;
    if (start->bigEndian)
        report.note("byte orders", 0,
                    "the magic is reversed: the file comes from a big-endian machine");
    if (file.size < kFileHeaderSize) {
        report.fault("sizes", file.size,
                     "the file ends here, within the header of " + std::to_string(kFileHeaderSize)
                         + " bytes",
                     Outcome::NoEffect);
        return std::nullopt;
    }
    FileParts parts{report.kind,     start->bigEndian, readHeader(file.data),
                    kFileHeaderSize, file.size,        {}};
    if (parts.swap)
        swapHeader(parts.header);
    checkIgnoredFields(parts, file.data, 0, report);
    const bool counted = checkRecordCount(parts, 0, report);
    return takePayload(parts, file, report) && counted ? std::optional(parts) : std::nullopt;
}

// A file that begins neither as a preset nor as a bank may be a project's state, whose first bytes
// the plug-in ignores. An empty file cannot be one.
void noteState(ByteView file, const std::vector<std::string>& titles, BankReport& report)
{
    BankReport state;
    const auto parts = takeStateApart(file, state);
    if (parts)
        RecordCheck(*parts, titles, state).run();
    std::string text = "as a project's state, whose start is not looked at: ";
    if (file.size < kStateSize)
        text += "VST 3 refuses one that is cut short, and in VST 2 the rest of it is what the "
                "plug-in's buffer held before, in a new instance zeros; then ";
    if (parts && parts->header.recordCount == 0)
        text += "there are no records, and the plug-in keeps its bank and selects a preset";
    else
        text += outcomeText(state);
    report.note("states", std::nullopt, text);
}

BankReport checkBank(ByteView file, const std::vector<std::string>& titles)
{
    BankReport report;
    if (const auto parts = takeApart(file, report))
        RecordCheck(*parts, titles, report).run();
    else if (report.outcome == Outcome::Ignored && file.size > 0 && !isHostFile(file))
        noteState(file, titles, report);
    report.close();
    return report;
}

}  // namespace tool
