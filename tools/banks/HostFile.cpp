#include "tools/banks/HostFile.h"

#include "params/ids/ClassIds.h"
#include "params/ids/PluginId.h"
#include "presets/ComponentState.h"
#include "tools/banks/PresetName.h"

#include "public.sdk/source/common/memorystream.h"

#include <algorithm>
#include <strings.h>

namespace tool {

namespace {

using Bytes = std::vector<std::uint8_t>;

// .fxp and .fxb, big-endian:
//   0   "CcnK"          4   bytes that follow
//   8   form            12  version of the form
//   16  plug-in's id    20  plug-in's version
//   24  parameters (.fxp) or programs (.fxb)
//   28  name of 28 bytes (.fxp) or 128 reserved ones (.fxb)
//   then the chunk's size and the chunk
constexpr char kFxMagic[] = "CcnK", kFxpForm[] = "FPCh", kFxbForm[] = "FBCh";
constexpr std::size_t kFormAt = 8, kIdAt = 16, kFxNameSize = 28, kFxpHeader = 60, kFxbHeader = 160;
// The chunk begins with the sizes of the processor's and the controller's part, little-endian.
constexpr std::size_t kChunkHead = 16;

// .vstpreset, little-endian:
//   0   "VST3"                        4   version of the format
//   8   processor's class, 32 digits  40  offset of the list
//   then the parts, and the list: "List", number of parts, and of each name, offset and size
constexpr char kVst3Magic[] = "VST3", kListMagic[] = "List", kProcessorPart[] = "Comp",
               kControllerPart[] = "Cont";
constexpr std::size_t kClassAt = 8, kClassSize = 32, kListOffsetAt = 40, kVst3Header = 48,
                      kListHead = 8, kListEntry = 20;

enum class Order { Big, Little };

std::uint64_t numberAt(const std::uint8_t* bytes, std::size_t size, Order order)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | bytes[order == Order::Big ? i : size - 1 - i];
    return number;
}

void appendNumber(Bytes& bytes, std::uint64_t number, std::size_t size, Order order)
{
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(
            static_cast<std::uint8_t>(number >> 8 * (order == Order::Big ? size - 1 - i : i)));
}

void appendText(Bytes& bytes, const std::string& text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

std::string textAt(ByteView file, std::size_t at, std::size_t size)
{
    const std::uint8_t* const first = file.data + at;
    return std::string(first, first + size);
}

std::string classId()
{
    char digits[kClassSize + 1];
    Steinberg::Vst::kProcessorId.toString(digits);
    return digits;
}

// The bank image of a state, or a preset image as a bank with nothing but preset 0.
Bytes stateOf(Bytes image)
{
    image[FileHeader::kKindAt] = kBankKind;
    image.insert(image.begin(), kStatePrefix.begin(), kStatePrefix.end());
    return image;
}

Bytes chunkOf(Bytes image)
{
    const Bytes state = stateOf(std::move(image));
    Bytes chunk;
    appendNumber(chunk, 0, 8, Order::Little);
    appendNumber(chunk, state.size(), 8, Order::Little);
    chunk.insert(chunk.end(), state.begin(), state.end());
    return chunk;
}

Bytes fxBytes(const char* form, std::uint64_t count, std::int32_t version, const Bytes& reserved,
              const Bytes& chunk)
{
    Bytes rest;
    appendText(rest, form);
    for (const auto number : {std::uint64_t{1}, static_cast<std::uint64_t>(kVst2Id),
                              static_cast<std::uint64_t>(version), count})
        appendNumber(rest, number, 4, Order::Big);
    rest.insert(rest.end(), reserved.begin(), reserved.end());
    appendNumber(rest, chunk.size(), 4, Order::Big);
    rest.insert(rest.end(), chunk.begin(), chunk.end());
    Bytes file;
    appendText(file, kFxMagic);
    appendNumber(file, rest.size(), 4, Order::Big);
    file.insert(file.end(), rest.begin(), rest.end());
    return file;
}

// Adds a fault with which nothing of the file can be loaded.
void refuse(BankReport& report, std::size_t at, const std::string& text)
{
    report.fault("host files", at, text, Outcome::Ignored);
}

std::optional<HostFile> readFx(ByteView file, BankReport& report)
{
    const auto cutOff = [&](std::size_t header) {
        refuse(report, file.size,
               "the file ends here, within the header of " + std::to_string(header) + " bytes");
        return std::nullopt;
    };
    if (file.size < kFxpHeader)
        return cutOff(kFxpHeader);
    const std::string form = textAt(file, kFormAt, 4), id = textAt(file, kIdAt, 4);
    const bool bank = form == kFxbForm;
    if (form == "FxCk" || form == "FxBk") {
        refuse(report, kFormAt,
               "the form is " + form
                   + ", a list of values, as hosts write it for plug-ins without chunks; only FPCh "
                     "and FBCh, which hold the plug-in's chunk, are read");
        return std::nullopt;
    }
    if (!bank && form != kFxpForm) {
        refuse(report, kFormAt,
               "the form is \"" + printable(form) + "\", neither FPCh, a preset, nor FBCh, a bank");
        return std::nullopt;
    }
    report.kind = bank ? FileKind::HostBank : FileKind::HostPreset;
    if (numberAt(file.data + kIdAt, 4, Order::Big) != kVst2Id) {
        refuse(report, kIdAt, "it is for another plug-in, \"" + printable(id) + "\"");
        return std::nullopt;
    }
    const std::size_t header = bank ? kFxbHeader : kFxpHeader;
    if (file.size < header)
        return cutOff(header);
    const std::uint64_t size = numberAt(file.data + header - 4, 4, Order::Big);
    if (size > file.size - header) {
        refuse(report, header - 4,
               "the chunk is said to have " + std::to_string(size) + " bytes, but "
                   + std::to_string(file.size - header) + " follow");
        return std::nullopt;
    }
    if (size < kChunkHead) {
        refuse(report, header - 4,
               "the chunk has " + std::to_string(size) + " bytes, fewer than its head of "
                   + std::to_string(kChunkHead));
        return std::nullopt;
    }
    const std::uint64_t ofProcessor = numberAt(file.data + header, 8, Order::Little);
    const std::uint64_t ofController = numberAt(file.data + header + 8, 8, Order::Little);
    const std::uint64_t room = size - kChunkHead;
    if (ofProcessor > room || ofController > room - ofProcessor || ofController == 0) {
        refuse(report, header,
               "the chunk's two parts have " + std::to_string(ofProcessor) + " and "
                   + std::to_string(ofController) + " bytes by its head, of " + std::to_string(room)
                   + "; the second one is the plug-in's bank");
        return std::nullopt;
    }
    const std::size_t stateAt = header + kChunkHead + ofProcessor;
    const std::uint8_t* const state = file.data + stateAt;
    return HostFile{report.kind, stateAt, Bytes(state, state + ofController)};
}

// The values of the processor's part as a state of preset 0; empty if there are none.
Bytes stateOfProcessorPart(ByteView part)
{
    Steinberg::MemoryStream stream(const_cast<std::uint8_t*>(part.data),
                                   static_cast<Steinberg::TSize>(part.size));
    const Steinberg::Vst::StateValues values = Steinberg::Vst::readComponentState(stream);
    const auto count = std::count_if(values.begin(), values.end(),
                                     [](const auto& value) { return value.has_value(); });
    if (count == 0)
        return {};
    ImageWriter writer(kBankKind, 0, static_cast<std::int32_t>(count),
                       static_cast<std::size_t>(count) * kValueRecordSize);
    for (unsigned id = 0; id < values.size(); ++id)
        if (values[id])
            writer.appendValue(0, id, static_cast<float>(*values[id]));
    return stateOf(writer.take());
}

std::optional<HostFile> readVstPreset(ByteView file, BankReport& report)
{
    report.kind = FileKind::HostPreset;
    const auto refused = [&](std::size_t at, const std::string& text) {
        refuse(report, at, text);
        return std::nullopt;
    };
    if (file.size < kVst3Header)
        return refused(file.size,
                       "the file ends here, within the header of " + std::to_string(kVst3Header)
                           + " bytes");
    const std::string madeFor = textAt(file, kClassAt, kClassSize);
    if (strcasecmp(madeFor.c_str(), classId().c_str()) != 0)
        return refused(kClassAt,
                       "it is for another plug-in, of the class \"" + printable(madeFor) + "\"");
    const std::uint64_t list = numberAt(file.data + kListOffsetAt, 8, Order::Little);
    if (list < kVst3Header || file.size < kListHead || list > file.size - kListHead)
        return refused(kListOffsetAt,
                       "the list of the parts is said to be at byte " + std::to_string(list)
                           + " of " + std::to_string(file.size));
    if (textAt(file, list, 4) != kListMagic)
        return refused(list, "there is no list of the parts here");
    const std::uint64_t count = numberAt(file.data + list + 4, 4, Order::Little);
    if (count > (file.size - list - kListHead) / kListEntry)
        return refused(list + 4,
                       "the list is said to have " + std::to_string(count)
                           + " parts, more than fit into the file");
    std::optional<std::pair<std::size_t, std::size_t>> processor, controller;  // place and size
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::size_t entry = list + kListHead + i * kListEntry;
        const std::string name = textAt(file, entry, 4);
        const std::uint64_t at = numberAt(file.data + entry + 4, 8, Order::Little);
        const std::uint64_t size = numberAt(file.data + entry + 12, 8, Order::Little);
        if (at > file.size || size > file.size - at)
            return refused(entry + 4,
                           "part \"" + printable(name) + "\" is said to have "
                               + std::to_string(size) + " bytes at byte " + std::to_string(at)
                               + " of " + std::to_string(file.size));
        if (name == kProcessorPart)
            processor.emplace(at, size);
        if (name == kControllerPart)
            controller.emplace(at, size);
    }
    if (controller && controller->second > 0) {
        const std::uint8_t* const state = file.data + controller->first;
        return HostFile{report.kind, controller->first, Bytes(state, state + controller->second)};
    }
    Bytes state;
    if (processor)
        state = stateOfProcessorPart({file.data + processor->first, processor->second});
    if (state.empty())
        return refused(list, "none of the parts holds settings of the plug-in");
    return HostFile{report.kind, processor->first, std::move(state)};
}

bool beginsWith(ByteView file, const char* magic)
{
    return file.size >= 4 && std::equal(magic, magic + 4, file.data);
}

}  // namespace

