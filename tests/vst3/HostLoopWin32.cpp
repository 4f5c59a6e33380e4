// On Windows, views use the system's message loop.
#include "tests/vst3/HostFrame.h"

namespace vst3 {

const EventLoop eventLoop{kPlatformTypeHWND, nullptr, [](bool) { return 0; }, turnMessageLoop,
                          turnMessageLoop};

}  // namespace vst3
