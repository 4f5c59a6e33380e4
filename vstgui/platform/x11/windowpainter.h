// WindowPainter: copies parts of an image to a window with any visual.
#pragma once

#include "vstgui/lib/crect.h"

#include <X11/Xlib.h>
#include <cairo.h>
#include <vector>

namespace VSTGUI {
namespace X11 {

class WindowPainter {
public:
    // The window outlives the painter.
    WindowPainter(Display* display, Window window, Visual* visual, int depth);
    ~WindowPainter();
    WindowPainter(const WindowPainter&) = delete;
    WindowPainter& operator=(const WindowPainter&) = delete;

    // The image is in cairo's format ARGB32; rectangles are whole pixels inside it.
    void copy(cairo_surface_t* image, const std::vector<CRect>& rects);

private:
    void convertAndCopy(const XImage& source, int x, int y, unsigned int width,
                        unsigned int height);

    Display* display;
    Window window;
    Visual* visual;
    int depth;
    GC context;
};

}  // namespace X11
}  // namespace VSTGUI
