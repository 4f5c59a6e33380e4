// The binary format of banks and presets in files, in the per-user store and in a host's project.
//
// An image is a header of 41 bytes and a list of records. Each record contains its own size, so
// that a reader can skip records of unknown kinds; there need not be a record for every name and
// value. All fields are unaligned, and little-endian unless the magic is reversed: images from a
// big-endian machine are big-endian.
#pragma once

#include "presets/PresetSlot.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

constexpr std::uint32_t kMagic = 0x5A743436;          // "64tZ" in a file
constexpr std::uint32_t kReversedMagic = 0x3634745A;  // the same on a big-endian machine
constexpr std::uint8_t kBankKind = 0x38;
constexpr std::uint8_t kPresetKind = 0x22;

constexpr std::size_t kFileHeaderSize = 41;
constexpr std::size_t kRecordHeadSize = 12;
constexpr std::size_t kNameRecordSize = 168;
constexpr std::size_t kValueRecordSize = 32;
constexpr std::size_t kNameBodySize = kNameRecordSize - kRecordHeadSize;
constexpr std::size_t kValueBodySize = kValueRecordSize - kRecordHeadSize;
constexpr std::size_t kPresetImageSize =
    kFileHeaderSize + kNameRecordSize + kPresetParamCount * kValueRecordSize;
constexpr std::size_t kBankImageSize =
    kFileHeaderSize + kPresetCount * (kNameRecordSize + kPresetParamCount * kValueRecordSize);
static_assert(kPresetImageSize == 2065 && kBankImageSize == 48617, "files of users have this size");

// The controller's state in a host's project is this prefix, a version and the magic (both
// little-endian), followed by a bank image.
constexpr std::array<std::uint8_t, 8> kStatePrefix{
    {0x00, 0x00, 0x00, 0x02, 0x36, 0x34, 0x74, 0x5A}};
constexpr std::size_t kStateSize = kStatePrefix.size() + kBankImageSize;
static_assert(kStateSize == 48625, "projects of users contain states of this size");

// Files are read up to this size, which is far larger than any image.
constexpr std::size_t kMaxFileSize = 1 << 24;

// Bytes that are not owned.
struct ByteView {
    const std::uint8_t* data;
    std::size_t size;
};

struct FileHeader {
    // Bytes from the start of the image.
    static constexpr std::size_t kKindAt = 4, kFormatAt = 5, kParametersAt = 9, kRecordsAt = 13,
                                 kCurrentAt = 17, kPayloadAt = 21, kReservedAt = 25;

    std::uint32_t magic;
    std::uint8_t kind;
    std::uint32_t formatWord;
    std::int32_t parameterCount;
    std::int32_t recordCount;
    std::int32_t currentPreset;
    std::int32_t payloadSize;  // bytes that follow the header
    std::array<std::uint32_t, 4> reserved;
};

// The fields of the 41 bytes at `bytes`, read as little-endian.
FileHeader readHeader(const std::uint8_t* bytes);

// Reverses the byte order of every field but magic and kind.
void swapHeader(FileHeader& header);

struct ImageStart {
    std::uint8_t kind;
    bool bigEndian;  // the image comes from a big-endian machine
};

// Kind and byte order from the first five bytes; nothing if they are not those of an image.
std::optional<ImageStart> readImageStart(ByteView image);

enum RecordKind : std::int32_t { kNameRecord = 0, kValueRecord = 1 };

// A record inside the bytes of an image.
struct Record {
    // Bytes from the start of the record.
    static constexpr std::size_t kSizeAt = 4, kPresetAt = 8, kBodyAt = kRecordHeadSize;

    std::int32_t kind;
    std::int32_t size;         // bytes after the head
    std::int32_t preset;       // may be any number in a damaged image
    const std::uint8_t* body;  // `size` bytes
};

struct ValueEntry {
    // Bytes from the start of the record's body.
    static constexpr std::size_t kIdAt = 0, kValueAt = 12;

    std::int32_t id;
    float value;
};

// The name field of a record of kind 0; null if the record is too short to hold one.
const std::uint8_t* recordName(const Record& record);
// Id and value of a record of kind 1; nothing if the record is too short to hold them.
std::optional<ValueEntry> recordValue(const Record& record, bool swap);
// True for 0 to 1; false for a value that is not a number.
bool isNormalised(float value);

// Steps through the records and never reads beyond their bytes.
class RecordReader {
public:
    enum class Fault {
        None,
        HeadCutOff,  // fewer than 12 bytes are left
        BadSize,     // the record's size is negative
        BodyCutOff,  // the record's size reaches past the end
    };

    // Reads up to `count` records; bytes after them are ignored. `swap`: they are big-endian.
    RecordReader(ByteView records, std::int32_t count, bool swap);

    // False after the last record and at a fault, where reading ends.
    bool next(Record& record);
    Fault fault() const { return found; }
    // The start of the record read last, or of the faulty one, in bytes from the first record.
    std::size_t position() const { return start; }

private:
    ByteView records;
    std::int32_t remaining;
    bool swap;
    std::size_t start = 0, end = 0;
    Fault found = Fault::None;
};

// Reads the records of a bank image into the 24 presets at `bank`. A name record first resets its
// preset to `resetImage`; presets without records are unchanged. Records of unknown kinds are
// skipped. False, and nothing changed, if a record is damaged or a value lies outside 0 to 1.
bool readBankRecords(ByteView records, std::int32_t count, bool swap, const PresetSlot& resetImage,
                     PresetSlot* bank);

// The same for a preset image, whatever the preset numbers in its records; the preset is reset to
// `resetImage` before the first record.
bool readPresetRecords(ByteView records, std::int32_t count, bool swap,
                       const PresetSlot& resetImage, PresetSlot& preset);

// Writes an image from its header and the records appended to it.
class ImageWriter {
public:
    // The header announces `recordCount` records of `payloadSize` bytes in all.
    ImageWriter(std::uint8_t kind, std::int32_t currentPreset, std::int32_t recordCount,
                std::size_t payloadSize);
    void appendName(std::int32_t preset, const PresetSlot& slot);
    void appendValue(std::int32_t preset, unsigned id, float value);
    std::vector<std::uint8_t> take() { return std::move(image); }

private:
    std::vector<std::uint8_t> image;
};
