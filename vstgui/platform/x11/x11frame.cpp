// X11Frame: creation and destruction of the window, size, painting and keyboard focus.
#include "vstgui/platform/x11/x11frame.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/platform/x11/idlerunloop.h"
#include "vstgui/platform/x11/steadyclock.h"
#include "vstgui/platform/x11/x11errors.h"
#include "vstgui/platform/x11/x11filedialog.h"
#include "vstgui/platform/x11/x11keys.h"
#include "vstgui/platform/x11/x11message.h"
#include "vstgui/platform/x11/x11optionmenu.h"
#include "vstgui/platform/x11/x11textedit.h"
#include "vstgui/platform/x11/x11toplevel.h"

#include <algorithm>

namespace VSTGUI {

IPlatformFrame* IPlatformFrame::createNative(IPlatformFrameCallback* callback, const CRect& size,
                                             void* parent, PlatformType,
                                             IPlatformFrameConfig* config)
{
    auto* x11Config = dynamic_cast<X11::FrameConfig*>(config);
    X11::IRunLoop* loop = x11Config ? static_cast<X11::IRunLoop*>(x11Config->runLoop) : nullptr;
    return X11::X11Frame::create(callback, size,
                                 static_cast<Window>(reinterpret_cast<uintptr_t>(parent)),
                                 loop ? *loop : X11::IdleRunLoop::instance());
}

namespace X11 {

namespace {

constexpr uint32_t kPaintPeriod = 16;  // ms
constexpr size_t kMaxRects = 16;       // with more, their bounding box is painted

constexpr long kEvents = ExposureMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask
    | EnterWindowMask | LeaveWindowMask | FocusChangeMask | StructureNotifyMask
    | PropertyChangeMask;
// Selected only while a text box is open: the server sends keys to the window under the pointer if
// it selects key events and lies in the focus window. All other keys are the host's.
constexpr long kKeyEvents = KeyPressMask | KeyReleaseMask;

unsigned int windowLength(CCoord length)
{
    return static_cast<unsigned int>(std::max(length, 1.));
}

}  // namespace

X11Frame* X11Frame::create(IPlatformFrameCallback* callback, const CRect& size, Window parent,
                           IRunLoop& loop)
{
    auto frame = owned(new X11Frame(callback, size, loop));
    if (!frame->connection || !frame->openWindow(parent))
        return nullptr;
    frame->remember();
    return frame;
}

X11Frame::X11Frame(IPlatformFrameCallback* callback, const CRect& size, IRunLoop& loop)
    : callback(callback), loop(&loop), connection(X11Connection::acquire(loop)), size(size),
      paintTimer(new CVSTGUITimer([this](CVSTGUITimer*) { paint(); }, kPaintPeriod, false), false)
{
}

X11Frame::~X11Frame()
{
    X11Frame::close();
}

bool X11Frame::openWindow(Window parent)
{
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(display, parent, &attributes))
        return false;
    XSetWindowAttributes wanted{};
    wanted.background_pixmap = None;
    wanted.event_mask = kEvents;
    window =
        XCreateWindow(display, parent, 0, 0, windowLength(size.getWidth()),
                      windowLength(size.getHeight()), 0, CopyFromParent, InputOutput,
                      static_cast<Visual*>(CopyFromParent), CWBackPixmap | CWEventMask, &wanted);
    const long xembedInfo[] = {1, 1};  // version of the protocol; to be mapped
    XChangeProperty(display, window, connection->getXembedInfoAtom(),
                    connection->getXembedInfoAtom(), 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(xembedInfo), 2);
    XMapWindow(display, window);
    if (!XGetWindowAttributes(display, window, &attributes)) {
        window = 0;
        return false;
    }
    clipboard = std::make_unique<X11Clipboard>(display, window);
    painter = std::make_unique<WindowPainter>(display, window, attributes.visual, attributes.depth);
    connection->addWindow(window, this);
    // Unmapping the host's window sends no event to this one, so that window is watched as well.
    hostWindow = parent;
    keyboardBefore = parent;
    XSelectInput(display, hostWindow, StructureNotifyMask);
    connection->addWindow(hostWindow, this);
    XFlush(display);
    return true;
}

void X11Frame::close()
{
    callback = nullptr;
    if (!connection)
        return;
    paintTimer->stop();
    dirty.clear();
    if (menu)
        menu->cancel();
    cancelFileDialog();
    message.reset();
    setTextBox(nullptr);
    connection->removeWindow(window);
    connection->removeWindow(hostWindow);
    {
        const X11ErrorGuard guard(connection->getDisplay());
        if (inputContext)
            XDestroyIC(inputContext);
        inputContext = nullptr;
        painter.reset();
        if (hostWindow)
            XSelectInput(connection->getDisplay(), hostWindow, NoEventMask);
        if (window && !windowGone)
            XDestroyWindow(connection->getDisplay(), window);
        XFlush(connection->getDisplay());
    }
    connection->release(*loop);
    connection.reset();
}

bool X11Frame::getGlobalPosition(CPoint& position) const
{
    if (!isAlive())
        return false;
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    int x = 0;
    int y = 0;
    Window child = 0;
    if (!XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &x, &y, &child))
        return false;
    position(x, y);
    return true;
}

