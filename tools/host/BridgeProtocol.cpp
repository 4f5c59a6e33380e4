#include "tools/host/BridgeProtocol.h"

#include "tools/host/HostError.h"

#include <cstring>

namespace host {

void MessageWriter::putRaw(const void* data, std::size_t size)
{
    const auto* first = static_cast<const std::uint8_t*>(data);
    bytes.insert(bytes.end(), first, first + size);
}

void MessageWriter::putBytes(const void* data, std::size_t size)
{
    put(static_cast<std::uint32_t>(size));
    putRaw(data, size);
}

const std::vector<std::uint8_t>& MessageWriter::framed()
{
    const auto length = static_cast<std::uint32_t>(bytes.size() - sizeof(std::uint32_t));
    std::memcpy(bytes.data(), &length, sizeof(length));
    return bytes;
}

void MessageReader::getRaw(void* data, std::size_t size)
{
    if (size > bytes.size() - position)
        throw HostError("damaged message on the line to the Windows helper");
    if (size > 0)
        std::memcpy(data, bytes.data() + position, size);
    position += size;
}

std::vector<std::uint8_t> MessageReader::getBytes()
{
    const auto size = get<std::uint32_t>();
    if (size > bytes.size() - position)
        throw HostError("damaged message on the line to the Windows helper");
    std::vector<std::uint8_t> part(size);
    getRaw(part.data(), size);
    return part;
}

std::string MessageReader::getText()
{
    const std::vector<std::uint8_t> part = getBytes();
    return std::string(part.begin(), part.end());
}

void putSettings(MessageWriter& writer, const HostSettings& settings)
{
    writer.put(settings.vstVersion);
    writer.put(settings.processLevel);
    writer.put(settings.sampleRate);
    writer.put(settings.blockSize);
}

HostSettings getSettings(MessageReader& reader)
{
    HostSettings settings;
    settings.vstVersion = reader.get<VstInt32>();
    settings.processLevel = reader.get<VstInt32>();
    settings.sampleRate = reader.get<double>();
    settings.blockSize = reader.get<VstInt32>();
    return settings;
}

void putReports(MessageWriter& writer, const HostReports& reports)
{
    for (const int count :
         {reports.beginEdits, reports.endEdits, reports.ioChanges, reports.displayUpdates,
          reports.windowSizes, reports.windowWidth, reports.windowHeight})
        writer.put(static_cast<std::int32_t>(count));
    writer.put(static_cast<std::uint32_t>(reports.automated.size()));
    for (const HostReports::Automation& automation : reports.automated) {
        writer.put(automation.index);
        writer.put(automation.value);
    }
}

HostReports getReports(MessageReader& reader)
{
    HostReports reports;
    for (int* count :
         {&reports.beginEdits, &reports.endEdits, &reports.ioChanges, &reports.displayUpdates,
          &reports.windowSizes, &reports.windowWidth, &reports.windowHeight})
        *count = reader.get<std::int32_t>();
    for (auto left = reader.get<std::uint32_t>(); left > 0; --left) {
        const auto index = reader.get<VstInt32>();
        reports.automated.push_back({index, reader.get<float>()});
    }
    return reports;
}

}  // namespace host
