// Text made to fit a width.
#pragma once

#include "vstgui/lib/cfont.h"

namespace VSTGUI {
namespace CDrawMethods {

// The text, or its start and an ellipsis if it is wider than maxWidth (pixels). Null counts as
// empty; bytes that are not UTF-8 become U+FFFD. The ellipsis remains even if it does not fit.
std::string createTruncatedText(UTF8StringPtr text, CFontRef font, CCoord maxWidth);

}  // namespace CDrawMethods
}  // namespace VSTGUI
