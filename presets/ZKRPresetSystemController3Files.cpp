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

bool ZKRPresetSystemController3::copyPath(Path& path, const std::string& text)
{
    if (!fits(text))
        return false;
    std::memcpy(path.get(), text.c_str(), text.size() + 1);
    return true;
}

// Makes the folder of `path`, or the one used last if the path has none, the working directory, and
// returns the name of the file in it; nothing if that fails.
std::optional<std::string> ZKRPresetSystemController3::enterFolderOf(const char* path,
                                                                     Path& lastFile)
{
    if (!path || !currDir)
        return std::nullopt;
    std::string folder = currDir.get(), name = lastFile.get();
    if (const char* separator = std::strrchr(path, platform::kPathSeparator)) {
        folder.assign(path, separator + 1);
        name = separator + 1;
        // Either both are stored or neither, since only both together lead to the file.
        if (fits(name) && copyPath(currDir, folder))
            copyPath(lastFile, name);
    }
    if (!folder.empty() && !platform::setWorkingDirectory(folder))
        return std::nullopt;
    return name;
}

// False if the file is not an image.
bool ZKRPresetSystemController3::loadFile(const char* path, bool reversed, uint8 kind,
                                          Path& lastFile, Deserialize deserialize)
{
    const auto name = enterFolderOf(path, lastFile);
    // A file that may not be written is not loaded either.
    const auto bytes = name
        ? platform::readFile(*name, kMaxFileSize, platform::Access::ReadAndWrite)
        : std::nullopt;
    return bytes
        && readImage({bytes->data(), bytes->size()}, reversed, kind, Payload::SizeOfHeader,
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
    const auto name = enterFolderOf(path, lastFile);
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
