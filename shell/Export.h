// ZKR_EXPORT marks a function that the library exports.
#pragma once

#ifdef __ELF__
#define ZKR_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define ZKR_EXPORT extern "C"  // exports.def names what Windows exports
#endif
