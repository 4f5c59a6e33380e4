// ZKR_EXPORT: in front of a function that the library shows to hosts.
#pragma once

#ifdef __ELF__
#define ZKR_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define ZKR_EXPORT extern "C"  // exports.def names what Windows exports
#endif
