// Win32Frame: creation and destruction of the window, size, mouse position, menus and dialogs.
#include "vstgui/platform/win32/win32frame.h"

#include "platform/win32/WideText.h"

#include "vstgui/platform/win32/win32filedialog.h"
#include "vstgui/platform/win32/win32keys.h"
#include "vstgui/platform/win32/win32module.h"
#include "vstgui/platform/win32/win32optionmenu.h"
#include "vstgui/platform/win32/win32textedit.h"

#include <cmath>

namespace VSTGUI {

Win32Frame* Win32Frame::create(IPlatformFrameCallback* callback, const CRect& size, HWND parent)
{
    if (!callback || !IsWindow(parent))
        return nullptr;
    auto frame = owned(new Win32Frame(callback));
    CreateWindowExW(0, frame->windowClass.getName(), L"",
                    WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0,
                    static_cast<int>(size.getWidth()), static_cast<int>(size.getHeight()), parent,
                    nullptr, moduleHandle(), static_cast<Win32Frame*>(frame));
    if (!frame->window)
        return nullptr;
    frame->remember();
    return frame;
}

Win32Frame::Win32Frame(IPlatformFrameCallback* callback)
    : windowClass(procedure), callback(callback)
{
}

Win32Frame::~Win32Frame()
{
    Win32Frame::close();
}

void Win32Frame::close()
{
    callback = nullptr;
    capturing = false;
    if (!window)
        return;
    endModalLoops();
    // Text boxes are closed without a callback to their controls.
    while (const HWND child = GetWindow(window, GW_CHILD)) {
        SendMessageW(child, Win32TextEdit::kEndSilently, 0, 0);
        if (IsWindow(child))
            DestroyWindow(child);
    }
    const HWND closing = window;
    window = nullptr;
    SetWindowLongPtrW(closing, GWLP_USERDATA, 0);
    DestroyWindow(closing);
}

void Win32Frame::endModalLoops()
{
    if (menus > 0)
        EndMenu();
    cancelFileDialog();
}

void Win32Frame::onDestroy()
{
    endModalLoops();
    loseCapture();
}

bool Win32Frame::getGlobalPosition(CPoint& position) const
{
    POINT origin{0, 0};
    if (!window || !ClientToScreen(window, &origin))
        return false;
    position(origin.x, origin.y);
    return true;
}

bool Win32Frame::setSize(const CRect& newSize)
{
    if (!window
        || !SetWindowPos(window, nullptr, 0, 0, static_cast<int>(newSize.getWidth()),
                         static_cast<int>(newSize.getHeight()),
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS))
        return false;
    InvalidateRect(window, nullptr, FALSE);
    return true;
}

bool Win32Frame::getSize(CRect& rect) const
{
    RECT client;
    if (!window || !GetClientRect(window, &client))
        return false;
    rect = CRect(client.left, client.top, client.right, client.bottom);
    return true;
}

bool Win32Frame::getCurrentMousePosition(CPoint& where) const
{
    POINT point;
    if (!window || !GetCursorPos(&point) || !ScreenToClient(window, &point))
        return false;
    where(point.x, point.y);
    return true;
}

bool Win32Frame::getCurrentMouseButtons(CButtonState& buttons) const
{
    if (!window)
        return false;
    buttons |= currentButtons();
    return true;
}

bool Win32Frame::setMouseCursor(CCursorType)
{
    // The window class sets the arrow, the only cursor.
    return window != nullptr;
}

bool Win32Frame::invalidRect(const CRect& rect)
{
    if (!window || painting)
        return false;
    const RECT whole{
        static_cast<LONG>(std::floor(rect.left)), static_cast<LONG>(std::floor(rect.top)),
        static_cast<LONG>(std::ceil(rect.right)), static_cast<LONG>(std::ceil(rect.bottom))};
    return !IsRectEmpty(&whole) && InvalidateRect(window, &whole, FALSE);
}

IPlatformTextEdit* Win32Frame::createPlatformTextEdit(IPlatformTextEditCallback* textEdit)
{
    if (!window)
        return nullptr;
    auto box = owned(new Win32TextEdit(window, textEdit));
    if (!box->isOpen())
        return nullptr;
    box->remember();
    return box;
}

IPlatformOptionMenu* Win32Frame::createPlatformOptionMenu()
{
    return window ? new Win32OptionMenu(this) : nullptr;
}

UINT Win32Frame::trackMenu(HMENU menu, const CPoint& where)
{
    POINT point{static_cast<LONG>(where.x), static_cast<LONG>(where.y)};
    if (!window || !ClientToScreen(window, &point))
        return 0;
    const CBaseObjectGuard guard(this);
    ++menus;
    const UINT command = trackMenuIgnoringOpeningClick(menu, point, window);
    --menus;
    return window ? command : 0;
}

bool Win32Frame::runFileDialog(const FileDialogRequest& request, const FilesChosen& done)
{
    if (!window || fileDialog)
        return false;
    const CBaseObjectGuard guard(this);
    Win32FileDialog dialog(window, request);
    fileDialog = &dialog;
    std::vector<std::string> chosen;
    const bool picked = dialog.run(chosen);
    fileDialog = nullptr;
    if (!window)
        return false;
    done(picked ? chosen : std::vector<std::string>());
    return picked;
}

void Win32Frame::cancelFileDialog()
{
    if (fileDialog)
        fileDialog->cancel();
}

void Win32Frame::showMessage(const std::string& text, const std::string& caption)
{
    const CBaseObjectGuard guard(this);
    MessageBoxW(window, platform::toWide(text).c_str(), platform::toWide(caption).c_str(), MB_OK);
}

uint32_t IPlatformFrame::getTicks()
{
    return static_cast<uint32_t>(GetTickCount64());
}

IPlatformFrame* IPlatformFrame::createNative(IPlatformFrameCallback* callback, const CRect& size,
                                             void* parent, PlatformType type, IPlatformFrameConfig*)
{
    if (type != kHWND && type != kDefaultNative)
        return nullptr;
    return Win32Frame::create(callback, size, static_cast<HWND>(parent));
}

}  // namespace VSTGUI
