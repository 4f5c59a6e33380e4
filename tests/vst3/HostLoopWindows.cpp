// On Windows views live on the system's own message loop.
#include "HostFrame.h"

namespace vst3 {

const EventLoop eventLoop{kPlatformTypeHWND, nullptr, [] { return std::size_t(0); },
                          turnMessageLoop};

}  // namespace vst3
