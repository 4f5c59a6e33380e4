#include "vstgui/platform/win32/win32keys.h"

namespace VSTGUI {

namespace {

struct Key {
    WPARAM windows;
    unsigned char virt;
};

// clang-format off
constexpr Key kKeys[] = {
    {VK_BACK, VKEY_BACK},         {VK_TAB, VKEY_TAB},             {VK_CLEAR, VKEY_CLEAR},
    {VK_RETURN, VKEY_RETURN},     {VK_PAUSE, VKEY_PAUSE},         {VK_ESCAPE, VKEY_ESCAPE},
    {VK_SPACE, VKEY_SPACE},       {VK_NEXT, VKEY_PAGEDOWN},       {VK_PRIOR, VKEY_PAGEUP},
    {VK_END, VKEY_END},           {VK_HOME, VKEY_HOME},           {VK_LEFT, VKEY_LEFT},
    {VK_UP, VKEY_UP},             {VK_RIGHT, VKEY_RIGHT},         {VK_DOWN, VKEY_DOWN},
    {VK_SELECT, VKEY_SELECT},     {VK_PRINT, VKEY_PRINT},         {VK_SNAPSHOT, VKEY_SNAPSHOT},
    {VK_INSERT, VKEY_INSERT},     {VK_DELETE, VKEY_DELETE},       {VK_HELP, VKEY_HELP},
    {VK_MULTIPLY, VKEY_MULTIPLY}, {VK_ADD, VKEY_ADD},             {VK_SEPARATOR, VKEY_SEPARATOR},
    {VK_SUBTRACT, VKEY_SUBTRACT}, {VK_DECIMAL, VKEY_DECIMAL},     {VK_DIVIDE, VKEY_DIVIDE},
    {VK_NUMLOCK, VKEY_NUMLOCK},   {VK_SCROLL, VKEY_SCROLL},       {VK_SHIFT, VKEY_SHIFT},
    {VK_CONTROL, VKEY_CONTROL},   {VK_MENU, VKEY_ALT},
};

struct Button {
    int32_t button;
    WORD mouseKey;
    int virtualKey;
};

constexpr Button kButtons[] = {
    {kLButton, MK_LBUTTON,  VK_LBUTTON},
    {kMButton, MK_MBUTTON,  VK_MBUTTON},
    {kRButton, MK_RBUTTON,  VK_RBUTTON},
    {kButton4, MK_XBUTTON1, VK_XBUTTON1},
    {kButton5, MK_XBUTTON2, VK_XBUTTON2},
};
// clang-format on

bool isKeyDown(int virtualKey)
{
    return GetKeyState(virtualKey) < 0;
}

// GetAsyncKeyState has the physical buttons, messages have them swapped by the user's setting.
bool isButtonDownNow(int virtualKey)
{
    if (GetSystemMetrics(SM_SWAPBUTTON)) {
        if (virtualKey == VK_LBUTTON)
            virtualKey = VK_RBUTTON;
        else if (virtualKey == VK_RBUTTON)
            virtualKey = VK_LBUTTON;
    }
    return GetAsyncKeyState(virtualKey) < 0;
}

}  // namespace

VstKeyCode keyCodeFrom(WPARAM virtualKey)
{
    VstKeyCode code{};
    for (const Key& key : kKeys) {
        if (key.windows == virtualKey)
            code.virt = key.virt;
    }
    if (virtualKey >= VK_NUMPAD0 && virtualKey <= VK_NUMPAD9)
        code.virt = static_cast<unsigned char>(VKEY_NUMPAD0 + (virtualKey - VK_NUMPAD0));
    if (virtualKey >= VK_F1 && virtualKey <= VK_F12)
        code.virt = static_cast<unsigned char>(VKEY_F1 + (virtualKey - VK_F1));
    int modifier = 0;
    if (isKeyDown(VK_SHIFT))
        modifier |= MODIFIER_SHIFT;
    if (isKeyDown(VK_CONTROL))
        modifier |= MODIFIER_CONTROL;
    if (isKeyDown(VK_MENU))
        modifier |= MODIFIER_ALTERNATE;
    code.modifier = static_cast<unsigned char>(modifier);
    return code;
}

int32_t modifiersFrom(WORD mouseKeys)
{
    int32_t state = 0;
    if (mouseKeys & MK_SHIFT)
        state |= kShift;
    if (mouseKeys & MK_CONTROL)
        state |= kControl;
    if (isKeyDown(VK_MENU))
        state |= kAlt;
    return state;
}

int32_t buttonsFrom(WORD mouseKeys)
{
    int32_t state = modifiersFrom(mouseKeys);
    for (const Button& b : kButtons) {
        if (mouseKeys & b.mouseKey)
            state |= b.button;
    }
    return state;
}

int32_t currentButtons()
{
    int32_t state = 0;
    for (const Button& b : kButtons) {
        if (isButtonDownNow(b.virtualKey))
            state |= b.button;
    }
    if (GetAsyncKeyState(VK_SHIFT) < 0)
        state |= kShift;
    if (GetAsyncKeyState(VK_CONTROL) < 0)
        state |= kControl;
    if (GetAsyncKeyState(VK_MENU) < 0)
        state |= kAlt;
    return state;
}

int32_t buttonOf(UINT message, WPARAM wParam)
{
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
        return kLButton;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_MBUTTONUP:
        return kMButton;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP:
        return kRButton;
    case WM_XBUTTONDOWN:
    case WM_XBUTTONDBLCLK:
    case WM_XBUTTONUP:
        return HIWORD(wParam) == XBUTTON1 ? kButton4 : kButton5;
    default:
        return 0;
    }
}

bool isHeld(int32_t button)
{
    for (const Button& b : kButtons) {
        if (b.button == button)
            return isKeyDown(b.virtualKey);
    }
    return false;
}

}  // namespace VSTGUI
