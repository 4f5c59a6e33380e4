// All interfaces that a platform implements for the toolkit.
//
// Functions to define, each declared and described in the header named:
//   IPlatformFrame::createNative, IPlatformFrame::getTicks                       iplatformframe.h
//   IPlatformSurface::create                                                   iplatformsurface.h
//   IPlatformBitmap::createFromPng, IPlatformBitmap::createFromResource          iplatformbitmap.h
//   IPlatformFont::create                                                        iplatformfont.h
//   IPlatformTimer::createNative                                                iplatformtimer.h
//
// The files in offscreen/ need the surface only and are the same on all platforms.
//
// All calls come on the thread that opened the frame. Nothing is called, and no system resource is
// held, before the first frame, bitmap, font or timer is made.
#pragma once

#include "vstgui/platform/bitmapresources.h"
#include "vstgui/platform/filedialog.h"
#include "vstgui/platform/iplatformbitmap.h"
#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/iplatformframe.h"
#include "vstgui/platform/iplatformoptionmenu.h"
#include "vstgui/platform/iplatformsurface.h"
#include "vstgui/platform/iplatformtextedit.h"
#include "vstgui/platform/iplatformtimer.h"
