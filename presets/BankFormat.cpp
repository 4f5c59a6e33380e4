#include "presets/BankFormat.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint32_t kFormatWord = 0x01000100;

std::uint32_t reversed(std::uint32_t x)
{
    return x >> 24 | (x >> 8 & 0xFF00) | (x << 8 & 0xFF0000) | x << 24;
}

std::int32_t reversed(std::int32_t x)
{
    return static_cast<std::int32_t>(reversed(static_cast<std::uint32_t>(x)));
}

std::uint32_t read32(const std::uint8_t* bytes, bool swap = false)
{
    const std::uint32_t x = static_cast<std::uint32_t>(bytes[0])
        | static_cast<std::uint32_t>(bytes[1]) << 8 | static_cast<std::uint32_t>(bytes[2]) << 16
        | static_cast<std::uint32_t>(bytes[3]) << 24;
    return swap ? reversed(x) : x;
}

void write32(std::uint8_t* bytes, std::uint32_t x)
{
    for (int i = 0; i < 4; ++i)
        bytes[i] = static_cast<std::uint8_t>(x >> 8 * i);
}

std::int32_t readInt(const std::uint8_t* bytes, bool swap = false)
{
    return static_cast<std::int32_t>(read32(bytes, swap));
}

// A record of that size with its head; zeros behind it.
template <std::size_t size>
std::array<std::uint8_t, size> startRecord(RecordKind kind, std::int32_t preset)
{
    std::array<std::uint8_t, size> record{};
    write32(record.data(), static_cast<std::uint32_t>(kind));
    write32(&record[Record::kSizeAt], static_cast<std::uint32_t>(size - kRecordHeadSize));
    write32(&record[Record::kPresetAt], static_cast<std::uint32_t>(preset));
    return record;
}

// Applies a record of an image of either kind to the preset in `slot`. False if its value lies
// outside 0 to 1.
bool applyRecord(const Record& record, bool swap, PresetSlot& slot)
{
    if (record.kind == kNameRecord) {
        if (const std::uint8_t* name = recordName(record))
            std::memcpy(slot.name, name, kPresetNameSize);
    } else if (record.kind == kValueRecord) {
        const auto entry = recordValue(record, swap);
        if (!entry || entry->id < 0 || static_cast<unsigned>(entry->id) >= kPresetParamCount)
            return true;
        if (!isNormalised(entry->value))
            return false;
        setValue(slot, static_cast<unsigned>(entry->id), entry->value);
    }
    return true;
}

}  // namespace

FileHeader readHeader(const std::uint8_t* bytes)
{
    FileHeader header{read32(bytes),
                      bytes[FileHeader::kKindAt],
                      read32(bytes + FileHeader::kFormatAt),
                      readInt(bytes + FileHeader::kParametersAt),
                      readInt(bytes + FileHeader::kRecordsAt),
                      readInt(bytes + FileHeader::kCurrentAt),
                      readInt(bytes + FileHeader::kPayloadAt),
                      {}};
    for (std::size_t i = 0; i < header.reserved.size(); ++i)
        header.reserved[i] = read32(bytes + FileHeader::kReservedAt + 4 * i);
    return header;
}

void swapHeader(FileHeader& header)
{
    header.formatWord = reversed(header.formatWord);
    header.parameterCount = reversed(header.parameterCount);
    header.recordCount = reversed(header.recordCount);
    header.currentPreset = reversed(header.currentPreset);
    header.payloadSize = reversed(header.payloadSize);
    for (std::uint32_t& word : header.reserved)
        word = reversed(word);
}

std::optional<ImageStart> readImageStart(ByteView image)
{
    if (image.size <= FileHeader::kKindAt)
        return std::nullopt;
    const std::uint32_t magic = read32(image.data);
    if (magic != kMagic && magic != kReversedMagic)
        return std::nullopt;
    return ImageStart{image.data[FileHeader::kKindAt], magic == kReversedMagic};
}

const std::uint8_t* recordName(const Record& record)
{
    return static_cast<std::size_t>(record.size) < kPresetNameSize ? nullptr : record.body;
}

