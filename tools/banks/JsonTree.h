// JSON as a tree that keeps what common JSON libraries drop: numbers as written, and duplicate
// keys.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct JsonValue {
    enum class Type { Null, Boolean, Number, String, Array, Object };
    Type type = Type::Null;
    std::string text;               // of a string; of a number as it was written
    std::vector<std::string> keys;  // of an object, in order
    std::vector<JsonValue> items;   // of an array, or an object's values

    bool isObject() const { return type == Type::Object; }
    // The first value of this key in an object; null without one.
    const JsonValue* find(const std::string& key) const;
};

// "a string", for messages.
const char* typeName(const JsonValue& value);

// Throws ToolError with `name`, line and column if the text is no JSON, or is nested more deeply or
// has more values than any bank.
JsonValue parseJson(const std::string& text, const std::string& name);

// The text in quotation marks, escaped. Bytes that are not UTF-8 are replaced by U+FFFD.
std::string jsonQuoted(const std::string& text);

}  // namespace tool
