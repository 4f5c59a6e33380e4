#include "vstgui/platform/win32/win32gdiplus.h"

namespace VSTGUI {

namespace {

// User-interface thread only.
int sessions = 0;
ULONG_PTR token = 0;

}  // namespace

GdiplusSession::GdiplusSession()
{
    if (sessions++ > 0)
        return;
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok)
        token = 0;
}

GdiplusSession::~GdiplusSession()
{
    if (--sessions > 0 || !token)
        return;
    Gdiplus::GdiplusShutdown(token);
    token = 0;
}

}  // namespace VSTGUI