bool X11Frame::setSize(const CRect& newSize)
{
    size = newSize;
    backBuffer = nullptr;
    const auto outside = [this](CRect& rect) { return rect.bound(size).isEmpty(); };
    dirty.erase(std::remove_if(dirty.begin(), dirty.end(), outside), dirty.end());
    if (!isAlive())
        return false;
    const X11ErrorGuard guard(connection->getDisplay());
    XResizeWindow(connection->getDisplay(), window, windowLength(size.getWidth()),
                  windowLength(size.getHeight()));
    XFlush(connection->getDisplay());
    return true;
}

bool X11Frame::getSize(CRect& rect) const
{
    rect = size;
    return true;
}

bool X11Frame::getCurrentMousePosition(CPoint& where) const
{
    if (!isAlive())
        return false;
    const X11ErrorGuard guard(connection->getDisplay());
    Window root = 0;
    Window child = 0;
    int rootX = 0;
    int rootY = 0;
    int x = 0;
    int y = 0;
    unsigned int state = 0;
    if (!XQueryPointer(connection->getDisplay(), window, &root, &child, &rootX, &rootY, &x, &y,
                       &state))
        return false;
    where(x, y);
    return true;
}

bool X11Frame::getCurrentMouseButtons(CButtonState& buttons) const
{
    if (!isAlive())
        return false;
    const X11ErrorGuard guard(connection->getDisplay());
    Window ignored = 0;
    int coordinate = 0;
    unsigned int state = 0;
    XQueryPointer(connection->getDisplay(), window, &ignored, &ignored, &coordinate, &coordinate,
                  &coordinate, &coordinate, &state);
    buttons |= buttonsOfState(state);
    return true;
}

bool X11Frame::setMouseCursor(CCursorType)
{
    if (!isAlive())
        return false;
    const X11ErrorGuard guard(connection->getDisplay());
    XUndefineCursor(connection->getDisplay(), window);
    return true;
}

void* X11Frame::getPlatformRepresentation() const
{
    return reinterpret_cast<void*>(static_cast<uintptr_t>(window));
}

bool X11Frame::invalidRect(const CRect& rect)
{
    CRect pixels(std::floor(rect.left), std::floor(rect.top), std::ceil(rect.right),
                 std::ceil(rect.bottom));
    if (!isAlive() || pixels.bound(size).isEmpty())
        return false;
    if (dirty.empty())
        paintTimer->start();
    dirty.push_back(pixels);
    if (dirty.size() > kMaxRects) {
        for (const CRect& r : dirty)
            pixels.unite(r);
        dirty.assign(1, pixels);
    }
    return true;
}

void X11Frame::afterEvents()
{
    if (!dirty.empty() && steadyMilliseconds() - lastPaint >= kPaintPeriod)
        paint();
}

void X11Frame::paint()
{
    const CBaseObjectGuard guard(this);
    paintTimer->stop();
    const auto rects = std::exchange(dirty, {});
    if (!isAlive() || rects.empty())
        return;
    if (!backBuffer) {
        backBuffer = owned(static_cast<CairoSurface*>(
            IPlatformSurface::create(size.getWidth(), size.getHeight())));
    }
    if (!backBuffer)
        return;
    for (const CRect& rect : rects) {
        const auto context = owned(new CDrawContext(backBuffer));
        context->setClipRect(rect);
        callback->platformDrawRect(context, rect);
        if (!isAlive())
            return;
        if (textBox)
            textBox->draw(*context, rect);
    }
    copyToWindow(rects);
    lastPaint = steadyMilliseconds();
}

