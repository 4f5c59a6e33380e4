// A window with an instance's editor in it, and a mouse that moves there without a hand.
#pragma once

#include "Dice.h"
#include "NativePlugin.h"

#include <memory>
#include <string>

class EditorWindow {
public:
    virtual ~EditorWindow() = default;
    // Takes the size that the plug-in asks for.
    virtual void resize(int width, int height) = 0;
    // Lets the system's events come in, if the window has a queue of its own.
    virtual void turn() = 0;
    // Input that arrives as if from the system; coordinates of the editor.
    virtual void moveMouse(int x, int y) = 0;
    virtual void pressButton(int x, int y, bool down) = 0;
    virtual void turnWheel(int x, int y, bool up) = 0;
};

// Opens a window and the plug-in's editor in it. Throws HostError where there is no display, or the
// plug-in shows nothing. The editor is to be closed with effEditClose before the window goes.
std::unique_ptr<EditorWindow> openEditorWindow(host::NativePlugin& plugin,
                                               const std::string& title);

// The size that the editor of a plug-in wants; throws HostError when it has none.
struct EditorSize {
    int width, height;
};
EditorSize editorSize(host::NativePlugin& plugin);
