#include "tools/banks/PresetFile.h"

#include "params/ids/PluginId.h"
#include "tools/banks/HostFile.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ToolError.h"
#include "tools/host/OpenPlugin.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

constexpr std::size_t kMaxSize = 1u << 30;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string endingOf(const std::string& path)
{
    std::string ending = std::filesystem::path(path).extension().string();
    for (char& c : ending)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return ending;
}

void appendPreset(ImageWriter& writer, std::int32_t index, const PresetSlot& preset)
{
    writer.appendName(index, preset);
    for (unsigned id = 0; id < kPresetParamCount; ++id)
        writer.appendValue(index, id, preset.values[id]);
}

// Calls `seen` with every record.
template <typename Seen>
void forEachRecord(const FileParts& parts, const Seen& seen)
{
    RecordReader reader({parts.records.data(), parts.records.size()}, parts.header.recordCount,
                        parts.swap);
    for (Record record; reader.next(record);)
        seen(record);
}

bool hasSeveralPresets(const FileParts& parts)
{
    bool several = false;
    std::optional<std::int32_t> first;
    forEachRecord(parts, [&](const Record& record) {
        several = several || record.preset != first.value_or(record.preset);
        first = first.value_or(record.preset);
    });
    return several;
}

bool hasNameOf(int preset, const FileParts& parts)
{
    bool found = false;
    forEachRecord(parts, [&](const Record& record) {
        found = found || (record.kind == kNameRecord && record.preset == preset);
    });
    return found;
}

// The parts of a file that the plug-in would load and that has the wanted kind; else throws
// ToolError.
FileParts goodParts(const std::string& path, const std::vector<std::uint8_t>& bytes,
                    bool wantsPreset)
{
    const BankReport report = checkBank({bytes.data(), bytes.size()});
    const std::string hint = "; 'zkrt46 check' says more";
    BankReport unused;
    auto parts = takeApart({bytes.data(), bytes.size()}, unused);
    if (!parts || !report.isTaken()) {
        const auto first = std::find_if(report.findings.begin(), report.findings.end(),
                                        [](const Finding& finding) { return finding.isFault; });
        if (first == report.findings.end())
            throw ToolError("'" + path + "': the plug-in would not take it" + hint);
        throw ToolError("'" + path + "'" + (first->offset ? " " + atByte(*first->offset) : "")
                        + ": " + first->text + hint);
    }
    const bool ofHost = parts->kind == FileKind::HostPreset;
    const bool isPreset = parts->kind == FileKind::Preset || (ofHost && !hasSeveralPresets(*parts));
    if (wantsPreset ? !isPreset && !ofHost : isPreset)
        throw ToolError("'" + path + "' is "
                        + (wantsPreset ? "a bank, but a preset is wanted here"
                                       : "a preset, but a bank is wanted here"));
    if (report.outcome == Outcome::Partly)
        std::fprintf(stderr,
                     "zkrt46: warning: '%s' is not taken as a whole; 'zkrt46 check' says "
                     "more\n",
                     path.c_str());
    return std::move(*parts);
}

void writeBytes(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    writeFile(path, std::string(bytes.begin(), bytes.end()));
}

BankContent bankOf(const FileParts& parts, const std::string& path)
{
    const std::int32_t current = parts.header.currentPreset;
    BankContent bank{factoryBank(), current >= 0 && current < kPresetCount ? current : 0};
    if (!readBankRecords({parts.records.data(), parts.records.size()}, parts.header.recordCount,
                         parts.swap, factoryBank().front(), bank.presets.data()))
        throw ToolError("'" + path + "': the plug-in would not take it");
    return bank;
}

void expectPresetEnding(const std::string& path)
{
    const std::string ending = endingOf(path);
    if (ending != ".zkr" && ending != ".fxp" && ending != ".vstpreset" && ending != ".json")
        throw ToolError("'" + path + "': a preset's name ends in .zkr, .fxp, .vstpreset or .json");
}

}  // namespace

bool takesPresets(const host::EffectFields& fields)
{
    return fields.uniqueID == kVst2Id && fields.numParams == static_cast<int>(kPresetParamCount);
}

ParameterText& Displays::get()
{
    if (!opened) {
        std::unique_ptr<host::Plugin> plugin = host::openPlugin(path);
        if (!takesPresets(plugin->fields()))
            throw ToolError("'" + path + "' is not the plug-in that these presets are for");
        opened.emplace(std::move(plugin));
    }
    return *opened;
}

