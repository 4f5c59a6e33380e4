// ZKRPresetSystemController3: the bank and the selected preset as bytes, and back.
#include "presets/PresetTags.h"
#include "presets/ZKRPresetSystemController3.h"

namespace Steinberg {
namespace Vst {

int32 ZKRPresetSystemController3::serializeImage(uint8 kind, std::vector<uint8>& image)
{
    const bool wholeBank = kind == kBankKind;
    const int32 count = wholeBank ? kPresetCount : 1;
    int32 values = 0;
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        values += isParameterHidden(id) ? 0 : 1;
    const auto payload = static_cast<std::size_t>(count)
        * (kNameRecordSize + static_cast<std::size_t>(values) * kValueRecordSize);
    const std::lock_guard<std::mutex> lock(dataMutex);
    if (!presetBank)
        return 0;
    // A single preset is stored with the index 0, whatever its index in the bank.
    const int32 first = wholeBank ? 0 : currentPreset;
    ImageWriter writer(kind, wholeBank ? currentPreset : 0, count * (1 + values), payload);
    for (int32 index = 0; index < count; ++index) {
        const PresetSlot& preset = *presetAt(first + index);
        writer.appendName(index, preset);
        for (ParamID id = 0; id < kPresetParamCount; ++id)
            if (!isParameterHidden(id))
                writer.appendValue(index, id, preset.values[id]);
    }
    image = writer.take();
    return static_cast<int32>(image.size());
}

int32 ZKRPresetSystemController3::serializeBank(std::vector<uint8>& image)
{
    return serializeImage(kBankKind, image);
}

int32 ZKRPresetSystemController3::serializePreset(std::vector<uint8>& image)
{
    return serializeImage(kPresetKind, image);
}

bool ZKRPresetSystemController3::readImage(ByteView image, bool reversed, uint8 kind,
                                           Payload payload, Deserialize deserialize)
{
    const auto start = readImageStart(image);
    if (!start)
        return false;
    if (start->kind != kind || image.size < kFileHeaderSize)
        return true;
    const bool swap = start->bigEndian != reversed;
    FileHeader header = readHeader(image.data);
    if (swap)
        swapHeader(header);
    ByteView records{image.data + kFileHeaderSize, image.size - kFileHeaderSize};
    if (payload == Payload::SizeOfHeader) {
        if (header.payloadSize < 0 || static_cast<std::size_t>(header.payloadSize) > records.size)
            return true;
        records.size = static_cast<std::size_t>(header.payloadSize);
    }
    (this->*deserialize)(records, header, swap);
    return true;
}

void ZKRPresetSystemController3::deserializeBank(ByteView records, const FileHeader& header,
                                                 bool swap)
{
    if (header.recordCount < 0)
        return;
    takePendingValues();
    const bool inBank = header.currentPreset >= 0 && header.currentPreset < kPresetCount;
    const int32 selected = inBank ? header.currentPreset : 0;
    {
        const std::lock_guard<std::mutex> lock(dataMutex);
        if (!presetBank
            || !readBankRecords(records, header.recordCount, swap, resetImage, presetBank.get()))
            return;
        // Under the same lock, or a value set now would go into another preset of the new bank.
        currentPreset = selected;
    }
    setCurrentPreset(selected);
    // Makes every open editor read the names again.
    setParamNormalized(kLoadBankTag, 0.0);
}

void ZKRPresetSystemController3::deserializePreset(ByteView records, const FileHeader& header,
                                                   bool swap)
{
    takePendingValues();
    {
        const std::lock_guard<std::mutex> lock(dataMutex);
        if (!presetBank)
            return;
        PresetSlot& preset = *presetAt(currentPreset);
        if (header.recordCount < 0)
            preset = resetImage;
        if (header.recordCount < 0
            || !readPresetRecords(records, header.recordCount, swap, resetImage, preset))
            return;
    }
    setCurrentPreset(getCurrentPreset());
}

}  // namespace Vst
}  // namespace Steinberg
