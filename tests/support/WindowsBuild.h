// The plug-in of the Windows build, which tests of the Linux build compare with their own.
#pragma once

#include "tools/host/OpenPlugin.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

// Opens it through Wine. Null without a Windows build, which fails the test where one is expected.
inline std::unique_ptr<host::Plugin> openWindowsPlugin()
{
    const std::string windows = ZKR_WINDOWS_BUILD, dll = windows + "/shell/ZKRT46.dll";
    const std::string helper = windows + "/tools/bridge/zkrt46-bridge.exe";
    if (!std::filesystem::exists(dll) || !std::filesystem::exists(helper)) {
        EXPECT_EQ(getenv("ZKR_EXPECT_WINDOWS"), nullptr) << "no Windows build in " << windows;
        return nullptr;
    }
    setenv("ZKRT46_BRIDGE", helper.c_str(), 1);
    setenv("WINEPREFIX", (windows + "/../wine").c_str(), 0);
    return host::openPlugin(dll);
}
