#include "editor/CInfo.h"

#include "Product.h"

#include "editor/controls/PressToToggle.h"

#include <cstdio>

using namespace VSTGUI;

namespace {

const CColor kShade(10, 10, 10, 180);
const CColor kText(223, 222, 223, 255);
constexpr CCoord kLineHeight = 240;  // of the rectangle that a line is centred in

}  // namespace

CInfo::CInfo(const CRect& size, IControlListener* listener, int32_t tag)
    : CControl(size, listener, tag), latency("Latency: 2.18 ms, 96 samples")
{
}

void CInfo::setLatency(double seconds)
{
    const float milliseconds = static_cast<float>(seconds) * 1000.0f;
    // The latency is 0 or 96 samples at every sample rate.
    const char* const samples = milliseconds < 0.75f ? "0" : "96";
    char text[64];
    std::snprintf(text, sizeof text, "Latency: %.2f ms, %s samples",
                  static_cast<double>(milliseconds), samples);
    latency = text;
    setDirty();
}

void CInfo::draw(CDrawContext* context)
{
    const CRect view = getViewSize();
    context->setFillColor(kShade);
    context->drawRect(view, kDrawFilled);
    context->setFontColor(kText);
    const auto line = [&](CCoord offset, CFontRef font, const char* text, CCoord right = 0) {
        const CCoord top = view.top + offset;
        context->setFont(font);
        context->drawString(text,
                            CRect(view.left + right, top, view.right + right, top + kLineHeight));
    };
    line(0, kNormalFont, "ZKR T46");
    line(1, kNormalFontSmaller, (std::string("v.") + product::kShortVersion).c_str(), 43);
    line(20, kNormalFont, "by");
    line(40, kNormalFont, product::kMaker);
    line(60, kNormalFont, product::kWebAddress);
    line(90, kNormalFont, "VST PlugIn Technology by Steinberg");
    line(170, kNormalFont, latency.c_str());
    setDirty(false);
}

CMouseEventResult CInfo::onMouseDown(CPoint& /*where*/, const CButtonState& buttons)
{
    return pressToToggle(*this, buttons);
}
