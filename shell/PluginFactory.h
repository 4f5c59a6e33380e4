// The library's one class factory.
#pragma once

#include "public.sdk/source/main/pluginfactory.h"

// The factory with one more reference for the caller; made on the first call, kept until the
// library goes.
Steinberg::IPluginFactory* getFactory();
