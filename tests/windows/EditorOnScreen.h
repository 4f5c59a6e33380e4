// The editor in a host's window, with settings that nobody left behind and unlinked channels.
#pragma once

#include "Host.h"
#include "Pictures.h"
#include "SettingsStore.h"

#ifdef _WIN32
constexpr bool kOnWindows = true;
#else
constexpr bool kOnWindows = false;
#endif

struct EditorOnScreen : testing::Test {
    EditorOnScreen()
    {
        for (const char* const name : {"DefaultBank", "DefaultPreset", "ManualPath"})
            platform::userSettings().remove(name);
        host = std::make_unique<Host>();
        host->automate(kLink, 0);
        host->openEditor();
        parkPointer();
    }

    // Beside all windows.
    static void parkPointer()
    {
        Host::user([](User& user) { user.moveTo({1000, 740}); });
    }
    // All strips in a window of 894 pixels.
    void showEverything()
    {
        host->automate(kQB11, 1);
        host->automate(k2x, 1);
        ASSERT_TRUE(Host::soon([this] { return host->width == 894; }));
        Host::idleFor(60);
        host->heard();
    }

    std::unique_ptr<Host> host;
};
