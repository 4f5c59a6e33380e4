#include "vstgui/lib/cfont.h"

#include "vstgui/platform/iplatformfont.h"

namespace VSTGUI {

CFontDesc::CFontDesc(UTF8StringPtr name, const CCoord& size, const int32_t style)
    : name(name ? name : ""), size(size), style(style)
{
}

CFontDesc::CFontDesc(const CFontDesc& other)
    : CBaseObject(other), name(other.name), size(other.size), style(other.style)
{
}

CFontDesc& CFontDesc::operator=(const CFontDesc& other)
{
    name = other.name;
    size = other.size;
    style = other.style;
    freePlatformFont();
    return *this;
}

CFontDesc::~CFontDesc() = default;

void CFontDesc::setName(UTF8StringPtr newName)
{
    name = newName ? newName : "";
    freePlatformFont();
}

void CFontDesc::setSize(CCoord newSize)
{
    size = newSize;
    freePlatformFont();
}

void CFontDesc::setStyle(int32_t newStyle)
{
    style = newStyle;
    freePlatformFont();
}

IPlatformFont* CFontDesc::getPlatformFont() const
{
    if (!platformFont)
        platformFont = owned(IPlatformFont::create(name.c_str(), size, style));
    return platformFont;
}

void CFontDesc::freePlatformFont()
{
    platformFont = nullptr;
}

namespace {

constexpr UTF8StringPtr kFamily = "Arial";

CFontDesc systemFont(kFamily, 12);
CFontDesc normalFontVeryBig(kFamily, 18);
CFontDesc normalFontBig(kFamily, 14);
CFontDesc normalFont(kFamily, 12);
CFontDesc normalFontSmall(kFamily, 11);
CFontDesc normalFontSmaller(kFamily, 10);
CFontDesc normalFontVerySmall(kFamily, 9);
CFontDesc symbolFont("Symbol", 13);

}  // namespace

const CFontRef kSystemFont = &systemFont;
const CFontRef kNormalFontVeryBig = &normalFontVeryBig;
const CFontRef kNormalFontBig = &normalFontBig;
const CFontRef kNormalFont = &normalFont;
const CFontRef kNormalFontSmall = &normalFontSmall;
const CFontRef kNormalFontSmaller = &normalFontSmaller;
const CFontRef kNormalFontVerySmall = &normalFontVerySmall;
const CFontRef kSymbolFont = &symbolFont;

void freePredefinedPlatformFonts()
{
    for (CFontRef font : {kSystemFont, kNormalFontVeryBig, kNormalFontBig, kNormalFont,
                          kNormalFontSmall, kNormalFontSmaller, kNormalFontVerySmall, kSymbolFont})
        font->freePlatformFont();
}

}  // namespace VSTGUI
