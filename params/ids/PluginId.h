// The plug-in's id in VST 2 hosts, which store it in projects and presets: it never changes.
#pragma once

#include <cstdint>

constexpr std::int32_t kVst2Id = 'Z' << 24 | 't' << 16 | '4' << 8 | '6';
