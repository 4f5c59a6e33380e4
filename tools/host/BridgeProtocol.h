// The messages between a host on Linux and the helper that runs a Windows plug-in under Wine. A
// message is a 32-bit length and that many bytes, little-endian. The host sends a request and waits
// for the answer. A request is a command byte and its arguments. An answer is a status byte, then
// for kBridgeDone the effect's fields and the result, for kBridgeFailed a text.
#pragma once

#include "tools/host/Plugin.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace host {

// The helper's first bytes, which identify the version of the protocol.
constexpr std::uint32_t kBridgeGreeting = 0x3142525A;  // "ZRB1"

// Bytes. A longer message is treated as damaged; chunks and blocks of audio are far shorter.
constexpr std::uint32_t kMaxBridgeMessage = 64u << 20;

enum BridgeStatus : std::uint8_t {
    kBridgeDone = 0,
    kBridgeFailed = 1,
};

// Arguments -> result.
enum class BridgeCommand : std::uint8_t {
    Open,           // path, HostSettings ->
    Dispatch,       // opcode, index, value (int64), opt -> result (int64)
    DispatchBytes,  // opcode, index, value (int64), bytes -> result (int64), bytes
    Chunk,          // index -> bytes
    Arrange,        // inputs, outputs -> 0 or 1 (byte)
    SetParameter,   // index, value (float) ->
    GetParameter,   // index -> float
    Process,        // samples, inputs, one presence byte and the samples each -> outputs
    Reports,        // -> counters and automations
    ClearReports,   // ->
    Idle,           // ->
    Picture,        // -> width, height, pixels
};

// The plug-in's editor as it is drawn: 4 bytes a pixel, blue, green, red and one without meaning;
// rows from the top.
struct Picture {
    std::int32_t width, height;
    std::vector<std::uint8_t> pixels;
};

class MessageWriter {
public:
    template <typename T>
    void put(const T& value)
    {
        static_assert(std::is_trivially_copyable_v<T>, "messages hold plain bytes only");
        putRaw(&value, sizeof(T));
    }
    void putRaw(const void* data, std::size_t size);
    // Preceded by their length.
    void putBytes(const void* data, std::size_t size);
    void putText(const std::string& text) { putBytes(text.data(), text.size()); }

    // The message preceded by its length.
    const std::vector<std::uint8_t>& framed();

private:
    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(sizeof(std::uint32_t));
};

// Reads a message from front to back. A read past the end throws HostError.
class MessageReader {
public:
    explicit MessageReader(std::vector<std::uint8_t> bytes) : bytes(std::move(bytes)), position(0)
    {
    }
    template <typename T>
    T get()
    {
        static_assert(std::is_trivially_copyable_v<T>, "messages hold plain bytes only");
        T value;
        getRaw(&value, sizeof(T));
        return value;
    }
    void getRaw(void* data, std::size_t size);
    std::vector<std::uint8_t> getBytes();
    std::string getText();

private:
    std::vector<std::uint8_t> bytes;
    std::size_t position;
};

void putSettings(MessageWriter& writer, const HostSettings& settings);
HostSettings getSettings(MessageReader& reader);
void putReports(MessageWriter& writer, const HostReports& reports);
HostReports getReports(MessageReader& reader);

}  // namespace host
