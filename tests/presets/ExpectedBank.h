// What images do to a bank, worked out plainly and slowly, with nothing of the code under test: the
// records are first listed, then judged, then taken, and numbers are compared by their bits.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace expected {

using Bytes = std::vector<std::uint8_t>;
using Preset = std::array<std::uint8_t, 256>;  // 24 bytes of name, 58 floats
using Bank = std::array<Preset, 24>;

inline std::uint32_t word(const Bytes& bytes, std::size_t at, bool bigEndian)
{
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < 4; ++i)
        result = result * 256 + bytes[at + (bigEndian ? i : 3 - i)];
    return result;
}

inline std::int64_t number(const Bytes& bytes, std::size_t at, bool bigEndian)
{
    const std::int64_t x = word(bytes, at, bigEndian);
    return x < 0x80000000 ? x : x - 0x100000000;
}

// Positive floats are ordered as their bits are; of the negative ones only zero is in 0 to 1.
inline bool liesInZeroToOne(std::uint32_t bits)
{
    return bits <= 0x3F800000 || bits == 0x80000000;
}

struct Record {
    std::int64_t kind, size, preset;
    std::size_t body;
};

inline Record recordAt(const Bytes& bytes, std::size_t at, bool bigEndian)
{
    return {number(bytes, at, bigEndian), number(bytes, at + 4, bigEndian),
            number(bytes, at + 8, bigEndian), at + 12};
}

// The first `count` records of the bytes from `at`; nothing if one of them does not lie in there.
inline std::optional<std::vector<Record>>
listRecords(const Bytes& bytes, std::size_t at, std::size_t end, std::int64_t count, bool bigEndian)
{
    std::vector<Record> records;
    for (std::int64_t i = 0; i < count; ++i) {
        if (end - at < 12)
            return std::nullopt;
        const Record record = recordAt(bytes, at, bigEndian);
        if (record.size < 0 || record.size > static_cast<std::int64_t>(end - record.body))
            return std::nullopt;
        records.push_back(record);
        at = record.body + static_cast<std::size_t>(record.size);
    }
    return records;
}

inline bool isName(const Record& record)
{
    return record.kind == 0 && record.size >= 24;
}

// The id of a value record that is taken, else nothing.
inline std::optional<std::size_t> valueId(const Bytes& bytes, const Record& record, bool bigEndian)
{
    if (record.kind != 1 || record.size < 16)
        return std::nullopt;
    const std::int64_t id = number(bytes, record.body, bigEndian);
    if (id < 0 || id > 57)
        return std::nullopt;
    return static_cast<std::size_t>(id);
}

inline bool holds(const Bytes& bytes, const Record& record, bool bigEndian)
{
    return !valueId(bytes, record, bigEndian)
        || liesInZeroToOne(word(bytes, record.body + 12, bigEndian));
}

inline void take(const Bytes& bytes, const Record& record, bool bigEndian, Preset& preset)
{
    if (isName(record))
        for (std::size_t i = 0; i < 24; ++i)
            preset[i] = bytes[record.body + i];
    if (const auto id = valueId(bytes, record, bigEndian))
        for (std::size_t i = 0; i < 4; ++i)
            preset[24 + 4 * *id + i] = bytes[record.body + (bigEndian ? 15 - i : 12 + i)];
}

inline bool isForBank(const Record& record)
{
    return record.preset >= 0 && record.preset < 24;
}

// False, and nothing taken, if one of the records does not hold.
inline bool takeForBank(const Bytes& bytes, const std::vector<Record>& records, bool bigEndian,
                        const Preset& reset, Bank& bank)
{
    for (const Record& record : records)
        if (isForBank(record) && !holds(bytes, record, bigEndian))
            return false;
    for (const Record& record : records) {
        if (!isForBank(record))
            continue;
        Preset& preset = bank[static_cast<std::size_t>(record.preset)];
        if (isName(record))
            preset = reset;
        take(bytes, record, bigEndian, preset);
    }
    return true;
}

// The controller as far as images touch it. Each load returns how often it selects a preset.
struct Controller {
    Bank bank{};
    Preset reset{};
    std::size_t selected = 0;
    Bytes state = Bytes(48625);  // what was last written or read as the host's state

    int loadBankFile(const Bytes& image, bool reversed = false)
    {
        if (!isImage(image))
            return 0;
        const int times = loadImage(image, reversed, true, 0x38);
        selected = 0;
        return times + 1;
    }
    int loadPresetFile(const Bytes& image, bool reversed = false)
    {
        return loadImage(image, reversed, true, 0x22);
    }
    int loadStoredBank(const Bytes& image) { return loadImage(image, false, false, 0x38); }
    int loadStoredPreset(const Bytes& image) { return loadImage(image, false, false, 0x22); }

    // A state shorter than the buffer leaves the rest of it as it was.
    int loadState(const Bytes& given)
    {
        std::copy_n(given.begin(), std::min(given.size(), state.size()), state.begin());
        return takeBank(state, 8, state.size(), false);
    }

private:
    static bool isImage(const Bytes& image)
    {
        return image.size() >= 5
            && (word(image, 0, false) == 0x5A743436 || word(image, 0, true) == 0x5A743436);
    }

    int loadImage(const Bytes& image, bool reversed, bool isFile, std::uint8_t kind)
    {
        if (!isImage(image) || image[4] != kind || image.size() < 41)
            return 0;
        const bool bigEndian = (word(image, 0, true) == 0x5A743436) != reversed;
        std::size_t end = image.size();
        if (isFile) {
            const std::int64_t payload = number(image, 21, bigEndian);
            if (payload < 0 || payload > static_cast<std::int64_t>(end - 41))
                return 0;
            end = 41 + static_cast<std::size_t>(payload);
        }
        return kind == 0x38 ? takeBank(image, 0, end, bigEndian)
                            : takePreset(image, end, bigEndian);
    }

    int takeBank(const Bytes& bytes, std::size_t header, std::size_t end, bool bigEndian)
    {
        const std::int64_t count = number(bytes, header + 13, bigEndian);
        const std::int64_t current = number(bytes, header + 17, bigEndian);
        const auto records = listRecords(bytes, header + 41, end, count, bigEndian);
        if (count < 0 || !records)
            return 0;
        if (!takeForBank(bytes, *records, bigEndian, reset, bank))
            return 0;
        selected = current >= 0 && current < 24 ? static_cast<std::size_t>(current) : 0;
        return 1;
    }

    int takePreset(const Bytes& bytes, std::size_t end, bool bigEndian)
    {
        const std::int64_t count = number(bytes, 13, bigEndian);
        if (count < 0) {
            bank[selected] = reset;
            return 0;
        }
        const auto records = listRecords(bytes, 41, end, count, bigEndian);
        if (!records)
            return 0;
        for (const Record& record : *records)
            if (!holds(bytes, record, bigEndian))
                return 0;
        bank[selected] = reset;
        for (const Record& record : *records)
            take(bytes, record, bigEndian, bank[selected]);
        return 1;
    }
};

}  // namespace expected
