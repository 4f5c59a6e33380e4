// ZKRPresetSystemController3: the user's settings, which all instances share.
#include "presets/ZKRPresetSystemController3.h"

namespace Steinberg {
namespace Vst {

namespace {

constexpr const char* kDefaultBank = "DefaultBank";
constexpr const char* kDefaultPreset = "DefaultPreset";
constexpr const char* kMemoA = "MemoA";
constexpr const char* kMemoB = "MemoB";
constexpr const char* kCurrDir = "CurrDir";
constexpr const char* kCurrBank = "CurrBank";
constexpr const char* kCurrPreset = "CurrPreset";

}  // namespace

void ZKRPresetSystemController3::storeValue(const char* name, Serialize serialize)
{
    std::vector<uint8> image;
    if ((this->*serialize)(image) > 0)
        store.write(name, image);
}

void ZKRPresetSystemController3::loadValue(const char* name, uint8 kind, Deserialize deserialize)
{
    if (const auto bytes = store.read(name))
        readImage({bytes->data(), bytes->size()}, false, kind, Payload::RestOfImage, deserialize);
}

void ZKRPresetSystemController3::storeDefaultBank()
{
    storeValue(kDefaultBank, &ZKRPresetSystemController3::serializeBank);
}

void ZKRPresetSystemController3::clearDefaultBank()
{
    store.remove(kDefaultBank);
}

void ZKRPresetSystemController3::loadDefaultBank()
{
    loadValue(kDefaultBank, kBankKind, &ZKRPresetSystemController3::deserializeBank);
}

void ZKRPresetSystemController3::storeDefaultPreset()
{
    storeValue(kDefaultPreset, &ZKRPresetSystemController3::serializePreset);
}

void ZKRPresetSystemController3::clearDefaultPreset()
{
    store.remove(kDefaultPreset);
}

void ZKRPresetSystemController3::loadDefaultPreset()
{
    loadValue(kDefaultPreset, kPresetKind, &ZKRPresetSystemController3::deserializePreset);
}

void ZKRPresetSystemController3::storeMemoA()
{
    storeValue(kMemoA, &ZKRPresetSystemController3::serializePreset);
}

void ZKRPresetSystemController3::storeMemoB()
{
    storeValue(kMemoB, &ZKRPresetSystemController3::serializePreset);
}

void ZKRPresetSystemController3::loadMemoA()
{
    loadValue(kMemoA, kPresetKind, &ZKRPresetSystemController3::deserializePreset);
}

void ZKRPresetSystemController3::loadMemoB()
{
    loadValue(kMemoB, kPresetKind, &ZKRPresetSystemController3::deserializePreset);
}

void ZKRPresetSystemController3::storePaths()
{
    if (!currDir || !currBank || !currPreset)
        return;
    store.writeText(kCurrDir, currDir.get());
    store.writeText(kCurrBank, currBank.get());
    store.writeText(kCurrPreset, currPreset.get());
}

// Paths that are not stored become empty, also the folder.
void ZKRPresetSystemController3::loadPaths()
{
    if (!currDir || !currBank || !currPreset)
        return;
    const auto load = [this](const char* name, Path& path) {
        if (!copyPath(path, store.readText(name).value_or("")))
            copyPath(path, "");
    };
    load(kCurrDir, currDir);
    load(kCurrBank, currBank);
    load(kCurrPreset, currPreset);
}

}  // namespace Vst
}  // namespace Steinberg
