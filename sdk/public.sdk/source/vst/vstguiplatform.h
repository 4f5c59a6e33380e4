// The system-specific part of opening an editor.
#pragma once

#include "pluginterfaces/gui/iplugview.h"

#include "vstgui/vstgui.h"

#include <memory>

namespace Steinberg {
namespace Vst {

// To be called once, before the first use of the toolkit.
void startToolkit();

// The toolkit's configuration for this host; null if it needs none.
std::unique_ptr<VSTGUI::IPlatformFrameConfig> makeFrameConfig(IPlugFrame* host);

// Whether views get an event loop, from this host or from the system.
bool hasEventLoop(IPlugFrame* host);

// For objects that may outlive the host's last reference to the library.
void keepLibraryLoaded();

// The platform type of the parent window.
FIDString windowType();

}  // namespace Vst
}  // namespace Steinberg
