// All switch classes.
#pragma once

#include "vstgui/lib/controls/crockerswitch.h"
#include "vstgui/lib/controls/cverticalswitch.h"
