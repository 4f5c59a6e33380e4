// The helper that loads a Windows plug-in for a host on Linux: it runs under Wine, reads requests
// from its standard input and answers on its standard output until the input ends.
#include "tools/bridge/DrawEditor.h"
#include "tools/host/BridgeProtocol.h"
#include "tools/host/HostError.h"
#include "tools/host/NativePlugin.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace {

using namespace host;

// File descriptors of the messages. What the plug-in itself prints is sent to standard error
// instead.
struct Streams {
    int in;
    int out;
};

bool readAll(int file, void* data, std::size_t size)
{
    auto* next = static_cast<char*>(data);
    while (size > 0) {
        const int count =
            _read(file, next, static_cast<unsigned>(std::min<std::size_t>(size, 1u << 20)));
        if (count <= 0)
            return false;
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool writeAll(int file, const void* data, std::size_t size)
{
    const auto* next = static_cast<const char*>(data);
    while (size > 0) {
        const int count =
            _write(file, next, static_cast<unsigned>(std::min<std::size_t>(size, 1u << 20)));
        if (count <= 0)
            return false;
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

Streams takeOverStandardStreams()
{
    const Streams streams{_dup(0), _dup(1)};
    _setmode(streams.in, _O_BINARY);
    _setmode(streams.out, _O_BINARY);
    _dup2(2, 1);
    SetStdHandle(STD_OUTPUT_HANDLE, GetStdHandle(STD_ERROR_HANDLE));
    return streams;
}

// Ends the process at a crash; an error dialog would keep the host waiting.
LONG WINAPI endOnCrash(EXCEPTION_POINTERS* details)
{
    std::fprintf(stderr, "crash in the plug-in, code 0x%08lX\n",
                 static_cast<unsigned long>(details->ExceptionRecord->ExceptionCode));
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

void processBlock(NativePlugin& plugin, MessageReader& request, MessageWriter& result)
{
    const auto samples = request.get<std::int32_t>();
    const auto inputCount = request.get<std::int32_t>();
    const std::size_t length = static_cast<std::size_t>(std::max(0, samples));
    std::vector<std::vector<float>> inputs(static_cast<std::size_t>(std::max(0, inputCount)));
    std::vector<float*> inputPointers;
    for (std::vector<float>& input : inputs) {
        const bool present = request.get<std::uint8_t>() != 0;
        if (present) {
            input.resize(std::max<std::size_t>(1, length));
            request.getRaw(input.data(), length * sizeof(float));
        }
        inputPointers.push_back(present ? input.data() : nullptr);
    }
    std::vector<std::vector<float>> outputs(static_cast<std::size_t>(plugin.fields().numOutputs),
                                            std::vector<float>(std::max<std::size_t>(1, length)));
    std::vector<float*> outputPointers;
    for (std::vector<float>& output : outputs)
        outputPointers.push_back(output.data());
    plugin.process(inputPointers.data(), outputPointers.data(), samples);
    for (const std::vector<float>& output : outputs)
        result.putRaw(output.data(), length * sizeof(float));
}

void execute(std::unique_ptr<NativePlugin>& plugin, MessageReader& request, MessageWriter& result)
{
    const auto command = request.get<BridgeCommand>();
    if (command == BridgeCommand::Open) {
        const std::string path = request.getText();
        plugin = std::make_unique<NativePlugin>(path, getSettings(request));
        return;
    }
    if (!plugin)
        throw HostError("no plug-in is open");
    switch (command) {
    case BridgeCommand::Dispatch: {
        const auto opcode = request.get<VstInt32>();
        const auto index = request.get<VstInt32>();
        const auto value = static_cast<VstIntPtr>(request.get<std::int64_t>());
        const auto opt = request.get<float>();
        result.put(static_cast<std::int64_t>(plugin->dispatch(opcode, index, value, opt)));
        break;
    }
    case BridgeCommand::DispatchBytes: {
        const auto opcode = request.get<VstInt32>();
        const auto index = request.get<VstInt32>();
        const auto value = static_cast<VstIntPtr>(request.get<std::int64_t>());
        std::vector<std::uint8_t> bytes = request.getBytes();
        result.put(static_cast<std::int64_t>(plugin->dispatch(opcode, index, value, bytes)));
        result.putBytes(bytes.data(), bytes.size());
        break;
    }
    case BridgeCommand::Chunk: {
        const std::vector<std::uint8_t> bytes = plugin->chunk(request.get<VstInt32>());
        result.putBytes(bytes.data(), bytes.size());
        break;
    }
    case BridgeCommand::Arrange: {
        const auto inputs = request.get<std::int32_t>();
        const auto outputs = request.get<std::int32_t>();
        const bool accepted = plugin->setSpeakerArrangement(inputs, outputs);
        result.put(static_cast<std::uint8_t>(accepted ? 1 : 0));
        break;
    }
    case BridgeCommand::SetParameter: {
        const auto index = request.get<VstInt32>();
        plugin->setParameter(index, request.get<float>());
        break;
    }
    case BridgeCommand::GetParameter:
        result.put(plugin->parameter(request.get<VstInt32>()));
        break;
    case BridgeCommand::Process:
        processBlock(*plugin, request, result);
        break;
    case BridgeCommand::Reports:
        putReports(result, plugin->reports());
        break;
    case BridgeCommand::ClearReports:
        plugin->clearReports();
        break;
    case BridgeCommand::Idle:
        plugin->idle();
        break;
    case BridgeCommand::Picture: {
        const Picture picture = drawEditor(*plugin);
        result.put(picture.width);
        result.put(picture.height);
        result.putBytes(picture.pixels.data(), picture.pixels.size());
        break;
    }
    default:
        throw HostError("the helper for Windows plug-ins is of another version");
    }
}

bool serveOne(const Streams& streams, std::unique_ptr<NativePlugin>& plugin)
{
    std::uint32_t length = 0;
    if (!readAll(streams.in, &length, sizeof(length)) || length > kMaxBridgeMessage)
        return false;
    std::vector<std::uint8_t> message(length);
    if (!readAll(streams.in, message.data(), message.size()))
        return false;

    MessageWriter answer;
    try {
        MessageReader request(std::move(message));
        MessageWriter result;
        execute(plugin, request, result);
        answer.put(kBridgeDone);
        answer.put(plugin->fields());
        const std::vector<std::uint8_t>& framed = result.framed();
        answer.putRaw(framed.data() + sizeof(std::uint32_t), framed.size() - sizeof(std::uint32_t));
    } catch (const std::exception& failure) {
        answer = MessageWriter();
        answer.put(kBridgeFailed);
        answer.putText(failure.what());
    }
    const std::vector<std::uint8_t>& framed = answer.framed();
    return writeAll(streams.out, framed.data(), framed.size());
}

}  // namespace

int main()
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(endOnCrash);
    const Streams streams = takeOverStandardStreams();
    if (!writeAll(streams.out, &kBridgeGreeting, sizeof(kBridgeGreeting)))
        return 1;
    std::unique_ptr<NativePlugin> plugin;
    while (serveOne(streams, plugin)) { }
    return 0;
}
