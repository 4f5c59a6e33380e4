// The platform's text box, where its users look for it.
#pragma once

#include "vstgui/platform/iplatformtextedit.h"
