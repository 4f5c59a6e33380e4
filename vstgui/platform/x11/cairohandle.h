// CairoHandle: a unique owner of a cairo object.
#pragma once

#include <cairo.h>
#include <memory>

namespace VSTGUI {

struct CairoRelease {
    void operator()(cairo_t* c) const { cairo_destroy(c); }
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
    void operator()(cairo_scaled_font_t* f) const { cairo_scaled_font_destroy(f); }
};

template <class T>
using CairoHandle = std::unique_ptr<T, CairoRelease>;

}  // namespace VSTGUI
