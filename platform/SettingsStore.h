// Per-user settings, independent of projects: a small store of named values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// Values are replaced atomically: a concurrent reader, in this process or another, gets the old
// value or the new one. An unreadable value is absent; a failed write leaves the old value. Binary
// values survive a loss of power as soon as they are written; texts may not. Names are plain file
// names in ASCII.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    virtual std::optional<std::vector<std::uint8_t>> read(const char* name) const = 0;
    virtual void write(const char* name, const std::vector<std::uint8_t>& bytes) = 0;
    virtual void remove(const char* name) = 0;

    // UTF-8 without a terminator. A text of more than kMaxText bytes is absent.
    virtual std::optional<std::string> readText(const char* name) const = 0;
    virtual void writeText(const char* name, const std::string& text) = 0;

    static constexpr std::size_t kMaxText = 2050;
};

// The store of this user: on Windows a key of the registry, elsewhere a folder under the XDG data
// directory with one file for each value.
SettingsStore& userSettings();

}  // namespace platform
