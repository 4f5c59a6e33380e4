// Tags of the preset panel's controls. They run through the controller like parameter ids, to tell
// every open editor of a change, and name no parameter.
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
