// What the tests need of a system: a host's window on the screen, and a user's hands on mouse and
// keyboard, whose input takes the whole way through the system.
#pragma once

#include "vstgui/platform/pixels.h"

#include <string>

// A pixel of the screen.
struct Place {
    int x, y;
};

// Without decoration.
class HostWindow {
public:
    HostWindow(Place corner, int width, int height);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // As effEditOpen wants it.
    void* handle() const { return window; }
    void resize(int width, int height);
    // As hosts do that do not ask first.
    void destroy();
    // The same in the midst of whatever the host's thread is doing; from any other one.
    void destroyFromOutside();
    // As hosts have it while their window is in front.
    void takeKeyboard();
    // Key presses that came here since the last question.
    int keysHeard();
    // Of the window that stands in this one; 0 when there is none.
    int childWidth() const;
    // Paints over the window that stands in this one, without its knowing.
    void paintChildOver() const;

private:
    void* window;
};

// From any thread; a colour a pixel, opaque.
VSTGUI::Pixels screenshot(Place corner, int width, int height);

// The host's share of the system's message loop: never waits for long.
void turnMessageLoop();

// The title of the window that has the keyboard, and what a message box there says; always empty
// where the system has no dialogs of its own. And the field there that is waiting for a text.
std::string titleInFront();
std::string messageInFront();
void fillFieldInFront(const std::string& text);

// The colour of paintChildOver.
const VSTGUI::CColor kScribble(255, 0, 255);

// The hands; to be used on another thread than the host's, for menus and dialogs keep that busy.
namespace hands {

enum class Button { Left, Right };
enum class Key { Control, Return, Escape, Tab, Down };

void movePointer(Place where);
void button(Button which, bool down);
void wheel(bool up);
void key(Key which, bool down);
// ASCII.
void type(const std::string& text);

}  // namespace hands
