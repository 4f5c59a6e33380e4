#include "tools/commands/CommandDescription.h"

#include <algorithm>
#include <cctype>
#include <regex>
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
    std::smatch found;
    const std::regex range(R"(in \[(\S+) - (\S+)\])");
    return std::regex_search(type, found, range) ? " (" + found.str(1) + " to " + found.str(2) + ")"
                                                 : "";
}

// ".wav" in the text is an ending, "..." is none.
std::vector<std::string> endingsIn(const std::string& text)
{
    std::vector<std::string> endings;
    const std::regex ending(R"((^|[^\w./])\.([a-z][a-z0-9]+))");
    for (std::sregex_iterator at(text.begin(), text.end(), ending), end; at != end; ++at)
        if (std::find(endings.begin(), endings.end(), at->str(2)) == endings.end())
            endings.push_back(at->str(2));
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
