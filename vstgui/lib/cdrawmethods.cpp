#include "vstgui/lib/cdrawmethods.h"

#include "platform/Utf8.h"

#include "vstgui/platform/iplatformfont.h"

namespace VSTGUI {
namespace CDrawMethods {

std::string createTruncatedText(UTF8StringPtr text, CFontRef font, CCoord maxWidth)
{
    std::string start = platform::validUtf8(text);
    const IPlatformFont* platformFont = font->getPlatformFont();
    if (!platformFont || platformFont->getStringWidth(start.c_str()) <= maxWidth)
        return start;
    std::string shortened;
    do {
        start.erase(platform::previousCharacter(start, start.size()));
        // No space before the ellipsis.
        while (!start.empty() && start.back() == ' ')
            start.pop_back();
        shortened = start + "\xE2\x80\xA6";
    } while (!start.empty() && platformFont->getStringWidth(shortened.c_str()) > maxWidth);
    return shortened;
}

}  // namespace CDrawMethods
}  // namespace VSTGUI
