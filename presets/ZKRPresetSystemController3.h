// ZKRPresetSystemController3: the edit controller's bank of 24 presets, and the roads on which
// presets travel: to the parameters, to files, to the per-user store and to a host's project.
//
// There is no edit buffer. The selected preset in the bank is the live state: every change of a
// parameter is written into it as it happens. Nothing tells the user of a failure: what cannot be
// read or written changes nothing.
//
// Threads: the user's actions come on the user-interface thread; a host may read and set states,
// names and parameters on any other meanwhile. A lock guards bank, selection and parameters, each
// step for itself, and is never held while the host, an editor, a file or the store is called.
// Whoever comes last wins, and parameters, selected preset and host agree in the end.
#pragma once

#include "platform/SettingsStore.h"
#include "presets/BankFormat.h"

#include "public.sdk/source/vst/vst2wrapper/ivst2bridge.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include <array>
#include <memory>
#include <mutex>
#include <thread>

namespace Steinberg {
namespace Vst {

class ZKRPresetSystemController3 : public EditControllerEx1, public IProgramName {
public:
    explicit ZKRPresetSystemController3(platform::SettingsStore& store = platform::userSettings());

    // Fills the bank with the factory's presets. Fails when there is no memory for it.
    tresult PLUGIN_API initialize(FUnknown* context) override;
    // Stores the paths and ends the bank.
    tresult PLUGIN_API terminate() override;
    // Passes ids below 58 to the parameter, held to 0..1, and writes them into the selected preset.
    // Other ids and values that are not numbers change nothing; the result is kResultOk for them.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;
    ParamValue PLUGIN_API getParamNormalized(ParamID id) override;
    // Also tells the host of a newer value that another thread has set since.
    tresult performEdit(ParamID id, ParamValue value) override;

    // IProgramName: the selected preset's name, for hosts that know one program. Editors are told
    // of a new one.
    tresult PLUGIN_API getSelectedName(char* name) override;
    tresult PLUGIN_API setSelectedName(const char* name) override;

    // --- Selection and names. An index outside 0 to 23 is ignored. ---

    virtual int32 getCurrentPreset();
    // Publishes the preset: each value goes to its parameter and to the host, in order of id. Also
    // when it is the selected one already.
    virtual void setCurrentPreset(int32 index);
    // Cut to 23 bytes, between two characters.
    virtual void setCurrentPresetName(const char* text);
    // The destination holds 25 bytes: 24 of the name and a terminator.
    virtual void getPresetName(char* destination, int32 index);
    virtual void getCurrentPresetName(char* destination);
    // Returns the preset, name included, to the factory's first one.
    virtual void resetPreset(int32 index);
    // A parameter that a subclass hides is left out of images.
    virtual bool isParameterHidden(ParamID id);

    // --- Files. Paths are UTF-8. ---

    // The folder, the bank file and the preset file that were used last, each of at most
    // kMaxPathLength characters, in buffers of kPathBufferSize bytes; null before initialize and
    // after terminate. A folder that is too long is used but not remembered, nor is the file in it.
    virtual char* getCurrDir();
    virtual char* getCurrBank();
    virtual char* getCurrPreset();
    // With `reversed`, the fields are taken in the order opposite to what the magic tells.
    // Loading a bank selects preset 0, also when the file holds no bank but a preset.
    virtual void loadBank(const char* path, bool reversed);
    virtual void saveBank(const char* path);
    virtual void storeDefaultBank();
    virtual void clearDefaultBank();
    virtual void loadDefaultBank();
    virtual void loadPreset(const char* path, bool reversed);
    virtual void savePreset(const char* path);
    virtual void storeDefaultPreset();
    virtual void clearDefaultPreset();
    virtual void loadDefaultPreset();

    // --- The two compare slots: the selected preset is stored, or replaced by what was. ---

    virtual void storeMemoA();
    virtual void storeMemoB();
    virtual void loadMemoA();
    virtual void loadMemoB();

