// What an instance in another process leaves in the store, besides the bank of a seed.
#pragma once

// The presets, of the bank of the next seed, that it keeps as memo slots and as the default.
constexpr int kMemoAPreset = 3, kMemoBPreset = 20, kDefaultPreset = 23;

constexpr const char* kLeftFolder = "/Musik/Gr\xC3\xB6\xC3\x9F"
                                    "er als \xE4\xB8\xAD\xE6\x96\x87/";
constexpr const char* kLeftBankFile = "\xC3\x9C"
                                      "bung.zkb";
constexpr const char* kLeftPresetFile = "\xE9\x9F\xB3.zkr";
