// Builds the tree from the events of the JSON library's parser.
#include "tools/banks/JsonTree.h"

#include "tools/banks/PresetName.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using Json = nlohmann::json;

// A bank has 4 levels and less than 5000 values.
constexpr std::size_t kMaxDepth = 16;
constexpr std::size_t kMaxValues = 20000;
constexpr std::size_t kMaxMessage = 160;

class TreeBuilder {
public:
    explicit TreeBuilder(JsonValue& root) : root(root) { }

    std::string message;
    std::size_t position = 0;  // bytes read up to a syntax error; else 0

    bool null() { return add(JsonValue::Type::Null) != nullptr; }
    bool boolean(bool) { return add(JsonValue::Type::Boolean) != nullptr; }
    bool number_integer(std::int64_t value) { return addText(JsonValue::Type::Number, value); }
    bool number_unsigned(std::uint64_t value) { return addText(JsonValue::Type::Number, value); }
    bool number_float(double, const std::string& written)
    {
        JsonValue* value = add(JsonValue::Type::Number);
        if (value)
            value->text = written;
        return value != nullptr;
    }
    bool string(std::string& text)
    {
        JsonValue* value = add(JsonValue::Type::String);
        if (value)
            value->text = std::move(text);
        return value != nullptr;
    }
    bool binary(std::vector<std::uint8_t>&) { return false; }
    bool key(std::string& text)
    {
        open.back()->keys.push_back(std::move(text));
        return true;
    }
    bool start_object(std::size_t) { return enter(JsonValue::Type::Object); }
    bool start_array(std::size_t) { return enter(JsonValue::Type::Array); }
    bool end_object() { return leave(); }
    bool end_array() { return leave(); }
    bool parse_error(std::size_t at, const std::string&, const Json::exception& error)
    {
        position = at;
        // "[id] parse error at line 1, column 2: what is wrong"
        const std::string whole = error.what();
        const std::size_t colon = whole.find(": ");
        const std::size_t bracket = whole.find("] ");
        message = whole.substr(colon != std::string::npos         ? colon + 2
                                   : bracket != std::string::npos ? bracket + 2
                                                                  : 0);
        return false;
    }

private:
    template <typename Number>
    bool addText(JsonValue::Type type, Number number)
    {
        JsonValue* value = add(type);
        if (value)
            value->text = std::to_string(number);
        return value != nullptr;
    }
    JsonValue* add(JsonValue::Type type)
    {
        if (++values > kMaxValues) {
            message = "there are too many values for a bank";
            return nullptr;
        }
        JsonValue* value = &root;
        if (!open.empty())
            value = &open.back()->items.emplace_back();
        value->type = type;
        return value;
    }
    bool enter(JsonValue::Type type)
    {
        if (open.size() == kMaxDepth) {
            message = "it is nested too deeply for a bank";
            return false;
        }
        JsonValue* value = add(type);
        if (value)
            open.push_back(value);  // remains valid: siblings are added after leave()
        return value != nullptr;
    }
    bool leave()
    {
        open.pop_back();
        return true;
    }

    JsonValue& root;
    std::vector<JsonValue*> open;
    std::size_t values = 0;
};

// "3:14", both counted from 1; columns in bytes.
std::string lineAndColumn(const std::string& text, std::size_t position)
{
    const auto at =
        text.begin() + static_cast<std::ptrdiff_t>(std::min(position, text.size() + 1) - 1);
    const auto line = std::count(text.begin(), at, '\n');
    const std::size_t lineStart =
        line == 0 ? 0 : text.rfind('\n', static_cast<std::size_t>(at - text.begin()) - 1) + 1;
    return std::to_string(line + 1) + ":"
        + std::to_string(static_cast<std::size_t>(at - text.begin()) - lineStart + 1);
}

}  // namespace

const JsonValue* JsonValue::find(const std::string& key) const
{
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found == keys.end() ? nullptr : &items[static_cast<std::size_t>(found - keys.begin())];
}

const char* typeName(const JsonValue& value)
{
    switch (value.type) {
    case JsonValue::Type::Null:
        return "null";
    case JsonValue::Type::Boolean:
        return "true or false";
    case JsonValue::Type::Number:
        return "a number";
    case JsonValue::Type::String:
        return "a string";
    case JsonValue::Type::Array:
        return "a list";
    case JsonValue::Type::Object:
        break;
    }
    return "an object";
}

JsonValue parseJson(const std::string& text, const std::string& name)
{
    JsonValue tree;
    TreeBuilder builder(tree);
    if (Json::sax_parse(text, &builder))
        return tree;
    std::string message = printable(builder.message);
    if (message.size() > kMaxMessage)
        message = message.substr(0, kMaxMessage) + " ...";
    const std::string where =
        builder.position > 0 ? ":" + lineAndColumn(text, builder.position) : "";
    throw ToolError(name + where + ": " + message);
}

std::string jsonQuoted(const std::string& text)
{
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tool
