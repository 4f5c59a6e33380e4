// All button classes.
#pragma once

#include "vstgui/lib/controls/ckickbutton.h"
