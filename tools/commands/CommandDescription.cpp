#include "tools/commands/CommandDescription.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace tool {

namespace {

// The words in the braces of "TEXT:{auto,lr,ms}".
std::vector<std::string> choicesOf(const std::string& type)
{
    const std::size_t open = type.find('{');
    const std::size_t close = type.find('}', open);
    std::vector<std::string> choices;
    if (open == std::string::npos || close == std::string::npos)
        return choices;
    std::istringstream words(type.substr(open + 1, close - open - 1));
    for (std::string word; std::getline(words, word, ',');)
        choices.push_back(word);
    return choices;
}

std::string joined(const std::vector<std::string>& words, const std::string& between)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

// "" if the option has no range, else " (1 to 8)"; CLI::Range states it as "INT in [1 - 8]".
std::string rangeOf(const std::string& type)
{
    const std::size_t open = type.find("in [");
    const std::size_t between = type.find(" - ", open);
    const std::size_t close = type.find(']', between);
    if (open == std::string::npos || close == std::string::npos)
        return "";
    const std::string lowest = type.substr(open + 4, between - open - 4);
    return " (" + lowest + " to " + type.substr(between + 3, close - between - 3) + ")";
}

// ".wav" in the text is an ending, "..." is none.
std::vector<std::string> endingsIn(const std::string& text)
{
    const char* letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::vector<std::string> endings;
    for (std::size_t dot = 0; (dot = text.find('.', dot)) != std::string::npos; ++dot) {
        const char before = dot > 0 ? text[dot - 1] : ' ';
        const std::size_t end = std::min(text.find_first_not_of(letters, dot + 1), text.size());
        const std::string ending = text.substr(dot + 1, end - dot - 1);
        if ((before == ' ' || before == '(') && !ending.empty()
            && std::find(endings.begin(), endings.end(), ending) == endings.end())
            endings.push_back(ending);
    }
    return endings;
}

std::string textOf(const CLI::Option& option)
{
    std::string text = option.get_description();
    const std::size_t end = std::min(text.find(". Default:"), text.size());
    text.insert(end, rangeOf(option.get_type_name()));
    if (!option.get_default_str().empty())
        text += ". Default: " + option.get_default_str();
    std::vector<std::string> excluded;
    for (const CLI::Option* other : option.get_excludes())
        excluded.push_back(other->get_name());
    std::sort(excluded.begin(), excluded.end());
    if (!excluded.empty())
        text += ". Not together with " + joined(excluded, " or ");
    return text;
}

OptionDescription describe(const CLI::Option& option)
{
    OptionDescription description;
    for (const std::string& letter : option.get_snames())
        description.names.push_back("-" + letter);
    for (const std::string& name : option.get_lnames())
        description.names.push_back("--" + name);
    description.text = textOf(option);
    description.isRequired = option.get_required();
    description.isRepeatable = option.get_expected_max() > 1;
    if (option.get_type_size_max() == 0)
        return description;

    const std::string whole = option.get_type_name();
    const std::string type = whole.substr(0, whole.find(':'));
    const bool isTyped = type != "TEXT" && !type.empty();
    description.choices = choicesOf(whole);
    description.isFile = type == "FILE" || (option.get_positional() && !isTyped);
    description.isFolder = type == "DIR";
    description.endings = endingsIn(option.get_description());
    if (option.get_positional())
        description.value = option.get_name(true);
    else if (!description.choices.empty())
        description.value = joined(description.choices, "|");
    else
        description.value = type == "FLOAT" || type == "INT" ? "NUMBER" : type;
    return description;
}

}  // namespace

std::string CommandDescription::usage() const
{
    std::string line = path;
    if (!options.empty())
        line += " [OPTIONS]";
    for (const OptionDescription& argument : arguments) {
        const std::string value = argument.value + (argument.isRepeatable ? "..." : "");
        line += " " + (argument.isRequired ? value : "[" + value + "]");
    }
    return line + (commands.empty() ? "" : " COMMAND");
}

CommandDescription describe(const CLI::App& app, const std::string& parents)
{
    CommandDescription description;
    description.name = app.get_name();
    description.path = parents + (parents.empty() ? "" : " ") + app.get_name();
    description.text = app.get_description();
    description.footer = app.get_footer();
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_group().empty())
            continue;
        auto& list = option->get_positional() ? description.arguments : description.options;
        list.push_back(describe(*option));
    }
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        description.commands.push_back(describe(*command, description.path));
    return description;
}

std::string wrapped(const std::string& text, std::size_t width, const std::string& indent)
{
    std::string result;
    std::istringstream paragraphs(text);
    for (std::string paragraph; std::getline(paragraphs, paragraph);) {
        std::istringstream words(paragraph);
        std::string line;
        for (std::string word; words >> word;) {
            if (!line.empty() && indent.size() + line.size() + 1 + word.size() > width) {
                result += indent + line + "\n";
                line.clear();
            }
            line += (line.empty() ? "" : " ") + word;
        }
        result += (line.empty() ? "" : indent + line) + "\n";
    }
    return result;
}

}  // namespace tool
