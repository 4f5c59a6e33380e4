// A window with an instance's editor in it, and a mouse that moves there without a hand: its events
// are sent to the window that the editor has put into this one, whatever else is on the screen.
#pragma once

#include "NativePlugin.h"

class EditorWindow {
public:
    // Throws HostError where there is no display, or the plug-in shows nothing.
    explicit EditorWindow(host::NativePlugin& plugin);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    // Takes the size that the plug-in has asked for, if it has.
    void follow();
    int width() const { return currentWidth; }

    enum class Act { Move, Press, Release, WheelUp, WheelDown };
    // Coordinates of the editor.
    void send(Act act, int x, int y);

private:
    // The system's share.
    void open(int width, int height);  // leaves `window` null where there is no display
    void resize(int width, int height);
    void close();

    host::NativePlugin& plugin;
    void* window = nullptr;
    int currentWidth = 0;
    bool held = false;  // the left button
};
