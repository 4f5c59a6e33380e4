// EditorWindow: a top-level window on an X11 display for a plug-in's editor.
#pragma once

#include "tools/host/NativePlugin.h"

#include "vstgui/platform/pixels.h"

#include <string>

struct _XDisplay;

namespace tool {

// Throws ToolError without a display to open windows on.
void expectDisplay();

class EditorWindow {
public:
    // Opens the editor. Throws ToolError without a display, or when the plug-in has no editor.
    EditorWindow(host::NativePlugin& plugin, const std::string& title);
    // Closes the editor and the window.
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    // Runs the event loop until the user closes the window.
    void run();
    // The window once it is drawn. Throws ToolError if it does not appear as a whole.
    VSTGUI::Pixels picture();

private:
    void applyRequestedSize();
    void resize(int width, int height);
    void idle();
    VSTGUI::Pixels drawn();

    host::NativePlugin& plugin;
    _XDisplay* display;
    unsigned long window = 0;  // 0 once destroyed
    unsigned long deleteMessage = 0;
    int sizesSeen = 0;
};

}  // namespace tool
