#include "tests/support/HostWindow.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>

using VSTGUI::CColor;
using VSTGUI::Pixels;

namespace {

using Connection = std::unique_ptr<Display, decltype(&XCloseDisplay)>;

Connection connect()
{
    Connection display(XOpenDisplay(nullptr), XCloseDisplay);
    if (!display)
        throw std::runtime_error("no X server to test on");
    return display;
}

Display* hostsDisplay()
{
    static const Connection connection = connect();
    return connection.get();
}

Display* usersDisplay()
{
    static const Connection connection = connect();
    return connection.get();
}

Window asWindow(void* handle)
{
    return static_cast<Window>(reinterpret_cast<uintptr_t>(handle));
}

Window childOf(void* handle)
{
    Window ignored = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (handle)
        XQueryTree(hostsDisplay(), asWindow(handle), &ignored, &ignored, &children, &count);
    const Window child = count > 0 ? children[0] : 0;
    if (children)
        XFree(children);
    return child;
}

void pressKey(KeySym symbol, bool down)
{
    XTestFakeKeyEvent(usersDisplay(), XKeysymToKeycode(usersDisplay(), symbol), down, CurrentTime);
    XSync(usersDisplay(), False);
}

}  // namespace

HostWindow::HostWindow(Place corner, int width, int height) : window(nullptr)
{
    Display* const display = hostsDisplay();
    const Window created = XCreateSimpleWindow(
        display, DefaultRootWindow(display), corner.x, corner.y, static_cast<unsigned>(width),
        static_cast<unsigned>(height), 0, 0, WhitePixel(display, DefaultScreen(display)));
    window = reinterpret_cast<void*>(static_cast<uintptr_t>(created));
    XSelectInput(display, created, KeyPressMask);
    XMapWindow(display, created);
    XSync(display, False);
}

HostWindow::~HostWindow()
{
    destroy();
}

void HostWindow::resize(int width, int height)
{
    XResizeWindow(hostsDisplay(), asWindow(window), static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(hostsDisplay(), False);
}

void HostWindow::destroy()
{
    if (window)
        XDestroyWindow(hostsDisplay(), asWindow(window));
    window = nullptr;
    XSync(hostsDisplay(), False);
}

void HostWindow::destroyFromOutside()
{
    XDestroyWindow(usersDisplay(), asWindow(std::exchange(window, nullptr)));
    XSync(usersDisplay(), False);
}

void HostWindow::takeKeyboard()
{
    XSetInputFocus(hostsDisplay(), asWindow(window), RevertToParent, CurrentTime);
    XSync(hostsDisplay(), False);
}

int HostWindow::keysHeard()
{
    XEvent event;
    int count = 0;
    XSync(hostsDisplay(), False);
    while (XCheckTypedWindowEvent(hostsDisplay(), asWindow(window), KeyPress, &event))
        ++count;
    return count;
}

int HostWindow::childWidth() const
{
    XWindowAttributes attributes{};
    const Window child = childOf(window);
    return child && XGetWindowAttributes(hostsDisplay(), child, &attributes) ? attributes.width : 0;
}

void HostWindow::paintChildOver() const
{
    Display* const display = hostsDisplay();
    const GC context = XCreateGC(display, asWindow(window), 0, nullptr);
    XSetSubwindowMode(display, context, IncludeInferiors);
    XSetForeground(display, context, 0xFF00FF);
    XFillRectangle(display, asWindow(window), context, 0, 0, 4000, 4000);
    XFreeGC(display, context);
    XSync(display, False);
}

Pixels screenshot(Place corner, int width, int height)
{
    const Connection display = connect();
    const std::unique_ptr<XImage, void (*)(XImage*)> image(
        XGetImage(display.get(), DefaultRootWindow(display.get()), corner.x, corner.y,
                  static_cast<unsigned>(width), static_cast<unsigned>(height), AllPlanes, ZPixmap),
        [](XImage* made) {
            if (made)
                XDestroyImage(made);
        });
    Pixels picture(width, height);
    for (int y = 0; image && y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const unsigned long pixel = XGetPixel(image.get(), x, y);
            picture.set(x, y,
                        CColor(static_cast<uint8_t>(pixel >> 16), static_cast<uint8_t>(pixel >> 8),
                               static_cast<uint8_t>(pixel)));
        }
    return picture;
}

void turnMessageLoop()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
}

std::string titleInFront()
{
    return {};
}

std::string messageInFront()
{
    return {};
}

void fillFieldInFront(const std::string&) { }

void setClipboard(const std::string& text)
{
    // Serves the text in the background.
    FILE* const pipe = popen("/usr/bin/xclip -selection clipboard >/dev/null 2>&1", "w");
    fwrite(text.data(), 1, text.size(), pipe);
    if (pclose(pipe) != 0)
        throw std::runtime_error("xclip fails");
}

std::string clipboard()
{
    FILE* const pipe = popen("/usr/bin/timeout 20 /usr/bin/xclip -selection clipboard -o", "r");
    std::string text;
    for (int c = getc(pipe); c != EOF; c = getc(pipe))
        text += static_cast<char>(c);
    pclose(pipe);
    return text;
}

namespace userinput {

void movePointer(Place where)
{
    XTestFakeMotionEvent(usersDisplay(), -1, where.x, where.y, CurrentTime);
    XSync(usersDisplay(), False);
}

void button(Button which, bool down)
{
    XTestFakeButtonEvent(usersDisplay(), which == Button::Left ? 1 : 3, down, CurrentTime);
    XSync(usersDisplay(), False);
}

void wheel(bool up)
{
    for (const bool down : {true, false})
        XTestFakeButtonEvent(usersDisplay(), up ? 4 : 5, down, CurrentTime);
    XSync(usersDisplay(), False);
}

void key(Key which, bool down)
{
    constexpr KeySym kSymbols[] = {XK_Control_L, XK_Return, XK_Escape, XK_Tab, XK_Down, XK_c, XK_v};
    pressKey(kSymbols[static_cast<int>(which)], down);
}

void type(const std::string& text)
{
    for (const char character : text) {
        const bool shifted = character >= 'A' && character <= 'Z';
        // The keysyms of ASCII characters equal the characters.
        const auto symbol = static_cast<KeySym>(static_cast<unsigned char>(character));
        if (shifted)
            pressKey(XK_Shift_L, true);
        pressKey(symbol, true);
        pressKey(symbol, false);
        if (shifted)
            pressKey(XK_Shift_L, false);
    }
}

}  // namespace userinput
