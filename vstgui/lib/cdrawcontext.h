// CDrawContext: the drawing functions for views. State is not reset between views: set what you
// use.
#pragma once

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cdrawdefs.h"
#include "vstgui/lib/cfont.h"

#include <vector>

namespace VSTGUI {

class IPlatformSurface;

class CDrawContext : public CBaseObject {
public:
    // Clips to the whole surface.
    explicit CDrawContext(IPlatformSurface* surface);
    CDrawContext(const CDrawContext&) = delete;
    CDrawContext& operator=(const CDrawContext&) = delete;
    ~CDrawContext() override;

    void setFillColor(const CColor& color) { state.fillColor = color; }
    void setFrameColor(const CColor& color) { state.frameColor = color; }
    void setFontColor(const CColor& color) { state.fontColor = color; }
    CColor getFillColor() const { return state.fillColor; }
    CColor getFrameColor() const { return state.frameColor; }
    CColor getFontColor() const { return state.fontColor; }

    void setLineWidth(CCoord width) { state.lineWidth = width; }  // pixels
    void setLineStyle(const CLineStyle&) { }
    void setDrawMode(CDrawMode mode) { state.drawMode = mode; }

    // Null is ignored. A size above 0 or a style from 0 up makes a private copy of the font.
    void setFont(const CFontRef font, const CCoord& size = 0, const int32_t& style = -1);
    CFontRef getFont() const { return state.font; }

    // Filled: the whole rectangle. Stroked: a border inside it.
    void drawRect(const CRect& rect, const CDrawStyle style = kDrawStroked);
    // Centred vertically by cap height; neither wrapped nor clipped. Null draws nothing.
    void drawString(UTF8StringPtr text, const CRect& rect, const CHoriTxtAlign align = kCenterText,
                    bool antialias = true);
    // `baseline` is the baseline's left end.
    void drawString(UTF8StringPtr text, const CPoint& baseline, bool antialias = true);
    // Pixels; -1 without a font.
    CCoord getStringWidth(UTF8StringPtr text);

    void setClipRect(const CRect& clip);
    CRect& getClipRect(CRect& clip) const;
    void resetClipRect();

    // 0 to 1; multiplies the alpha of everything drawn.
    void setGlobalAlpha(float alpha) { state.globalAlpha = alpha; }
    float getGlobalAlpha() const { return state.globalAlpha; }

    // Colours, font, line, clip, mode and alpha; not the origin.
    void saveGlobalState();
    void restoreGlobalState();

    // Does the work of CBitmap::draw; call that instead.
    void drawBitmap(CBitmap* bitmap, const CRect& rect, const CPoint& offset = CPoint(0, 0),
                    float alpha = 1.f);

    // Moves the origin by `offset` during the object's lifetime.
    class Origin {
    public:
        Origin(CDrawContext& context, const CPoint& offset);
        ~Origin();
        Origin(const Origin&) = delete;
        Origin& operator=(const Origin&) = delete;

    private:
        CDrawContext& context;
        CPoint offset;
    };

    CLASS_METHODS_NOCOPY(CDrawContext, CBaseObject)

private:
    struct State {
        CColor fillColor{kBlackCColor};
        CColor frameColor{kWhiteCColor};
        CColor fontColor{kWhiteCColor};
        SharedPointer<CFontDesc> font;
        CCoord lineWidth{1.};
        CDrawMode drawMode{kAliasing};
        CRect clip;  // surface coordinates
        float globalAlpha{1.f};
    };

    void fill(const CRect& surfaceRect, const CColor& color);
    CColor withGlobalAlpha(CColor color) const;

    SharedPointer<IPlatformSurface> surface;
    CPoint origin;
    State state;
    std::vector<State> saved;
};

}  // namespace VSTGUI