void X11Frame::copyToWindow(const std::vector<CRect>& rects)
{
    const X11ErrorGuard guard(connection->getDisplay());
    painter->copy(backBuffer->getImage(), rects);
    XFlush(connection->getDisplay());
}

void X11Frame::setTextBox(X11TextEdit* box)
{
    const bool hadOne = std::exchange(textBox, box) != nullptr;
    draggingInTextBox = false;
    if (box)
        takeKeyboard();
    else if (hadOne)
        giveKeyboardBack();
}

void X11Frame::copyText(const std::string& text)
{
    const X11ErrorGuard guard(connection->getDisplay());
    clipboard->copy(text, inputTime);
}

void X11Frame::requestText()
{
    const X11ErrorGuard guard(connection->getDisplay());
    clipboard->requestClipboard(inputTime);
}

bool X11Frame::hasKeyboard() const
{
    const X11ErrorGuard guard(connection->getDisplay());
    Window holder = None;
    int revert = 0;
    XGetInputFocus(connection->getDisplay(), &holder, &revert);
    return holder == window;
}

void X11Frame::takeKeyboard()
{
    if (!isAlive())
        return;
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    if (!hasKeyboard()) {
        XGetInputFocus(display, &keyboardBefore, &revertBefore);
        // Another editor's text box ends now: the keyboard goes to whoever had it before that.
        const auto* const other = dynamic_cast<X11Frame*>(connection->handlerOf(keyboardBefore));
        if (other && other->window == keyboardBefore) {
            keyboardBefore = other->keyboardBefore;
            revertBefore = other->revertBefore;
        }
    }
    XSelectInput(display, window, kEvents | kKeyEvents);
    XSetInputFocus(display, window, RevertToParent, CurrentTime);
    XSync(display, False);
    // Before the first key, which may begin a composed character.
    getInputContext();
}

void X11Frame::giveKeyboardBack()
{
    if (windowGone)
        return;
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    XSelectInput(display, window, kEvents);
    if (hasKeyboard()) {
        XWindowAttributes attributes;
        const bool isWindow = keyboardBefore != None && keyboardBefore != PointerRoot;
        const bool canTake = !isWindow
            || (XGetWindowAttributes(display, keyboardBefore, &attributes)
                && attributes.map_state == IsViewable);
        XSetInputFocus(display, canTake ? keyboardBefore : hostWindow, revertBefore, CurrentTime);
    }
    XSync(display, False);
}

IPlatformTextEdit* X11Frame::createPlatformTextEdit(IPlatformTextEditCallback* textEdit)
{
    return isAlive() ? new X11TextEdit(*this, textEdit) : nullptr;
}

IPlatformOptionMenu* X11Frame::createPlatformOptionMenu()
{
    return isAlive() ? new X11OptionMenu(*this) : nullptr;
}

bool X11Frame::runFileDialog(const FileDialogRequest& request, const FilesChosen& done)
{
    if (!isAlive() || dialog)
        return false;
    pressed = 0;
    dialog = owned(new X11FileDialog(*this, request, done));
    if (!dialog->openNext())
        reportNoFileDialog(request);
    return dialog != nullptr;
}

void X11Frame::cancelFileDialog()
{
    dialog = nullptr;
}

void X11Frame::reportNoFileDialog(const FileDialogRequest& request)
{
    cancelFileDialog();
    showMessage("Files are chosen with the desktop's portal, zenity or kdialog,\n"
                "and none of them answers.\n"
                "Install the program zenity to load and save files.",
                request.title);
}

std::unique_ptr<X11Message> X11Frame::ask(const std::string& text, const std::string& caption,
                                          const std::vector<std::string>& labels)
{
    return std::make_unique<X11Message>(*connection, window, text, caption, labels);
}

Window X11Frame::getTopLevelWindow() const
{
    const X11ErrorGuard guard(connection->getDisplay());
    return topLevelOf(connection->getDisplay(), window);
}

void X11Frame::showMessage(const std::string& text, const std::string& caption)
{
    if (isAlive())
        message = std::make_unique<X11Message>(*connection, window, text, caption);
}

}  // namespace X11
}  // namespace VSTGUI
