// The entry point under the name that older hosts look up. C++ reserves `main` for programs, so
// only the symbol has that name; on Windows exports.def exports VSTPluginMain under both names.
#include "shell/EntryPoints.h"

ZKR_EXPORT AEffect* mainEntry(audioMasterCallback audioMaster) __asm__("main");

AEffect* mainEntry(audioMasterCallback audioMaster)
{
    return VSTPluginMain(audioMaster);
}
