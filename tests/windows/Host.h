// A VST 2 host with the built library and a window for its editor.
#pragma once

#include "NativePlugin.h"
#include "ParameterIds.h"
#include "User.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

class Host : public host::NativePlugin {
public:
    // The editor's left upper corner will be there.
    explicit Host(Place corner = {20, 10});
    // Closes what is open.
    ~Host() override;

    // What the library says when it is asked for the editor's size.
    int toldWidth();
    void openEditor();
    // The window goes after the editor, or before it.
    void closeEditor(bool windowFirst = false);

    float value(unsigned id) { return parameter(static_cast<VstInt32>(id)); }
    void automate(unsigned id, double value);
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

    int width = 0, height = 0;
    int resizes = 0;  // calls of sizeWindow
    std::unique_ptr<HostWindow> window;
    // Of the loop that gives idle calls; it stands still while a menu or dialog has one of its own.
    static inline std::atomic<int> turns{0};

private:
    VstIntPtr answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                     float opt) override;
    static void idleAll();
    ERect toldRect();

    static inline std::vector<Host*> hosts;
    const Place corner;
    std::vector<std::string> told;
    const std::thread::id ownThread = std::this_thread::get_id();
};

// A gesture that changed this parameter, as Host::heard tells it.
std::vector<std::string> gesture(unsigned id);
