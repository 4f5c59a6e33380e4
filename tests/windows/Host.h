// A VST 2 host with the built library, a window for its editor, and a user who works in it.
#pragma once

#include "HostWindow.h"
#include "ParameterIds.h"
#include "SharedLibrary.h"
#include "vst2interface.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// The user's actions, in the order of a script. Two clicks on one place are never taken for a
// double click.
class User {
public:
    void moveTo(Place where) { hands::movePointer(where); }
    void press(Place where, hands::Button which = hands::Button::Left);
    void release(hands::Button which = hands::Button::Left) { hands::button(which, false); }
    void click(Place where, hands::Button which = hands::Button::Left);
    void doubleClick(Place where);
    void drag(Place from, int dx, int dy);
    void wheel(Place where, bool up);
    void tap(hands::Key which);
    // With the pointer where it is to act already.
    void holdingControl(const std::function<void()>& action);
    void type(const std::string& text) { hands::type(text); }
    void pause(int milliseconds);
    // False after half a minute.
    bool waitFor(const std::function<bool()>& condition);
};

class Host {
public:
    // The editor's left upper corner will be there.
    explicit Host(Place corner = {20, 10});
    // Closes what is open.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // What the library says when it is asked for the editor's size.
    int toldWidth();
    void openEditor();
    // The window goes after the editor, or before it.
    void closeEditor(bool windowFirst = false);
    bool editorIsOpen() const { return window != nullptr; }

    float value(unsigned id) { return effect->getParameter(effect, static_cast<VstInt32>(id)); }
    void automate(unsigned id, double value);
    std::string programName();
    // What the editor told since the last question ("begin 5", "change 5", "end 5"), equal ones in
    // a row once.
    std::vector<std::string> heard();

    Place at(double x, double y) const;
    // A point of the column at the right end.
    Place panel(double x, double y) const { return at(width - 89 + x, y); }
    VSTGUI::Pixels picture() const { return screenshot(corner, width, height); }

    // Lets the user act while all hosts' idle calls go on, and some time longer.
    static void user(const std::function<void(User&)>& script);
    static void idleFor(int milliseconds);
    // Whether it holds within half a minute.
    static bool soon(const std::function<bool()>& condition);

    AEffect* effect;
    int width = 0, height = 0;
    int resizes = 0;  // calls of sizeWindow
    std::unique_ptr<HostWindow> window;
    // Of the loop that gives idle calls; it stands still while a menu or dialog has one of its own.
    static inline std::atomic<int> turns{0};

private:
    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt);
    VstIntPtr answer(VstInt32 opcode, VstInt32 index, VstIntPtr value);
    void note(const char* what, VstInt32 index);
    static void idleAll();
    ERect toldRect();

    host::SharedLibrary library;
    const Place corner;
    std::vector<std::string> told;
    const std::thread::id ownThread = std::this_thread::get_id();
};

// A gesture that changed these parameters, as Host::heard tells it.
std::vector<std::string> gesture(unsigned id, const std::vector<unsigned>& changed);
