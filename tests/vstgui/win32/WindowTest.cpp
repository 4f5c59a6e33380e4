// Frames in a host's window, the parts specific to Windows: pixels, messages, capture, keys.
#include "tests/vstgui/OpenFrame.h"
#include "vstgui/platform/iplatformsurface.h"

#include <windows.h>

namespace {

struct Win32Window : OpenFrame {
    HWND window() const
    {
        return static_cast<HWND>(frame->getPlatformFrame()->getPlatformRepresentation());
    }
    HWND hostWindow() const { return static_cast<HWND>(host.handle()); }
};

Pixels offscreen(int width, int height,
                 const std::function<void(CDrawContext&, const CRect&)>& draw)
{
    const auto surface = owned(IPlatformSurface::create(width, height));
    const auto context = owned(new CDrawContext(surface));
    draw(*context, CRect(0, 0, width, height));
    return surface->readPixels();
}

}  // namespace

TEST_F(Win32Window, OnlyInvalidRectanglesArePaintedEachSeparately)
{
    IPlatformFrame& platform = *frame->getPlatformFrame();
    record.drawn.clear();
    EXPECT_TRUE(platform.invalidRect(CRect(10.2, 10.9, 20.1, 20.2)));
    EXPECT_TRUE(platform.invalidRect(CRect(100, 100, 110, 110)));
    EXPECT_FALSE(platform.invalidRect(CRect(50, 50, 50, 60)));
    record.onDraw = [&](CDrawContext&, const CRect&) {
        EXPECT_FALSE(platform.invalidRect(CRect(0, 0, 1, 1)));  // refused: painting would never end
    };
    pump();
    EXPECT_EQ(record.drawn, (std::vector<CRect>{{10, 10, 21, 21}, {100, 100, 110, 110}}));
    record.drawn.clear();
    record.onDraw = [&](CDrawContext&, const CRect&) { closeFrame(); };
    frame->invalidRect(CRect(0, 0, 9, 9));
    frame->invalidRect(CRect(100, 100, 110, 110));
    EXPECT_TRUE(pumpUntil([&] { return !frame; }));
    EXPECT_EQ(record.drawn.size(), 1u);
}

TEST(Picture, ComesFromTheModulesResourcesWhateverResolutionItClaims)
{
    const auto bitmap = owned(new CBitmap(CResourceDescription(10016)));
    ASSERT_TRUE(bitmap->isLoaded());
    EXPECT_EQ(bitmap->getWidth(), 4);
    EXPECT_EQ(bitmap->getHeight(), 3);
    const Pixels p = offscreen(10, 10, [&](CDrawContext& context, const CRect& all) {
        context.setFillColor(kWhiteCColor);
        context.drawRect(all, kDrawFilled);
        bitmap->draw(&context, CRect(0, 0, 4, 3));
        bitmap->draw(&context, CRect(5, 0, 7, 1), CPoint(1, 0), 0.5f);
    });
    // 200 * 128 / 255 + 255 * 127 / 255 = 100.4 + 127 and so on; green, half.
    const std::pair<CPoint, CColor> pixels[] = {
        {{0, 0}, kRedCColor},   {{3, 0}, kWhiteCColor}, {{0, 1}, CColor(227, 177, 152)},
        {{0, 2}, kWhiteCColor}, {{4, 0}, kWhiteCColor}, {{5, 0}, CColor(127, 255, 127)},
        {{7, 0}, kWhiteCColor}};
    for (const auto& [at, colour] : pixels) {
        const CColor seen = p.at(static_cast<int>(at.x), static_cast<int>(at.y));
        EXPECT_NEAR(seen.red, colour.red, 1) << at.x << ',' << at.y;
        EXPECT_NEAR(seen.green, colour.green, 1) << at.x << ',' << at.y;
        EXPECT_NEAR(seen.blue, colour.blue, 1) << at.x << ',' << at.y;
    }
}

