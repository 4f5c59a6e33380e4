#include "vstgui/platform/x11/x11keys.h"

#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <algorithm>
#include <utility>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr std::pair<KeySym, unsigned char> kKeys[] = {
    {XK_BackSpace, VKEY_BACK},
    {XK_Tab, VKEY_TAB},
    {XK_ISO_Left_Tab, VKEY_TAB},
    {XK_Clear, VKEY_CLEAR},
    {XK_Return, VKEY_RETURN},
    {XK_Pause, VKEY_PAUSE},
    {XK_Escape, VKEY_ESCAPE},
    {XK_space, VKEY_SPACE},
    {XK_End, VKEY_END},
    {XK_Home, VKEY_HOME},
    {XK_Left, VKEY_LEFT},
    {XK_Up, VKEY_UP},
    {XK_Right, VKEY_RIGHT},
    {XK_Down, VKEY_DOWN},
    {XK_Page_Up, VKEY_PAGEUP},
    {XK_Page_Down, VKEY_PAGEDOWN},
    {XK_Select, VKEY_SELECT},
    {XK_Print, VKEY_PRINT},
    {XK_KP_Enter, VKEY_ENTER},
    {XK_Insert, VKEY_INSERT},
    {XK_Delete, VKEY_DELETE},
    {XK_Help, VKEY_HELP},
    {XK_KP_Multiply, VKEY_MULTIPLY},
    {XK_KP_Add, VKEY_ADD},
    {XK_KP_Separator, VKEY_SEPARATOR},
    {XK_KP_Subtract, VKEY_SUBTRACT},
    {XK_KP_Decimal, VKEY_DECIMAL},
    {XK_KP_Divide, VKEY_DIVIDE},
    {XK_KP_Left, VKEY_LEFT},
    {XK_KP_Right, VKEY_RIGHT},
    {XK_KP_Up, VKEY_UP},
    {XK_KP_Down, VKEY_DOWN},
    {XK_KP_Home, VKEY_HOME},
    {XK_KP_End, VKEY_END},
    {XK_KP_Delete, VKEY_DELETE},
    {XK_Num_Lock, VKEY_NUMLOCK},
    {XK_Scroll_Lock, VKEY_SCROLL},
    {XK_Shift_L, VKEY_SHIFT},
    {XK_Shift_R, VKEY_SHIFT},
    {XK_Control_L, VKEY_CONTROL},
    {XK_Control_R, VKEY_CONTROL},
    {XK_Alt_L, VKEY_ALT},
    {XK_Alt_R, VKEY_ALT},
    {XK_KP_Equal, VKEY_EQUALS},
};

unsigned char virtualKey(KeySym symbol)
{
    if (symbol >= XK_F1 && symbol <= XK_F12)
        return static_cast<unsigned char>(VKEY_F1 + (symbol - XK_F1));
    if (symbol >= XK_KP_0 && symbol <= XK_KP_9)
        return static_cast<unsigned char>(VKEY_NUMPAD0 + (symbol - XK_KP_0));
    const auto* it = std::find_if(std::begin(kKeys), std::end(kKeys),
                                  [&](const auto& key) { return key.first == symbol; });
    return it == std::end(kKeys) ? static_cast<unsigned char>(0) : it->second;
}

unsigned char modifiers(unsigned int state)
{
    int word = 0;
    if (state & ShiftMask)
        word |= MODIFIER_SHIFT;
    if (state & Mod1Mask)
        word |= MODIFIER_ALTERNATE;
    if (state & ControlMask)
        word |= MODIFIER_CONTROL;
    return static_cast<unsigned char>(word);
}

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

// Each byte is a code point.
std::string fromLatin1(const char* bytes, int length)
{
    std::string text;
    for (int i = 0; i < length; ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        if (c < 0x80) {
            text += bytes[i];
        } else {
            text += static_cast<char>(0xC0 | (c >> 6));
            text += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return text;
}

std::string composed(XKeyEvent& event, XIC context, KeySym& symbol)
{
    char buffer[64];
    Status status = 0;
    int length = Xutf8LookupString(context, &event, buffer, sizeof buffer, &symbol, &status);
    if (status == XBufferOverflow) {
        std::string larger(static_cast<size_t>(length), '\0');
        length = Xutf8LookupString(context, &event, larger.data(), length, &symbol, &status);
        larger.resize(static_cast<size_t>(std::max(length, 0)));
        return larger;
    }
    if (status != XLookupChars && status != XLookupBoth)
        return {};
    return std::string(buffer, static_cast<size_t>(std::max(length, 0)));
}

}  // namespace

int32_t buttonsOfState(unsigned int state)
{
    int32_t word = 0;
    if (state & ShiftMask)
        word |= kShift;
    if (state & ControlMask)
        word |= kControl;
    if (state & Mod1Mask)
        word |= kAlt;
    if (state & Button1Mask)
        word |= kLButton;
    if (state & Button2Mask)
        word |= kMButton;
    if (state & Button3Mask)
        word |= kRButton;
    return word;
}

int32_t buttonOfNumber(unsigned int number)
{
    switch (number) {
    case 1:
        return kLButton;
    case 2:
        return kMButton;
    case 3:
        return kRButton;
    case 8:
        return kButton4;
    case 9:
        return kButton5;
    default:
        return 0;
    }
}

KeyInput readKey(XKeyEvent& event, XIC context)
{
    KeyInput key;
    if (context && event.type == KeyPress) {
        key.text = composed(event, context, key.symbol);
    } else {
        char buffer[16];
        const int length = XLookupString(&event, buffer, sizeof buffer, &key.symbol, nullptr);
        key.text = fromLatin1(buffer, length);
    }
    // Return and Backspace also come as control characters; `virt` has them.
    key.text.erase(std::remove_if(key.text.begin(), key.text.end(), isControl), key.text.end());
    key.code.virt = virtualKey(key.symbol);
    key.code.modifier = modifiers(event.state);
    if (key.text.size() == 1)
        key.code.character = key.text[0];
    return key;
}

}  // namespace X11
}  // namespace VSTGUI
