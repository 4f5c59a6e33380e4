// CMenuItem: one entry of a menu.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <string>

namespace VSTGUI {

class CMenuItem : public CBaseObject {
public:
    enum Flags {
        kNoFlags = 0,
        kDisabled = 1 << 0,
        kTitle = 1 << 1,
        kChecked = 1 << 2,
        kSeparator = 1 << 3
    };

    // UTF-8; null counts as empty.
    explicit CMenuItem(UTF8StringPtr title, int32_t flags = kNoFlags, int32_t tag = -1);

    virtual void setTitle(UTF8StringPtr newTitle) { title = newTitle ? newTitle : ""; }
    UTF8StringPtr getTitle() const { return title.c_str(); }
    virtual void setEnabled(bool state = true) { setFlag(kDisabled, !state); }
    bool isEnabled() const { return !hasFlag(kDisabled); }
    virtual void setChecked(bool state = true) { setFlag(kChecked, state); }
    bool isChecked() const { return hasFlag(kChecked); }
    bool isTitle() const { return hasFlag(kTitle); }
    virtual void setIsSeparator(bool state = true) { setFlag(kSeparator, state); }
    bool isSeparator() const { return hasFlag(kSeparator); }
    void setTag(int32_t newTag) { tag = newTag; }
    int32_t getTag() const { return tag; }

    CLASS_METHODS(CMenuItem, CBaseObject)

private:
    bool hasFlag(int32_t flag) const { return (flags & flag) != 0; }
    void setFlag(int32_t flag, bool state) { flags = state ? (flags | flag) : (flags & ~flag); }

    std::string title;
    int32_t flags;
    int32_t tag;
};

}  // namespace VSTGUI
