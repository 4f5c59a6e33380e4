// CDrawContext: its drawing functions, made from those of IPlatformSurface.
#include "vstgui/lib/cdrawcontext.h"

#include "vstgui/platform/iplatformbitmap.h"
#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/iplatformsurface.h"

#include <algorithm>

namespace VSTGUI {

CDrawContext::CDrawContext(IPlatformSurface* surface) : surface(surface)
{
    state.font = kSystemFont;
    CDrawContext::resetClipRect();
}

CDrawContext::~CDrawContext() = default;

CDrawContext::Origin::Origin(CDrawContext& context, const CPoint& offset)
    : context(context), offset(offset)
{
    context.origin += offset;
}

CDrawContext::Origin::~Origin()
{
    context.origin -= offset;
}

void CDrawContext::setFont(const CFontRef font, const CCoord& size, const int32_t& style)
{
    if (!font)
        return;
    if (size <= 0 && style < 0) {
        state.font = font;
        return;
    }
    state.font = owned(new CFontDesc(*font));
    if (size > 0)
        state.font->setSize(size);
    if (style >= 0)
        state.font->setStyle(style);
}

void CDrawContext::setClipRect(const CRect& clip)
{
    CRect absolute(clip);
    absolute.offset(origin);
    absolute(std::floor(absolute.left), std::floor(absolute.top), std::ceil(absolute.right),
             std::ceil(absolute.bottom));
    state.clip = absolute.bound(CRect(CPoint(), surface->getSize()));
}

CRect& CDrawContext::getClipRect(CRect& clip) const
{
    clip = state.clip;
    return clip.offsetInverse(origin);
}

void CDrawContext::resetClipRect()
{
    state.clip = CRect(CPoint(), surface->getSize());
}

void CDrawContext::saveGlobalState()
{
    saved.push_back(state);
}

void CDrawContext::restoreGlobalState()
{
    if (saved.empty())
        return;
    state = saved.back();
    saved.pop_back();
}

CColor CDrawContext::withGlobalAlpha(CColor color) const
{
    const float alpha = static_cast<float>(color.alpha) * std::clamp(state.globalAlpha, 0.f, 1.f);
    color.alpha = static_cast<uint8_t>(alpha + 0.5f);
    return color;
}

void CDrawContext::fill(const CRect& surfaceRect, const CColor& color)
{
    const CColor visible = withGlobalAlpha(color);
    CRect rect(surfaceRect);
    if (state.drawMode == CDrawMode(kAliasing))
        rect.makeIntegral();
    if (visible.alpha == 0 || rect.isEmpty() || state.clip.isEmpty())
        return;
    surface->setClip(state.clip);
    surface->fillRect(rect, visible);
}

void CDrawContext::drawRect(const CRect& rect, const CDrawStyle style)
{
    CRect r(rect);
    r.normalize().offset(origin);
    if (style != kDrawStroked)
        fill(r, state.fillColor);
    if (style == kDrawFilled)
        return;
    const CCoord line = std::max(state.lineWidth, 1.);
    if (2. * line >= std::min(r.getWidth(), r.getHeight())) {
        fill(r, state.frameColor);
        return;
    }
    fill(CRect(r.left, r.top, r.right, r.top + line), state.frameColor);
    fill(CRect(r.left, r.bottom - line, r.right, r.bottom), state.frameColor);
    fill(CRect(r.left, r.top + line, r.left + line, r.bottom - line), state.frameColor);
    fill(CRect(r.right - line, r.top + line, r.right, r.bottom - line), state.frameColor);
}

void CDrawContext::drawString(UTF8StringPtr text, const CRect& rect, const CHoriTxtAlign align,
                              bool antialias)
{
    IPlatformFont* font = state.font->getPlatformFont();
    if (!text || !font)
        return;
    CPoint baseline(rect.left, rect.getCenter().y + font->getCapHeight() / 2.);
    if (align == kCenterText)
        baseline.x += (rect.getWidth() - font->getStringWidth(text)) / 2.;
    else if (align == kRightText)
        baseline.x += rect.getWidth() - font->getStringWidth(text);
    drawString(text, baseline, antialias);
}

void CDrawContext::drawString(UTF8StringPtr text, const CPoint& baseline, bool antialias)
{
    IPlatformFont* font = state.font->getPlatformFont();
    const CColor color = withGlobalAlpha(state.fontColor);
    if (!text || !*text || !font || color.alpha == 0 || state.clip.isEmpty())
        return;
    surface->setClip(state.clip);
    surface->drawString(font, text, (baseline + origin).makeIntegral(), color, antialias);
}

CCoord CDrawContext::getStringWidth(UTF8StringPtr text)
{
    IPlatformFont* font = state.font->getPlatformFont();
    return text && font ? font->getStringWidth(text) : -1.;
}

void CDrawContext::drawBitmap(CBitmap* bitmap, const CRect& rect, const CPoint& offset, float alpha)
{
    IPlatformBitmap* picture = bitmap ? bitmap->getPlatformBitmap() : nullptr;
    const float visible = std::min(alpha * state.globalAlpha, 1.f);
    if (!picture || visible <= 0.f)
        return;
    const CPoint position(std::trunc(rect.left + origin.x), std::trunc(rect.top + origin.y));
    const CPoint start(std::trunc(offset.x), std::trunc(offset.y));
    // Limited to the picture and to the clip.
    CRect source(start, CPoint(std::trunc(rect.getWidth()), std::trunc(rect.getHeight())));
    source.bound(CRect(CPoint(), picture->getSize()));
    CRect target(source);
    target.offset(position - start).bound(state.clip);
    if (source.isEmpty() || target.isEmpty())
        return;
    surface->setClip(state.clip);
    surface->drawBitmap(picture, target, target.getTopLeft() - position + start, visible);
}

}  // namespace VSTGUI
