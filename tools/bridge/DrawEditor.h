// drawEditor: the plug-in's editor, opened in a window for as long as it is drawn.
#pragma once

#include "tools/host/BridgeProtocol.h"
#include "tools/host/NativePlugin.h"

// Throws HostError when the plug-in has no editor or there is no window for it.
host::Picture drawEditor(host::NativePlugin& plugin);
