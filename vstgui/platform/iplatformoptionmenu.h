// IPlatformOptionMenu: opens a menu and waits for a choice.
#pragma once

#include "vstgui/lib/vstguibase.h"

namespace VSTGUI {

class COptionMenu;

struct PlatformOptionMenuResult {
    COptionMenu* menu{nullptr};  // null when cancelled
    int32_t index{-1};           // of the entry, separators counted
};

class IPlatformOptionMenu : public CBaseObject {
public:
    // Blocks until an entry is chosen, the menu is cancelled or the frame closes; timers keep
    // running.
    virtual PlatformOptionMenuResult popup(COptionMenu* menu) = 0;
};

}  // namespace VSTGUI
