// The end of the library in a process that goes on.
#include "Host.h"

#include <dlfcn.h>

using namespace vst3;

TEST(Module, LeavesTheProcessAndComesBack)
{
    for (int round = 0; round < 3; ++round) {
        {
            const Module module;
            Instance instance(module);
            instance.start();
            instance.render({Signal(512, 0.1f), Signal(512, 0.1f)}, {512});
        }
        EXPECT_EQ(dlopen(ZKR_VST3_LIBRARY, RTLD_LAZY | RTLD_NOLOAD), nullptr) << round;
    }
}
