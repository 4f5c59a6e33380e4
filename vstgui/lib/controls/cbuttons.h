// The buttons.
#pragma once

#include "vstgui/lib/controls/ckickbutton.h"
