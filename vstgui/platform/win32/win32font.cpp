#include "vstgui/platform/win32/win32font.h"

#include "platform/win32/WideText.h"
#include "vstgui/lib/cfont.h"

#include <cwchar>

namespace VSTGUI {

using namespace Gdiplus::DllExports;

namespace {

// A format that counts trailing spaces, without the margin of a sixth of the font size that GDI+
// otherwise adds.
GdipFormat plainLineFormat()
{
    Gdiplus::GpStringFormat* typographic = nullptr;
    Gdiplus::GpStringFormat* copy = nullptr;
    GdipStringFormatGetGenericTypographic(&typographic);
    GdipCloneStringFormat(typographic, &copy);
    GdipSetStringFormatFlags(copy,
                             Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsNoClip
                                 | Gdiplus::StringFormatFlagsNoFitBlackBox
                                 | Gdiplus::StringFormatFlagsMeasureTrailingSpaces);
    return GdipFormat(copy);
}

INT fontStyle(int32_t style)
{
    INT sum = Gdiplus::FontStyleRegular;
    if (style & kBoldFace)
        sum |= Gdiplus::FontStyleBold;
    if (style & kItalicFace)
        sum |= Gdiplus::FontStyleItalic;
    if (style & kUnderlineFace)
        sum |= Gdiplus::FontStyleUnderline;
    if (style & kStrikethroughFace)
        sum |= Gdiplus::FontStyleStrikeout;
    return sum;
}

CCoord measureAscent(Gdiplus::GpFontFamily* family, CCoord size, INT style)
{
    UINT16 ascent = 0;
    UINT16 em = 0;
    GdipGetCellAscent(family, style, &ascent);
    GdipGetEmHeight(family, style, &em);
    return em ? size * ascent / em : size;
}

// Measures the outline of an H, which has no overshoot.
CCoord measureCapHeight(Gdiplus::GpFontFamily* family, CCoord size, INT style,
                        Gdiplus::GpStringFormat* format)
{
    Gdiplus::GpPath* created = nullptr;
    GdipCreatePath(Gdiplus::FillModeAlternate, &created);
    const GdipPath path(created);
    const Gdiplus::RectF origin(0.f, 0.f, 0.f, 0.f);
    Gdiplus::RectF bounds(0.f, 0.f, 0.f, 0.f);
    GdipAddPathString(path.get(), L"H", 1, family, style & ~Gdiplus::FontStyleUnderline,
                      static_cast<Gdiplus::REAL>(size), &origin, format);
    GdipGetPathWorldBounds(path.get(), &bounds, nullptr, nullptr);
    const CCoord height = static_cast<CCoord>(bounds.Height);
    // Arial's ratio, if the outline cannot be measured.
    return height > 0. && height <= size ? height : 0.716 * size;
}

GdipFamily familyNamed(const std::wstring& name)
{
    Gdiplus::GpFontFamily* found = nullptr;
    GdipCreateFontFamilyFromName(name.c_str(), nullptr, &found);
    return GdipFamily(found);
}

GdipFamily anySans()
{
    Gdiplus::GpFontFamily* found = nullptr;
    GdipGetGenericFontFamilySansSerif(&found);
    return GdipFamily(found);
}

// The family that GDI substitutes for a missing one. GDI+ itself has generic families only, and
// those can be missing as well.
std::wstring substituteFor(const std::wstring& name)
{
    LOGFONTW wanted{};
    wanted.lfHeight = -16;
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    wanted.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    std::wcsncpy(wanted.lfFaceName, name.c_str(), LF_FACESIZE - 1);
    const HFONT font = CreateFontIndirectW(&wanted);
    const HDC device = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(device, font);
    wchar_t face[LF_FACESIZE]{};
    GetTextFaceW(device, LF_FACESIZE, face);
    SelectObject(device, before);
    DeleteDC(device);
    DeleteObject(font);
    return face;
}

void setSmoothing(Gdiplus::GpGraphics* graphics, bool antialias)
{
    GdipSetTextRenderingHint(graphics,
                             antialias ? Gdiplus::TextRenderingHintClearTypeGridFit
                                       : Gdiplus::TextRenderingHintSingleBitPerPixelGridFit);
}

SharedPointer<Win32Font> make(const GdipFamily& family, CCoord size, int32_t style)
{
    if (!family)
        return nullptr;
    auto font = owned(new Win32Font(family.get(), size, style));
    return font->isValid() ? font : nullptr;
}

}  // namespace

Win32Font::Win32Font(Gdiplus::GpFontFamily* family, CCoord size, int32_t style)
    : format(plainLineFormat()), ascent(measureAscent(family, size, fontStyle(style))),
      capHeight(measureCapHeight(family, size, fontStyle(style), format.get()))
{
    Gdiplus::GpFont* created = nullptr;
    GdipCreateFont(family, static_cast<Gdiplus::REAL>(size), fontStyle(style), Gdiplus::UnitPixel,
                   &created);
    font.reset(created);
}

CCoord Win32Font::getStringWidth(UTF8StringPtr text) const
{
    if (!text)
        return 0.;
    // Widths depend on the smoothing, so this measures on a bitmap in the surface's format.
    uint32_t pixel = 0;
    Gdiplus::GpBitmap* bitmap = nullptr;
    GdipCreateBitmapFromScan0(1, 1, sizeof pixel, PixelFormat32bppRGB,
                              reinterpret_cast<BYTE*>(&pixel), &bitmap);
    const GdipImage image(bitmap);
    Gdiplus::GpGraphics* created = nullptr;
    GdipGetImageGraphicsContext(image.get(), &created);
    const GdipGraphics graphics(created);
    setSmoothing(graphics.get(), true);

    const std::wstring wide = platform::toWide(text);
    const Gdiplus::RectF unlimited(0.f, 0.f, 0.f, 0.f);
    Gdiplus::RectF box(0.f, 0.f, 0.f, 0.f);
    GdipMeasureString(graphics.get(), wide.c_str(), static_cast<INT>(wide.size()), font.get(),
                      &unlimited, format.get(), &box, nullptr, nullptr);
    return static_cast<CCoord>(box.Width);
}

void Win32Font::draw(Gdiplus::GpGraphics* graphics, UTF8StringPtr text, const CPoint& baseline,
                     uint32_t argb, bool antialias) const
{
    Gdiplus::GpSolidFill* created = nullptr;
    if (GdipCreateSolidFill(argb, &created) != Gdiplus::Ok)
        return;
    const GdipBrush brush(created);
    setSmoothing(graphics, antialias);
    const std::wstring wide = platform::toWide(text);
    const Gdiplus::RectF origin(static_cast<Gdiplus::REAL>(baseline.x),
                                static_cast<Gdiplus::REAL>(baseline.y - ascent), 0.f, 0.f);
    GdipDrawString(graphics, wide.c_str(), static_cast<INT>(wide.size()), font.get(), &origin,
                   format.get(), brush.get());
}

IPlatformFont* IPlatformFont::create(UTF8StringPtr family, CCoord size, int32_t style)
{
    const GdiplusSession session;
    const std::wstring name = platform::toWide(family ? family : "");
    auto font = make(familyNamed(name), size, style);
    if (!font)
        font = make(familyNamed(substituteFor(name)), size, style);
    if (!font)
        font = make(anySans(), size, style);
    if (font)
        font->remember();
    return font;
}

}  // namespace VSTGUI
