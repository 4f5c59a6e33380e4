// ZKRPresetSystemController3: the edit controller's bank of 24 presets, and its transfers to and
// from the parameters, files, the per-user store and a host's project.
//
// There is no edit buffer. The selected preset in the bank is the live state: every change of a
// parameter is written into it at once. Failures are not reported to the user: a file or setting
// that cannot be read or written changes nothing.
//
// Threads: the user's actions come on the user-interface thread; at the same time a host may read
// and set states, names and parameters on other threads. A lock guards bank, selection and
// parameters during each single step, and is never held during calls to the host, to an editor, to
// files or to the store. Of concurrent changes the last one counts, and parameters, selected preset
// and host end with the same values.
#pragma once

#include "platform/SettingsStore.h"
#include "presets/BankFormat.h"

#include "base/source/sharedobject.h"
#include "public.sdk/source/vst/vst2wrapper/ivst2bridge.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include <array>
#include <memory>
#include <mutex>
#include <thread>

namespace Steinberg {
namespace Vst {

class ZKRPresetSystemController3 : public SharedObject<EditControllerEx1>, public IProgramName {
public:
    explicit ZKRPresetSystemController3(platform::SettingsStore& store = platform::userSettings());

    // Fills the bank with the factory presets; kOutOfMemory if memory runs out.
    tresult PLUGIN_API initialize(FUnknown* context) override;
    // Stores the paths and destroys the bank.
    tresult PLUGIN_API terminate() override;
    // For ids below 58: sets the parameter to the value, limited to 0..1, and writes it into the
    // selected preset. Other ids and values that are not numbers change nothing and give kResultOk.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;
    ParamValue PLUGIN_API getParamNormalized(ParamID id) override;
    // Also reports a newer value to the host if another thread has set one meanwhile.
    tresult performEdit(ParamID id, ParamValue value) override;

    // IProgramName: the selected preset's name, for hosts that show a single program. Setting it
    // notifies the editors.
    tresult PLUGIN_API getSelectedName(char* name) override;
    tresult PLUGIN_API setSelectedName(const char* name) override;

    // --- Selection and names. An index outside 0 to 23 is ignored. ---

    virtual int32 getCurrentPreset();
    // Selects and publishes the preset, also if it is selected already: each value is set in its
    // parameter and reported to the host, in order of id.
    virtual void setCurrentPreset(int32 index);
    // The text is cut to 23 bytes, between two characters.
    virtual void setCurrentPresetName(const char* text);
    // The destination has room for 25 bytes: 24 of the name and a terminator.
    virtual void getPresetName(char* destination, int32 index);
    virtual void getCurrentPresetName(char* destination);
    // Resets the preset, name included, to the factory's first one.
    virtual void resetPreset(int32 index);
    // For subclasses: images do not contain parameters that are hidden.
    virtual bool isParameterHidden(ParamID id);

    // --- Files. Paths are UTF-8. ---

    // The folder, the bank file and the preset file that were used last, each of at most
    // kMaxPathLength characters, in buffers of kPathBufferSize bytes; null before initialize and
    // after terminate. A file in a folder with a longer path is used, but neither is stored here.
    virtual char* getCurrDir();
    virtual char* getCurrBank();
    virtual char* getCurrPreset();
    // `reversed` inverts the byte order that the magic shows. Loading a bank selects preset 0, also
    // if the file contains a preset instead.
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

    // --- The two compare slots: store the selected preset, or replace it by the stored one. ---

    virtual void storeMemoA();
    virtual void storeMemoB();
    virtual void loadMemoA();
    virtual void loadMemoB();

    // Loads the defaults and paths from the store, and publishes preset 0. For the subclass to call
    // once all parameters exist.
    virtual void startPresetSystem();
    virtual void storePaths();
    virtual void loadPaths();

    // --- Images. ---

    // The bank, or the selected preset, as an image. Returns its size; 0, and `image` unchanged,
    // without a bank.
    virtual int32 serializeBank(std::vector<uint8>& image);
    // `records` are the bytes after the header of an image. `header` is in the machine's byte
    // order; `swap`: the records are in the opposite one. Selects and publishes the bank's current
    // preset. A bank with a damaged record or a value outside 0 to 1 changes nothing.
    virtual void deserializeBank(ByteView records, const FileHeader& header, bool swap);
    virtual int32 serializePreset(std::vector<uint8>& image);
    // The same for the selected preset, which a negative record count resets.
    virtual void deserializePreset(ByteView records, const FileHeader& header, bool swap);

    // Writes names and values of all 24 presets into the bank, which is allocated and zeroed.
    virtual void fillFactoryBank() = 0;

    // The path of the installed manual, from the store; empty without one.
    std::string getManualPath() const;

    // In 16-bit units, as the registry stores them; each takes up to three bytes in UTF-8.
    static constexpr std::size_t kMaxPathLength = 256;
    static constexpr std::size_t kPathBufferSize = 3 * kMaxPathLength + 1;

    DEFINE_INTERFACES
    DEF_INTERFACE(IProgramName)
    END_DEFINE_INTERFACES(EditControllerEx1)
    DELEGATE_REFCOUNT(SharedObject<EditControllerEx1>)

protected:
    using Path = std::unique_ptr<char[]>;
    using Serialize = int32 (ZKRPresetSystemController3::*)(std::vector<uint8>&);
    using Deserialize = void (ZKRPresetSystemController3::*)(ByteView, const FileHeader&, bool);
    // Where the records of an image end: after the header's payload size, or with the image.
    enum class Payload { SizeOfHeader, RestOfImage };

    static constexpr auto kStateBufferSize = static_cast<int32>(kStateSize);

    platform::SettingsStore& store;
    mutable std::mutex dataMutex;  // of bank, selection, parameters and private members
    Path currDir, currBank, currPreset;
    std::unique_ptr<PresetSlot[]> presetBank;  // kPresetCount of them
    PresetSlot resetImage{};
    int32 currentPreset = 0;
    std::unique_ptr<uint8[]> stateBuffer;  // kStateBufferSize bytes

private:
    std::array<std::thread::id, kPresetParamCount> setBy;  // the last thread to set a parameter
    // Threads whose next call of setParamNormalized takes the value from the selected preset.
    std::vector<std::thread::id> publishers;

    // The parameter's value, if another thread has set it to another value than `value`.
    std::optional<ParamValue> newerValue(ParamID id, ParamValue value);
    // Sets every parameter to its value in the selected preset, notifies the editors, and reports
    // the value to the host.
    void publishPreset();
    // Null for an index outside 0 to 23, or without a bank. To be called with the lock held.
    PresetSlot* presetAt(int32 index);
    // Fetches values that the host has set and the controller has not received yet; they belong to
    // the preset that is still selected.
    void takePendingValues();

    int32 serializeImage(uint8 kind, std::vector<uint8>& image);
    // False if the bytes are not an image. One of another kind, or with a truncated header or
    // payload, changes nothing.
    bool readImage(ByteView image, bool reversed, uint8 kind, Payload payload,
                   Deserialize deserialize);

    std::optional<std::string> enterFolderOf(const char* path, Path& lastFile);
    bool loadFile(const char* path, bool reversed, uint8 kind, Path& lastFile,
                  Deserialize deserialize);
    void saveFile(const char* path, Path& lastFile, Serialize serialize);
    // False, and nothing copied, if the text is too long.
    static bool copyPath(Path& path, const std::string& text);

    void storeValue(const char* name, Serialize serialize);
    void loadValue(const char* name, uint8 kind, Deserialize deserialize);
};

}  // namespace Vst
}  // namespace Steinberg
