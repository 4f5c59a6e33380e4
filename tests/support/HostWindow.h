// A host's window on the screen, and synthetic mouse and keyboard input that passes through the
// whole system as a user's does.
#pragma once

#include "vstgui/platform/pixels.h"

#include <string>

// A pixel position on the screen.
struct Place {
    int x, y;
};

// A window without decoration.
class HostWindow {
public:
    HostWindow(Place corner, int width, int height);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // The parent argument of effEditOpen.
    void* handle() const { return window; }
    void resize(int width, int height);
    // Destroys the window without closing the editor first, as some hosts do.
    void destroy();
    // The same from another thread, whatever the host's thread is doing.
    void destroyFromOutside();
    // Gives the window the keyboard focus.
    void takeKeyboard();
    // Key presses that the window got since the previous call.
    int keysHeard();
    // Width of the child window; 0 if there is none.
    int childWidth() const;
    // Paints over the child window without invalidating it.
    void paintChildOver() const;

private:
    void* window;
};

// From any thread; opaque pixels.
VSTGUI::Pixels screenshot(Place corner, int width, int height);

// Processes the host's pending messages; never waits for long.
void turnMessageLoop();

// The title of the window that has the keyboard, the text of a message box there (both empty if the
// system has no dialogs of its own), and setting the text of its edit field.
std::string titleInFront();
std::string messageInFront();
void fillFieldInFront(const std::string& text);

// The clipboard as another program sees it, UTF-8. Where the plug-in serves it, its message loop has
// to run meanwhile.
void setClipboard(const std::string& text);
std::string clipboard();

// The colour that paintChildOver uses.
const VSTGUI::CColor kScribble(255, 0, 255);

// User input; to be called on another thread than the host's, which menus and dialogs block.
namespace userinput {

enum class Button { Left, Right };
enum class Key { Control, Return, Escape, Tab, Down, C, V };

void movePointer(Place where);
void button(Button which, bool down);
void wheel(bool up);
void key(Key which, bool down);
inline void tap(Key which)
{
    key(which, true);
    key(which, false);
}
// ASCII only.
void type(const std::string& text);

}  // namespace userinput
