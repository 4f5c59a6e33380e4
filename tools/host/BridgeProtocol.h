// The messages between a host on Linux and the helper that holds a Windows plug-in under Wine. Each
// message is a 32-bit length and that many bytes, everything little-endian; the host asks, the
// helper answers, one at a time. A request is a command byte and its arguments. An answer is a
// status byte and, for kBridgeDone, the effect's fields and the result, for kBridgeFailed a text.
#pragma once

#include "tools/host/Plugin.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace host {

// The first bytes on the line from the helper: proof that a helper of the same build is there.
constexpr std::uint32_t kBridgeGreeting = 0x3142525A;  // "ZRB1"

// Longer messages are taken as damage. A chunk or a block of audio stays far below.
constexpr std::uint32_t kBridgeLongestMessage = 64u << 20;

enum BridgeStatus : std::uint8_t {
    kBridgeDone = 0,
    kBridgeFailed = 1,
};

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
};

class MessageWriter {
public:
    template <typename T>
    void put(const T& value)
    {
        static_assert(std::is_trivially_copyable_v<T>, "only plain bytes cross the border");
        putRaw(&value, sizeof(T));
    }
    void putRaw(const void* data, std::size_t size);
    // With their length in front.
    void putBytes(const void* data, std::size_t size);
    void putText(const std::string& text) { putBytes(text.data(), text.size()); }

    // The message, with its length in front, ready for the line.
    const std::vector<std::uint8_t>& framed();

private:
    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(sizeof(std::uint32_t));
};

// Reads a message front to back. A read past the end throws HostError.
class MessageReader {
public:
    explicit MessageReader(std::vector<std::uint8_t> message)
        : bytes(std::move(message)), position(0)
    {
    }
    template <typename T>
    T get()
    {
        static_assert(std::is_trivially_copyable_v<T>, "only plain bytes cross the border");
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
