// ZKRPresetSystemController3: banks and presets in files.
#include "presets/ZKRPresetSystemController3.h"

#include "platform/Files.h"
#include "platform/Utf8.h"

#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

bool fits(const std::string& text)
{
    // Text that is not UTF-8 may have more bytes to a character.
    return platform::countUtf16(text) <= ZKRPresetSystemController3::kMaxPathLength
        && text.size() < ZKRPresetSystemController3::kPathBufferSize;
}

}  // namespace

bool ZKRPresetSystemController3::keepPath(Path& path, const std::string& text)
{
    if (!fits(text))
        return false;
    std::memcpy(path.get(), text.c_str(), text.size() + 1);
    return true;
}

// Goes to the folder of `path`, or to the one used last if the path names none, and returns the
// name of the file in it. Nothing when the folder cannot be entered.
std::optional<std::string> ZKRPresetSystemController3::goToFile(const char* path, Path& lastFile)
{
    if (!path || !currDir)
        return std::nullopt;
    std::string folder = currDir.get(), name = lastFile.get();
    if (const char* separator = std::strrchr(path, platform::kPathSeparator)) {
        folder.assign(path, separator + 1);
        name = separator + 1;
        // Only together do they tell where the file is.
        if (fits(name) && keepPath(currDir, folder))
            keepPath(lastFile, name);
    }
    if (!folder.empty() && !platform::setWorkingDirectory(folder))
        return std::nullopt;
    return name;
}

// False when the file is no image at all.
bool ZKRPresetSystemController3::loadFile(const char* path, bool reversed, uint8 kind,
                                          Path& lastFile, Deserialize deserialize)
{
    const auto name = goToFile(path, lastFile);
    // A file that may not be written is not loaded either.
    const auto bytes = name
        ? platform::readFile(*name, kMaxFileSize, platform::Access::ReadAndWrite)
        : std::nullopt;
    return bytes
        && takeImage({bytes->data(), bytes->size()}, reversed, kind, Payload::AsHeaderTells,
                     deserialize);
}

void ZKRPresetSystemController3::loadBank(const char* path, bool reversed)
{
    if (loadFile(path, reversed, kBankKind, currBank, &ZKRPresetSystemController3::deserializeBank))
        setCurrentPreset(0);
}

void ZKRPresetSystemController3::loadPreset(const char* path, bool reversed)
{
    loadFile(path, reversed, kPresetKind, currPreset,
             &ZKRPresetSystemController3::deserializePreset);
}

void ZKRPresetSystemController3::saveFile(const char* path, Path& lastFile, Serialize serialize)
{
    std::vector<uint8> image;
    const auto name = goToFile(path, lastFile);
    if (name && (this->*serialize)(image) > 0)
        platform::replaceFile(*name, image);
}

void ZKRPresetSystemController3::saveBank(const char* path)
{
    saveFile(path, currBank, &ZKRPresetSystemController3::serializeBank);
}

void ZKRPresetSystemController3::savePreset(const char* path)
{
    saveFile(path, currPreset, &ZKRPresetSystemController3::serializePreset);
}

}  // namespace Vst
}  // namespace Steinberg