std::vector<std::uint8_t> readFile(const std::string& path)
{
    const auto refuse = [&](const std::string& reason) {
        throw ToolError("cannot read '" + path + "': " + reason);
    };
    // Opening a pipe must not wait for a writer.
    const int handle = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        refuse(std::strerror(errno));
    const std::unique_ptr<std::FILE, CloseFile> file(fdopen(handle, "rb"));
    struct stat status;
    if (!file || fstat(handle, &status) != 0)
        refuse(std::strerror(errno));
    if (!S_ISREG(status.st_mode))
        refuse(S_ISDIR(status.st_mode) ? "it is a folder" : "it is not an ordinary file");
    if (static_cast<std::uint64_t>(status.st_size) > kMaxSize)
        refuse("it has more than 1 GiB, far more than any bank");
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(status.st_size));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()))
        refuse(std::strerror(errno));
    return bytes;
}

bool isJson(const std::vector<std::uint8_t>& bytes)
{
    constexpr std::uint8_t kByteOrderMark[]{0xEF, 0xBB, 0xBF};
    auto first = bytes.begin();
    if (bytes.size() >= 3
        && std::equal(std::begin(kByteOrderMark), std::end(kByteOrderMark), first))
        first += 3;
    first = std::find_if(first, bytes.end(), [](std::uint8_t c) { return !std::isspace(c); });
    return first != bytes.end() && (*first == '{' || *first == '[');
}

BankContent readBank(const std::string& path, Displays& displays)
{
    const std::vector<std::uint8_t> bytes = readFile(path);
    if (isJson(bytes))
        return bankFromJson(std::string(bytes.begin(), bytes.end()), path, displays.get());
    return bankOf(goodParts(path, bytes, false), path);
}

PresetSlot readPreset(const std::string& path, Displays& displays)
{
    const std::vector<std::uint8_t> bytes = readFile(path);
    if (isJson(bytes))
        return presetFromJson(std::string(bytes.begin(), bytes.end()), path, displays.get());
    const FileParts parts = goodParts(path, bytes, true);
    PresetSlot preset{};
    if (parts.kind == FileKind::HostPreset) {
        const BankContent bank = bankOf(parts, path);
        preset = bank.presets[static_cast<std::size_t>(bank.currentPreset)];
        if (!hasNameOf(bank.currentPreset, parts))
            setName(preset, std::filesystem::path(path).stem().c_str());
        return preset;
    }
    if (!readPresetRecords({parts.records.data(), parts.records.size()}, parts.header.recordCount,
                           parts.swap, factoryBank().front(), preset))
        throw ToolError("'" + path + "': the plug-in would not take it");
    return preset;
}

void writeBank(const std::string& path, const BankContent& bank, Displays& displays)
{
    const std::string ending = endingOf(path);
    if (ending == ".json")
        writeFile(path, bankToJson(bank, displays.get()));
    else if (ending == ".zkb")
        writeBytes(path, bankBytes(bank));
    else if (ending == ".fxb")
        writeBytes(path, fxbBytes(bankBytes(bank), displays.get().fields().version));
    else if (ending == ".vstpreset")
        writeBytes(path,
                   vstPresetBytes(bankBytes(bank),
                                  bank.presets[static_cast<std::size_t>(bank.currentPreset)]));
    else
        throw ToolError("'" + path + "': a bank's name ends in .zkb, .fxb, .vstpreset or .json");
}

void expectPresetPath(const std::string& path)
{
    expectPresetEnding(path);
    const OutputFile triedAndRemoved(path);
}

void writePreset(const std::string& path, const PresetSlot& preset, Displays& displays)
{
    expectPresetEnding(path);
    const std::string ending = endingOf(path);
    if (ending == ".json")
        writeFile(path, presetToJson(preset, displays.get()));
    else if (ending == ".fxp")
        writeBytes(path, fxpBytes(presetBytes(preset), preset, displays.get().fields().version));
    else if (ending == ".vstpreset")
        writeBytes(path, vstPresetBytes(presetBytes(preset), preset));
    else
        writeBytes(path, presetBytes(preset));
}

std::vector<std::uint8_t> bankBytes(const BankContent& bank)
{
    ImageWriter writer(kBankKind, bank.currentPreset,
                       static_cast<std::int32_t>(kPresetCount * (1 + kPresetParamCount)),
                       kBankImageSize - kFileHeaderSize);
    for (std::size_t index = 0; index < bank.presets.size(); ++index)
        appendPreset(writer, static_cast<std::int32_t>(index), bank.presets[index]);
    return writer.take();
}

std::vector<std::uint8_t> presetBytes(const PresetSlot& preset)
{
    ImageWriter writer(kPresetKind, 0, static_cast<std::int32_t>(1 + kPresetParamCount),
                       kPresetImageSize - kFileHeaderSize);
    appendPreset(writer, 0, preset);
    return writer.take();
}

BankContent readBankOrFactory(const std::string& path, Displays& displays)
{
    return path.empty() ? BankContent{factoryBank(), 0} : readBank(path, displays);
}

std::string bankLabel(const std::string& path)
{
    return path.empty() ? "the factory bank" : "'" + path + "'";
}

}  // namespace tool
