// The class factory of a library, which has one processor and one controller.
#pragma once

#include "public.sdk/source/main/pluginfactory.h"

// Creates a processor or a controller; null if memory runs out.
using CreateFunction = Steinberg::FUnknown* (*)(void* context);

// A factory of these two, with one reference for the caller.
Steinberg::CPluginFactory* createFactory(CreateFunction makeProcessor,
                                         CreateFunction makeController);

// The factory of the VST 2 library, with one more reference for the caller; created by the first
// call and destroyed with the library.
Steinberg::IPluginFactory* getFactory();