bool isHostFile(ByteView file)
{
    return beginsWith(file, kFxMagic) || beginsWith(file, kVst3Magic);
}

std::optional<HostFile> readHostFile(ByteView file, BankReport& report)
{
    return beginsWith(file, kVst3Magic) ? readVstPreset(file, report) : readFx(file, report);
}

Bytes fxpBytes(Bytes presetImage, const PresetSlot& selected, std::int32_t version)
{
    Bytes name(kFxNameSize);
    std::copy_n(selected.name, kPresetNameSize, name.begin());
    return fxBytes(kFxpForm, kPresetParamCount, version, name, chunkOf(std::move(presetImage)));
}

Bytes fxbBytes(Bytes bankImage, std::int32_t version)
{
    // The plug-in has one program for hosts, which stands for the whole bank.
    return fxBytes(kFxbForm, 1, version, Bytes(kFxbHeader - 4 - 28), chunkOf(std::move(bankImage)));
}

Bytes vstPresetBytes(Bytes image, const PresetSlot& selected)
{
    Steinberg::Vst::StateValues values;
    for (std::size_t id = 0; id < values.size(); ++id)
        values[id] = static_cast<double>(selected.values[id]);
    const std::vector<char> ofProcessor = Steinberg::Vst::writeComponentState(values);
    const Bytes ofController = stateOf(std::move(image));

    Bytes file, list;
    appendText(file, kVst3Magic);
    appendNumber(file, 1, 4, Order::Little);
    appendText(file, classId());
    appendNumber(file, kVst3Header + ofProcessor.size() + ofController.size(), 8, Order::Little);
    appendText(list, kListMagic);
    appendNumber(list, 2, 4, Order::Little);
    const auto append = [&](const char* name, const auto& part) {
        appendText(list, name);
        appendNumber(list, file.size(), 8, Order::Little);
        appendNumber(list, part.size(), 8, Order::Little);
        file.insert(file.end(), part.begin(), part.end());
    };
    append(kProcessorPart, ofProcessor);
    append(kControllerPart, ofController);
    file.insert(file.end(), list.begin(), list.end());
    return file;
}

}  // namespace tool
