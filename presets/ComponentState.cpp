#include "presets/ComponentState.h"

#include "presets/BankFormat.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace Steinberg {
namespace Vst {

namespace {

constexpr uint32 kVersion = 1;
constexpr std::size_t kHeadWords = 3;
constexpr std::size_t kWord = 4;
// More than any later build will have; a larger count means damaged data.
constexpr uint32 kMaxValues = 4096;

void append(std::vector<char>& bytes, uint32 word)
{
    for (std::size_t byte = 0; byte < kWord; ++byte)
        bytes.push_back(static_cast<char>(word >> (8 * byte)));
}

uint32 wordAt(const std::vector<char>& bytes, std::size_t index)
{
    uint32 word = 0;
    for (std::size_t byte = 0; byte < kWord; ++byte)
        word |= static_cast<uint32>(static_cast<unsigned char>(bytes[index * kWord + byte]))
            << (8 * byte);
    return word;
}

// Returns fewer bytes if the stream ends earlier.
std::vector<char> read(IBStream& stream, std::size_t size)
{
    std::vector<char> bytes(size);
    std::size_t total = 0;
    int32 count = 0;
    while (total < size
           && stream.read(bytes.data() + total, static_cast<int32>(size - total), &count)
               == kResultOk
           && count > 0)
        // Some streams report more than they were asked for.
        total += std::min(static_cast<std::size_t>(count), size - total);
    bytes.resize(total);
    return bytes;
}

}  // namespace

std::vector<char> writeComponentState(const StateValues& values)
{
    std::vector<char> bytes;
    append(bytes, kMagic);
    append(bytes, kVersion);
    append(bytes, static_cast<uint32>(values.size()));
    for (const std::optional<ParamValue>& value : values) {
        const float number =
            value ? static_cast<float>(*value) : std::numeric_limits<float>::quiet_NaN();
        uint32 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        append(bytes, bits);
    }
    return bytes;
}

StateValues readComponentState(IBStream& stream)
{
    StateValues values;
    const std::vector<char> head = read(stream, kHeadWords * kWord);
    if (head.size() < kHeadWords * kWord || wordAt(head, 0) != kMagic || wordAt(head, 1) != kVersion
        || wordAt(head, 2) > kMaxValues)
        return values;
    const std::size_t count = wordAt(head, 2);
    const std::vector<char> numbers = read(stream, count * kWord);
    if (numbers.size() < count * kWord)
        return values;
    for (std::size_t id = 0; id < std::min(count, values.size()); ++id) {
        const uint32 bits = wordAt(numbers, id);
        float number = 0.0f;
        std::memcpy(&number, &bits, sizeof number);
        if (isNormalised(number))
            values[id] = static_cast<ParamValue>(number);
    }
    return values;
}

}  // namespace Vst
}  // namespace Steinberg
