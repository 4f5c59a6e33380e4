// The entry under the name that older hosts look for. C++ keeps `main` for programs, so only the
// symbol has it; on Windows exports.def gives VSTPluginMain both names.
#include "shell/EntryPoints.h"

ZKR_EXPORT AEffect* mainEntry(audioMasterCallback audioMaster) __asm__("main");

AEffect* mainEntry(audioMasterCallback audioMaster)
{
    return VSTPluginMain(audioMaster);
}
