// CFontDesc: family, size and style of a font; the system's font is created at its first use.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <string>

namespace VSTGUI {

class IPlatformFont;

enum CTxtFace {
    kNormalFace = 0,
    kBoldFace = 1 << 1,
    kItalicFace = 1 << 2,
    kUnderlineFace = 1 << 3,
    kStrikethroughFace = 1 << 4
};

class CFontDesc : public CBaseObject {
public:
    // Size is the em height in pixels; style is a sum of CTxtFace.
    explicit CFontDesc(UTF8StringPtr name = nullptr, const CCoord& size = 0,
                       const int32_t style = kNormalFace);
    CFontDesc(const CFontDesc& other);
    CFontDesc& operator=(const CFontDesc& other);
    ~CFontDesc() override;

    UTF8StringPtr getName() const { return name.c_str(); }
    const CCoord& getSize() const { return size; }
    int32_t getStyle() const { return style; }
    void setName(UTF8StringPtr newName);
    void setSize(CCoord newSize);
    void setStyle(int32_t newStyle);

    // Null where the system has no such font and no substitute. Valid until the font changes.
    IPlatformFont* getPlatformFont() const;
    // Releases the system's font; the next use creates it again.
    void freePlatformFont();

    CLASS_METHODS(CFontDesc, CBaseObject)

private:
    std::string name;
    CCoord size;
    int32_t style;
    mutable SharedPointer<IPlatformFont> platformFont;
};

using CFontRef = CFontDesc*;

// Static objects, not to be released with forget.
extern const CFontRef kSystemFont;
extern const CFontRef kNormalFontVeryBig;
extern const CFontRef kNormalFontBig;
extern const CFontRef kNormalFont;
extern const CFontRef kNormalFontSmall;
extern const CFontRef kNormalFontSmaller;
extern const CFontRef kNormalFontVerySmall;
extern const CFontRef kSymbolFont;

// Releases the system's fonts of the predefined ones. Called when the last frame closes.
void freePredefinedPlatformFonts();

}  // namespace VSTGUI
