// Chooses between a window of the system and one that stands for it.
#include "vstgui/platform/iplatformframe.h"

#include "vstgui/platform/offscreen/offscreenframe.h"

namespace VSTGUI {

IPlatformFrame* IPlatformFrame::createPlatformFrame(IPlatformFrameCallback* callback,
                                                    const CRect& size, void* parent,
                                                    PlatformType type, IPlatformFrameConfig* config)
{
    if (OffscreenHost* host = OffscreenHost::find(parent))
        return host->isOpen() ? nullptr : new OffscreenFrame(*host, callback, size);
    return createNative(callback, size, parent, type, config);
}

}  // namespace VSTGUI
