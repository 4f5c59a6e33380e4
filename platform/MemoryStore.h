// A store in memory, private to the object.
#pragma once

#include "platform/SettingsStore.h"

#include <map>

namespace platform {

class MemoryStore : public SettingsStore {
public:
    std::optional<std::vector<std::uint8_t>> read(const char* name) const override
    {
        const auto found = values.find(name);
        if (found == values.end())
            return std::nullopt;
        return found->second;
    }
    void write(const char* name, const std::vector<std::uint8_t>& bytes) override
    {
        values[name] = bytes;
    }
    void remove(const char* name) override { values.erase(name); }
    std::optional<std::string> readText(const char* name) const override
    {
        const auto found = values.find(name);
        if (found == values.end() || found->second.size() > kMaxText)
            return std::nullopt;
        return std::string(found->second.begin(), found->second.end());
    }
    void writeText(const char* name, const std::string& text) override
    {
        values[name] = {text.begin(), text.end()};
    }

    std::map<std::string, std::vector<std::uint8_t>> values;
};

}  // namespace platform