std::optional<ValueEntry> recordValue(const Record& record, bool swap)
{
    if (static_cast<std::size_t>(record.size) < ValueEntry::kValueAt + sizeof(float))
        return std::nullopt;
    ValueEntry entry{readInt(record.body + ValueEntry::kIdAt, swap), 0.0f};
    const std::uint32_t bits = read32(record.body + ValueEntry::kValueAt, swap);
    std::memcpy(&entry.value, &bits, sizeof(bits));
    return entry;
}

bool isNormalised(float value)
{
    return value >= 0.0f && value <= 1.0f;
}

RecordReader::RecordReader(ByteView records, std::int32_t count, bool swap)
    : records(records), remaining(count), swap(swap)
{
}

bool RecordReader::next(Record& record)
{
    if (remaining <= 0 || found != Fault::None)
        return false;
    --remaining;
    start = end;
    const std::size_t left = records.size - start;
    if (left < kRecordHeadSize) {
        found = Fault::HeadCutOff;
        return false;
    }
    const std::uint8_t* head = records.data + start;
    record = {readInt(head, swap), readInt(head + Record::kSizeAt, swap),
              readInt(head + Record::kPresetAt, swap), head + Record::kBodyAt};
    if (record.size < 0)
        found = Fault::BadSize;
    else if (static_cast<std::size_t>(record.size) > left - kRecordHeadSize)
        found = Fault::BodyCutOff;
    else
        end = start + kRecordHeadSize + static_cast<std::size_t>(record.size);
    return found == Fault::None;
}

bool readBankRecords(ByteView records, std::int32_t count, bool swap, const PresetSlot& resetImage,
                     PresetSlot* bank)
{
    std::array<PresetSlot, kPresetCount> next;
    std::copy_n(bank, kPresetCount, next.begin());
    RecordReader reader(records, count, swap);
    for (Record record; reader.next(record);) {
        if (record.preset < 0 || record.preset >= kPresetCount)
            continue;
        PresetSlot& slot = next[static_cast<std::size_t>(record.preset)];
        if (record.kind == kNameRecord && recordName(record))
            slot = resetImage;
        if (!applyRecord(record, swap, slot))
            return false;
    }
    if (reader.fault() != RecordReader::Fault::None)
        return false;
    std::copy_n(next.begin(), kPresetCount, bank);
    return true;
}

bool readPresetRecords(ByteView records, std::int32_t count, bool swap,
                       const PresetSlot& resetImage, PresetSlot& preset)
{
    PresetSlot next = resetImage;
    RecordReader reader(records, count, swap);
    for (Record record; reader.next(record);)
        if (!applyRecord(record, swap, next))
            return false;
    if (reader.fault() != RecordReader::Fault::None)
        return false;
    preset = next;
    return true;
}

ImageWriter::ImageWriter(std::uint8_t kind, std::int32_t currentPreset, std::int32_t recordCount,
                         std::size_t payloadSize)
{
    std::array<std::uint8_t, kFileHeaderSize> header{};
    write32(header.data(), kMagic);
    header[FileHeader::kKindAt] = kind;
    write32(&header[FileHeader::kFormatAt], kFormatWord);
    write32(&header[FileHeader::kParametersAt], kPresetParamCount);
    write32(&header[FileHeader::kRecordsAt], static_cast<std::uint32_t>(recordCount));
    write32(&header[FileHeader::kCurrentAt], static_cast<std::uint32_t>(currentPreset));
    write32(&header[FileHeader::kPayloadAt], static_cast<std::uint32_t>(payloadSize));
    image.reserve(kFileHeaderSize + payloadSize);
    image.assign(header.begin(), header.end());
}

void ImageWriter::appendName(std::int32_t preset, const PresetSlot& slot)
{
    auto record = startRecord<kNameRecordSize>(kNameRecord, preset);
    std::copy_n(slot.name, kPresetNameSize, &record[Record::kBodyAt]);
    image.insert(image.end(), record.begin(), record.end());
}

void ImageWriter::appendValue(std::int32_t preset, unsigned id, float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    auto record = startRecord<kValueRecordSize>(kValueRecord, preset);
    write32(&record[Record::kBodyAt + ValueEntry::kIdAt], id);
    write32(&record[Record::kBodyAt + ValueEntry::kValueAt], bits);
    image.insert(image.end(), record.begin(), record.end());
}
