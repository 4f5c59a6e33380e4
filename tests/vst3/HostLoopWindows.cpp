// On Windows views live on the system's own message loop.
#include "HostFrame.h"

namespace vst3 {

FIDString windowType()
{
    return kPlatformTypeHWND;
}

FUnknown* eventLoop()
{
    return nullptr;
}

std::size_t registrations()
{
    return 0;
}

void turnLoop()
{
    turnMessageLoop();
}

}  // namespace vst3