TEST_F(Win32Window, MessagesTellAllButtonsAndModifiersAndNotchesAlsoLeftOfAndAboveTheScreen)
{
    // Wheel messages have screen coordinates; 300 left of and 200 above the host is off the screen.
    const struct {
        UINT message;
        WPARAM what;
        LPARAM where;
        const char* event;
    } rows[] = {
        {WM_RBUTTONDOWN, MK_RBUTTON | MK_LBUTTON | MK_SHIFT | MK_CONTROL, MAKELPARAM(5, 6),
         "down 5,6 L R shift control"},
        {WM_MBUTTONDOWN, MK_MBUTTON | MK_XBUTTON1, MAKELPARAM(7, 8), "down 7,8 M 4"},
        {WM_XBUTTONUP, MAKEWPARAM(0, XBUTTON2), MAKELPARAM(-7, -8), "up -7,-8 5"},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 60), MAKELPARAM(-10, -20),
         "wheel -310,-220 shift y 0.5"},
        {WM_MOUSEHWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(kHost.x + 3, kHost.y + 4),
         "wheel 3,4 x -1"},
    };
    for (const auto& row : rows) {
        SendMessageW(window(), row.message, row.what, row.where);
        EXPECT_TRUE(record.has(row.event)) << row.event;
    }
}

TEST_F(Win32Window, APressThatNoViewHandlesIsNotCaptured)
{
    record.onPress = [] { return kMouseDownEventHandledButDontNeedMovedOrUpEvents; };
    movePointer(20, 30);
    press();
    EXPECT_TRUE(pumpUntil([&] { return record.has("down 20,30 L"); }));
    EXPECT_EQ(GetCapture(), nullptr);
    movePointer(350, 250);
    release();
    pump();
    EXPECT_FALSE(record.has("move 350,250 L"));
    EXPECT_FALSE(record.has("up 350,250 L"));
}

TEST_F(Win32Window, TheButtonsHeldFollowTheUsersSwap)
{
    movePointer(20, 30);
    press();
    for (const bool swapped : {true, false}) {
        SwapMouseButton(swapped);
        CButtonState buttons;
        EXPECT_TRUE(frame->getPlatformFrame()->getCurrentMouseButtons(buttons));
        EXPECT_EQ(buttons(), swapped ? +kRButton : +kLButton);
    }
    release();
}

TEST_F(Win32Window, HidingTheWindowCancelsTheDrag)
{
    record.onPress = [] { return kMouseEventHandled; };
    movePointer(20, 30);
    press();
    EXPECT_TRUE(pumpUntil([&] { return GetCapture() == window(); }));
    ShowWindow(window(), SW_HIDE);
    EXPECT_TRUE(pumpUntil([&] { return record.has("cancel"); }));
    EXPECT_EQ(GetCapture(), nullptr);
    release();
}

TEST_F(Win32Window, LosingTheCaptureOrTheReleaseCancelsTheDrag)
{
    for (const bool byWindow : {true, false}) {
        SCOPED_TRACE(byWindow);
        record.onPress = [&] {
            if (byWindow)
                return kMouseEventHandled;
            release();
            MSG message;
            while (!PeekMessageW(&message, window(), WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE))
                Sleep(1);
            return kMouseEventHandled;
        };
        movePointer(byWindow ? 20 : 90, 30);  // elsewhere, to avoid a double click
        pump();
        record.events.clear();
        press();
        EXPECT_TRUE(pumpUntil([&] { return !record.events.empty(); }));
        if (byWindow) {
            EXPECT_EQ(GetCapture(), window());
            SetCapture(hostWindow());
            pump();
            ReleaseCapture();
            release();
        }
        EXPECT_TRUE(pumpUntil([&] { return record.has("cancel"); }));
        pump();
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(record.eventsButMoves(),
                  byWindow ? (Log{"down 20,30 L", "cancel", "up 20,30 L"})
                           : (Log{"down 90,30 L", "cancel"}));
    }
}

TEST_F(Win32Window, KeysArriveWithModifiersWhileItHasTheKeyboard)
{
    host.takeKeyboard();
    pump();
    record.events.clear();
    SetFocus(window());
    BYTE keys[256]{};
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    SendMessageW(window(), WM_KEYDOWN, VK_F12, 0);
    SendMessageW(window(), WM_KEYUP, VK_NUMPAD9, 0);
    SendMessageW(window(), WM_KEYDOWN, 'A', 0);  // not a special key: left to the host
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
    tap(userinput::Key::Down);
    EXPECT_TRUE(pumpUntil([&] { return record.has("keyup 14 0 0"); }));
    host.takeKeyboard();
    pump();
    EXPECT_EQ(
        record.events,
        (Log{"active", "key 51 1 0", "keyup 33 1 0", "key 14 0 0", "keyup 14 0 0", "inactive"}));
}
