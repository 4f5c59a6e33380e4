// On Windows, views use the system's message loop.
#include "tests/vst3/HostFrame.h"

namespace vst3 {

const EventLoop eventLoop{kPlatformTypeHWND, nullptr, [] { return std::size_t(0); },
                          turnMessageLoop};

}  // namespace vst3
