// IPlatformFrame: the factory for frames' windows, by default the system's.
#include "vstgui/platform/iplatformframe.h"

namespace VSTGUI {

namespace {

IPlatformFrame::Factory frameFactory = &IPlatformFrame::createNative;

}  // namespace

IPlatformFrame* IPlatformFrame::createPlatformFrame(IPlatformFrameCallback* callback,
                                                    const CRect& size, void* parent,
                                                    PlatformType type, IPlatformFrameConfig* config)
{
    return frameFactory(callback, size, parent, type, config);
}

void IPlatformFrame::setFactory(Factory factory)
{
    frameFactory = factory;
}

}  // namespace VSTGUI
