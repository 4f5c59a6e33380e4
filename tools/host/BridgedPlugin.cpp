// BridgedPlugin: finds and starts Wine and the helper, and sends requests.
#include "tools/host/BridgedPlugin.h"

#include "tools/host/HostError.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace host {

namespace {

namespace fs = std::filesystem;
using platform::ChildProcess;

// Long, since creating a Wine prefix takes far more than a few seconds on a slow machine.
constexpr ChildProcess::Seconds kOpeningLimit{180.0};
constexpr ChildProcess::Seconds kCallLimit{60.0};

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

fs::path programFolder()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

fs::path findHelper(const std::string& path)
{
    const char* name = "zkrt46-bridge.exe";
    std::error_code error;
    const std::string chosen = variable("ZKRT46_BRIDGE");
    if (!chosen.empty()) {
        if (!fs::is_regular_file(chosen, error))
            throw HostError("ZKRT46_BRIDGE names no file: '" + chosen + "'");
        return fs::absolute(chosen, error);
    }
    const fs::path program = programFolder();
    for (const fs::path& folder :
         {fs::absolute(path, error).parent_path(), program, program.parent_path() / "windows"})
        if (fs::is_regular_file(folder / name, error))
            return folder / name;
    throw HostError("cannot load '" + path + "': zkrt46-bridge.exe, the helper for Windows "
                    + "plug-ins, is neither beside it nor beside this program");
}

// A separate prefix, so that the user's Wine programs and settings are not changed.
std::string ownPrefix()
{
    fs::path cache = variable("XDG_CACHE_HOME");
    if (cache.empty() && !variable("HOME").empty())
        cache = fs::path(variable("HOME")) / ".cache";
    if (cache.empty())
        throw HostError("no folder for Wine: set WINEPREFIX, XDG_CACHE_HOME or HOME");
    const fs::path prefix = cache / "zkrt46" / "wine";
    std::error_code error;
    fs::create_directories(prefix, error);
    if (error)
        throw HostError("cannot make the folder '" + prefix.string() + "': " + error.message());
    return prefix.string();
}

ChildProcess::Environment wineSettings()
{
    ChildProcess::Environment settings;
    const auto unlessSet = [&](const char* name, const std::string& value) {
        if (variable(name).empty())
            settings.emplace_back(name, value);
    };
    unlessSet("WINEDEBUG", "-all");
    unlessSet("WINEDLLOVERRIDES", "mscoree,mshtml=");
    if (variable("WINEPREFIX").empty())
        settings.emplace_back("WINEPREFIX", ownPrefix());
    // Wine converts file names by the locale; the C locale loses characters that are not ASCII.
    std::string locale = variable("LC_ALL");
    for (const char* name : {"LC_CTYPE", "LANG"})
        if (locale.empty())
            locale = variable(name);
    if (locale.empty() || locale == "C" || locale == "POSIX")
        settings.emplace_back("LC_ALL", "C.UTF-8");
    return settings;
}

// Under Wine, drive Z: is the root of the file system.
std::string windowsPath(const std::string& path)
{
    std::error_code error;
    std::string full = fs::absolute(path, error).lexically_normal().string();
    for (char& c : full)
        if (c == '/')
            c = '\\';
    return "Z:" + full;
}

// Replaces the Windows form of the path in the helper's message by the path as the user gave it.
std::string withUserPath(std::string message, const std::string& path)
{
    const std::string windowsForm = windowsPath(path);
    const std::size_t at = message.find(windowsForm);
    return at == std::string::npos ? message : message.replace(at, windowsForm.size(), path);
}

}  // namespace

BridgedPlugin::BridgedPlugin(const std::string& path, const HostSettings& settings)
    : path(path), lastFields{}
{
    std::error_code error;
    if (!fs::exists(path, error))
        throw NoSuchPlugin(path);
    if (!fs::is_regular_file(path, error))
        throw HostError("'" + path + "' is not a plug-in library");
    const fs::path program = findHelper(path);
    try {
        const std::vector<std::string> words{"wine", program.string()};
        helper = std::make_unique<ChildProcess>(ChildProcess::Role::Helper, words, wineSettings());
        if (!helper->started())
            throw HostError(helper->startError());
    } catch (const HostError& failure) {
        throw HostError("'" + path + "' is a Windows plug-in and needs Wine: " + failure.what());
    }
    std::uint32_t greeting = 0;
    receive(&greeting, sizeof(greeting), kOpeningLimit);
    if (greeting != kBridgeGreeting)
        throw HostError("'" + program.string() + "' is not the helper of this program");
    MessageWriter request;
    request.put(BridgeCommand::Open);
    request.putText(windowsPath(path));
    putSettings(request, settings);
    ask(request, kOpeningLimit);
}

BridgedPlugin::~BridgedPlugin() = default;

VstIntPtr BridgedPlugin::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, float opt)
{
    MessageWriter request;
    request.put(BridgeCommand::Dispatch);
    request.put(opcode);
    request.put(index);
    request.put(static_cast<std::int64_t>(value));
    request.put(opt);
    return static_cast<VstIntPtr>(ask(request, kCallLimit).get<std::int64_t>());
}

