// The classes of a library: the processor and the controller.
#pragma once

#include "public.sdk/source/main/pluginfactory.h"

// Makes a processor or a controller; null where memory ran out.
using CreateFunction = Steinberg::FUnknown* (*)(void* context);

// A factory of these two, with one reference for the caller.
Steinberg::CPluginFactory* createFactory(CreateFunction processor, CreateFunction controller);

// The factory of the classes that the VST 2 entry stands on, with one more reference for the
// caller; made on the first call, kept until the library goes.
Steinberg::IPluginFactory* getFactory();
