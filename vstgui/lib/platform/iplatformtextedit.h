// IPlatformTextEdit under the path by which VSTGUI's users include it.
#pragma once

#include "vstgui/platform/iplatformtextedit.h"
