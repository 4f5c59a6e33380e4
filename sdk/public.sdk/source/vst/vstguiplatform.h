// What differs between systems in the start of an editor.
#pragma once

#include "pluginterfaces/gui/iplugview.h"

#include "vstgui/vstgui.h"

#include <memory>

namespace Steinberg {
namespace Vst {

// Once, before the first use of the toolkit.
void startToolkit();

// How the toolkit is to live in this host; null where that needs no saying.
std::unique_ptr<VSTGUI::IPlatformFrameConfig> makeFrameConfig(IPlugFrame* host);

// Whether this host turns an event loop for its views, or the system does.
bool hasEventLoop(IPlugFrame* host);

// For what cannot end before the host may unload the library.
void keepLibraryLoaded();

// The kind of window that a view opens in.
FIDString windowType();

}  // namespace Vst
}  // namespace Steinberg
