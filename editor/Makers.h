// The maker's data as the editor shows them.
#pragma once

constexpr const char* kMakerName = "ZKR-soundworks";
constexpr const char* kMakerAddress = "www.zkr-soundworks.example";