VstIntPtr BridgedPlugin::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                  std::vector<std::uint8_t>& bytes)
{
    MessageWriter request;
    request.put(BridgeCommand::DispatchBytes);
    request.put(opcode);
    request.put(index);
    request.put(static_cast<std::int64_t>(value));
    request.putBytes(bytes.data(), bytes.size());
    MessageReader answer = ask(request, kCallLimit);
    const auto result = static_cast<VstIntPtr>(answer.get<std::int64_t>());
    bytes = answer.getBytes();
    return result;
}

std::vector<std::uint8_t> BridgedPlugin::chunk(VstInt32 bankOrProgram)
{
    MessageWriter request;
    request.put(BridgeCommand::Chunk);
    request.put(bankOrProgram);
    return ask(request, kCallLimit).getBytes();
}

bool BridgedPlugin::setSpeakerArrangement(int inputs, int outputs)
{
    MessageWriter request;
    request.put(BridgeCommand::Arrange);
    request.put(static_cast<std::int32_t>(inputs));
    request.put(static_cast<std::int32_t>(outputs));
    return ask(request, kCallLimit).get<std::uint8_t>() != 0;
}

void BridgedPlugin::setParameter(VstInt32 index, float value)
{
    MessageWriter request;
    request.put(BridgeCommand::SetParameter);
    request.put(index);
    request.put(value);
    ask(request, kCallLimit);
}

float BridgedPlugin::parameter(VstInt32 index)
{
    MessageWriter request;
    request.put(BridgeCommand::GetParameter);
    request.put(index);
    return ask(request, kCallLimit).get<float>();
}

void BridgedPlugin::process(float** inputs, float** outputs, int samples)
{
    const std::size_t size = sizeof(float) * static_cast<std::size_t>(samples > 0 ? samples : 0);
    const int outputCount = lastFields.numOutputs;
    MessageWriter request;
    request.put(BridgeCommand::Process);
    request.put(static_cast<std::int32_t>(samples));
    request.put(static_cast<std::int32_t>(lastFields.numInputs));
    for (int channel = 0; channel < lastFields.numInputs; ++channel) {
        request.put(static_cast<std::uint8_t>(inputs[channel] ? 1 : 0));
        if (inputs[channel])
            request.putRaw(inputs[channel], size);
    }
    MessageReader answer = ask(request, kCallLimit);
    std::vector<std::uint8_t> unwanted(size);
    for (int channel = 0; channel < outputCount; ++channel)
        answer.getRaw(outputs[channel] ? static_cast<void*>(outputs[channel]) : unwanted.data(),
                      size);
}

HostReports BridgedPlugin::reports()
{
    MessageWriter request;
    request.put(BridgeCommand::Reports);
    MessageReader answer = ask(request, kCallLimit);
    return getReports(answer);
}

void BridgedPlugin::clearReports()
{
    MessageWriter request;
    request.put(BridgeCommand::ClearReports);
    ask(request, kCallLimit);
}

void BridgedPlugin::idle()
{
    MessageWriter request;
    request.put(BridgeCommand::Idle);
    ask(request, kCallLimit);
}

Picture BridgedPlugin::editorPicture()
{
    MessageWriter request;
    request.put(BridgeCommand::Picture);
    MessageReader answer = ask(request, kCallLimit);
    Picture picture{};
    picture.width = answer.get<std::int32_t>();
    picture.height = answer.get<std::int32_t>();
    picture.pixels = answer.getBytes();
    const auto side = [](std::int32_t length) {
        return length > 0 && length <= 16384 ? static_cast<std::size_t>(length) : 0;
    };
    if (picture.pixels.empty()
        || picture.pixels.size() != 4 * side(picture.width) * side(picture.height))
        throw HostError("damaged message on the line to the Windows helper");
    return picture;
}

MessageReader BridgedPlugin::ask(MessageWriter& request, ChildProcess::Seconds limit)
{
    const std::vector<std::uint8_t>& bytes = request.framed();
    const ChildProcess::Outcome sent = helper->write(bytes.data(), bytes.size(), limit);
    if (sent != ChildProcess::Outcome::Done)
        helperLost(sent);
    std::uint32_t length = 0;
    receive(&length, sizeof(length), limit);
    if (length > kMaxBridgeMessage)
        throw HostError("damaged message on the line to the Windows helper");
    std::vector<std::uint8_t> message(length);
    receive(message.data(), message.size(), limit);

    MessageReader answer(std::move(message));
    if (answer.get<BridgeStatus>() != kBridgeDone)
        throw HostError(withUserPath(answer.getText(), path));
    lastFields = answer.get<EffectFields>();
    return answer;
}

void BridgedPlugin::receive(void* data, std::size_t size, ChildProcess::Seconds limit)
{
    const ChildProcess::Outcome outcome = helper->read(data, size, limit);
    if (outcome != ChildProcess::Outcome::Done)
        helperLost(outcome);
}

void BridgedPlugin::helperLost(ChildProcess::Outcome outcome)
{
    if (outcome == ChildProcess::Outcome::TimedOut)
        throw HostError("the Windows plug-in '" + path + "' no longer answers");
    const std::string words = helper->lastWords();
    throw HostError("the Windows side of '" + path + "' ended unexpectedly"
                    + (words.empty() ? "" : ": " + words));
}

}  // namespace host
