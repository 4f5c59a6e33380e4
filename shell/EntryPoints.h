// The exported functions of the VST 2 library.
#pragma once

#include "shell/Export.h"

#include "sdk/vst2/vst2interface.h"

// Both do nothing and return true.
ZKR_EXPORT bool InitDll();
ZKR_EXPORT bool ExitDll();

// The VST 2 entry point: creates an effect for a host. Null for a host that reports no VST version,
// or if the effect cannot be created. Also exported as `main`, for older hosts.
ZKR_EXPORT AEffect* VSTPluginMain(audioMasterCallback audioMaster);
