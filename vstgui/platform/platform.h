// Everything that a system must supply to the toolkit, in one place.
//
// Functions to define, each declared and described in the header named:
//   IPlatformFrame::createNative, IPlatformFrame::getTicks                       iplatformframe.h
//   IPlatformSurface::create                                                   iplatformsurface.h
//   IPlatformBitmap::createFromPng, IPlatformBitmap::createFromResource          iplatformbitmap.h
//   IPlatformFont::create                                                        iplatformfont.h
//   IPlatformTimer::createNative                                                iplatformtimer.h
//
// The files in offscreen/ are the toolkit's own and stand on the surface alone.
//
// Everything runs on the one thread that opened the frame. Nothing here is called, and nothing of
// the system is held, before the first frame, bitmap, font or timer is made.
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
