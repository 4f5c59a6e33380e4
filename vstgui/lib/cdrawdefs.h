// Drawing modes, styles and alignment.
#pragma once

#include <cstdint>

namespace VSTGUI {

enum CHoriTxtAlign { kLeftText = 0, kCenterText, kRightText };

enum CDrawStyle { kDrawStroked = 0, kDrawFilled, kDrawFilledAndStroked };

enum CDrawModeFlags : uint32_t { kAliasing = 0, kAntiAliasing = 1 };

class CDrawMode {
public:
    CDrawMode(uint32_t flags = kAliasing) : flags(flags) { }
    uint32_t operator()() const { return flags; }
    bool operator==(const CDrawMode& m) const { return flags == m.flags; }
    bool operator!=(const CDrawMode& m) const { return flags != m.flags; }

private:
    uint32_t flags;
};

// Solid is the only style.
class CLineStyle { };
inline constexpr CLineStyle kLineSolid{};

enum CCursorType { kCursorDefault = 0 };

enum PlatformType { kHWND, kWindowRef, kNSView, kUIView, kDefaultNative = -1 };

constexpr int32_t kAutosizeNone = 0;

// Style bits of controls.
enum CControlEnum {
    kHorizontal = 1 << 0,
    kVertical = 1 << 1,
    kShadowText = 1 << 2,
    kLeft = 1 << 3,
    kRight = 1 << 4,
    kTop = 1 << 5,
    kBottom = 1 << 6,
    k3DIn = 1 << 7,
    k3DOut = 1 << 8,
    kPopupStyle = 1 << 9,
    kCheckStyle = 1 << 10,
    kMultipleCheckStyle = kCheckStyle | 1,
    kNoTextStyle = 1 << 11,
    kNoDrawStyle = 1 << 12,
    kDoubleClickStyle = 1 << 13,
    kNoFrame = 1 << 14,
    kRoundRectStyle = 1 << 15
};

}  // namespace VSTGUI