    // Reads the store and publishes preset 0; for the subclass, once all parameters exist.
    virtual void startPresetSystem();
    virtual void storePaths();
    virtual void loadPaths();

    // --- Images. ---

    // The bank, or the selected preset, as an image. Returns its size; 0, and `image` untouched,
    // without a bank.
    virtual int32 serializeBank(std::vector<uint8>& image);
    // `records` follow the header in the image; `header` is in machine order; `swap` tells whether
    // the records are not. A bank that holds then selects its current preset and is published; one
    // with a damaged record or a value outside 0 to 1 changes nothing.
    virtual void deserializeBank(ByteView records, const FileHeader& header, bool swap);
    virtual int32 serializePreset(std::vector<uint8>& image);
    // The same for the selected preset, which a negative record count leaves reset.
    virtual void deserializePreset(ByteView records, const FileHeader& header, bool swap);

    // Writes names and values of all 24 presets into the bank, which is there and zeroed.
    virtual void fillFactoryBank() = 0;

    // The document that the installation brings; empty without one.
    std::string getManualPath() const;

    // In 16-bit characters, as the registry stores them; each takes up to three bytes in UTF-8.
    static constexpr std::size_t kMaxPathLength = 256;
    static constexpr std::size_t kPathBufferSize = 3 * kMaxPathLength + 1;

    DEFINE_INTERFACES
    DEF_INTERFACE(IProgramName)
    END_DEFINE_INTERFACES(EditControllerEx1)
    DELEGATE_REFCOUNT(EditControllerEx1)

protected:
    using Path = std::unique_ptr<char[]>;
    using Serialize = int32 (ZKRPresetSystemController3::*)(std::vector<uint8>&);
    using Deserialize = void (ZKRPresetSystemController3::*)(ByteView, const FileHeader&, bool);
    // Where the records of an image end.
    enum class Payload { AsHeaderTells, AtEndOfImage };

    static constexpr auto kStateBufferSize = static_cast<int32>(kStateSize);

    platform::SettingsStore& store;
    mutable std::mutex dataMutex;  // of the bank, the selection, the parameters and what is private
    Path currDir, currBank, currPreset;
    std::unique_ptr<PresetSlot[]> presetBank;  // kPresetCount of them
    PresetSlot resetImage{};
    int32 currentPreset = 0;
    std::unique_ptr<uint8[]> stateBuffer;  // kStateBufferSize bytes

private:
    std::array<std::thread::id, kPresetParamCount> setBy;  // who set a parameter last
    // Threads whose next call of setParamNormalized passes on what the selected preset holds.
    std::vector<std::thread::id> publishers;

    // The parameter's value, if another thread has set it to something else than `value`.
    std::optional<ParamValue> newerValue(ParamID id, ParamValue value);
    // Passes the selected preset on, value by value: to the parameter and the editors, then to the
    // host.
    void publishPreset();
    PresetSlot* presetAt(int32 index);  // with the lock held
    // What a host has set and the controller has not heard of yet belongs to the selected preset.
    void takePendingValues();

    int32 serializeImage(uint8 kind, std::vector<uint8>& image);
    // False when the bytes are no image. One of another kind, or with a cut-off header or payload,
    // changes nothing.
    bool takeImage(ByteView image, bool reversed, uint8 kind, Payload payload,
                   Deserialize deserialize);

    std::optional<std::string> goToFile(const char* path, Path& lastFile);
    bool loadFile(const char* path, bool reversed, uint8 kind, Path& lastFile,
                  Deserialize deserialize);
    void saveFile(const char* path, Path& lastFile, Serialize serialize);
    // False, and nothing copied, when the text is too long.
    static bool keepPath(Path& path, const std::string& text);

    void storeValue(const char* name, Serialize serialize);
    void loadValue(const char* name, uint8 kind, Deserialize deserialize);
};

}  // namespace Vst
}  // namespace Steinberg
