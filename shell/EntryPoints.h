// The library's exported functions.
#pragma once

#include "shell/Export.h"

#include "sdk/vst2/vst2interface.h"

// Both succeed and do nothing; any number of calls in any order will do.
ZKR_EXPORT bool InitDll();
ZKR_EXPORT bool ExitDll();

// The VST 2 entry: makes an effect for a host. Null for a host that does not know its own version,
// or where the effect cannot be made. Exported as `main` too, for older hosts.
ZKR_EXPORT AEffect* VSTPluginMain(audioMasterCallback audioMaster);
