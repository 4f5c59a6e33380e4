// Tags of the preset panel's controls. Like the id of a parameter, a tag is passed to the
// controller's setParamNormalized, which notifies every open editor; no parameter has such an id.
#pragma once

enum PresetTag : int {
    kNameTag = 1000,
    kRockerTag = 1001,
    kLoadBankTag = 1002,
    kSaveBankTag = 1003,
    kLoadPresetTag = 1004,
    kSavePresetTag = 1005,
    kMenuTag = 1012,
    kDefaultBankTag = 1013,
    kDefaultPresetTag = 1014,
    kStoreATag = 1015,
    kStoreBTag = 1016,
    kRecallATag = 1017,
    kRecallBTag = 1018,
    kManualTag = 1020,
};
