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

// The low band's knob in the smallest layout.
constexpr double kKnobX = 42 + 62.5, kKnobY = 7 + 287.5;

struct EditorOnScreen : testing::Test {
    EditorOnScreen()
    {
        for (const char* const name : {"DefaultBank", "DefaultPreset", "ManualPath"})
            platform::userSettings().remove(name);
        host = std::make_unique<Host>();
        host->automate(kLink, 0);
        host->openEditor();
        // Beside all windows.
        Host::user([](User& user) { user.moveTo({1000, 740}); });
    }

    std::unique_ptr<Host> host;
};
