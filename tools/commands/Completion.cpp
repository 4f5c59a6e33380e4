#include "tools/commands/Completion.h"

#include "params/ParameterTable.h"
#include "tools/banks/PresetName.h"

#include <algorithm>

namespace tool {

namespace {

using Strings = std::vector<std::string>;

// Commands at every level, the program first.
std::vector<const CommandDescription*> allOf(const CommandDescription& program)
{
    std::vector<const CommandDescription*> all{&program};
    for (const CommandDescription& command : program.commands)
        for (const CommandDescription* inner : allOf(command))
            all.push_back(inner);
    return all;
}

// "preset list" of "zkrt46 preset list".
std::string pathBelow(const CommandDescription& program, const CommandDescription& command)
{
    return command.path.substr(std::min(command.path.size(), program.path.size() + 1));
}

std::string joined(const Strings& words, const std::string& between = " ")
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

Strings namesOf(const std::vector<CommandDescription>& commands)
{
    Strings names;
    for (const CommandDescription& command : commands)
        names.push_back(command.name);
    return names;
}

// The titles of all parameters, and what --set takes for both channels of one.
Strings parameterTitles()
{
    Steinberg::Vst::ParameterContainer parameters;
    addParameters(parameters);
    Strings titles;
    // Not the latency, which comes last and cannot be set.
    for (int id = 0; id < static_cast<int>(kPresetParamCount); ++id) {
        const char16_t* const title = parameters.getParameterByIndex(id)->getInfo().title;
        titles.emplace_back(title, title + std::char_traits<char16_t>::length(title));
    }
    Strings both;
    for (const std::string& title : titles) {
        const std::size_t letter = title.find_last_not_of('2');
        std::string right = title, name = title;
        right[letter] = 'R';
        name.erase(letter, 1);
        if (title[letter] == 'L' && std::count(titles.begin(), titles.end(), right) > 0)
            both.push_back(name);
    }
    titles.insert(titles.end(), both.begin(), both.end());
    return titles;
}

bool takesTitle(const OptionDescription& option)
{
    return option.value == "TITLE=VALUE" || option.value == "TITLE";
}

// The first sentence or clause, for a place in single quotes: `quote` stands for such a quote in
// the text, and a backslash goes before each of the characters in `marked`.
std::string summary(const std::string& text, const std::string& quote, const std::string& marked)
{
    std::string result;
    const std::size_t end = std::min({text.find(". "), text.find("; "), text.size()});
    for (const char c : text.substr(0, end)) {
        if (marked.find(c) != std::string::npos)
            result += '\\';
        result += c == '\'' ? quote : std::string(1, c);
    }
    return result;
}

// --- bash ---

// The command that completes a value; empty for one that is typed.
std::string bashValue(const OptionDescription& option)
{
    if (takesTitle(option))
        return "_zkrt46_titles '" + std::string(option.value == "TITLE" ? "" : "=") + "'";
    if (!option.choices.empty())
        return "_zkrt46_words '" + joined(option.choices) + "'";
    if (option.isFolder)
        return "_zkrt46_files /";
    if (option.isFile)
        return "_zkrt46_files" + std::string(option.endings.empty() ? "" : " ")
            + joined(option.endings);
    return ":";
}

std::string bashScript(const CommandDescription& program, const Strings& titles)
{
    std::string commands, values, words;
    for (const CommandDescription* command : allOf(program)) {
        const std::string path = pathBelow(program, *command);
        Strings names = namesOf(command->commands);
        for (const std::string& name : names)
            commands += (commands.empty() ? "\"" : " | \"") + path + " " + name + "\"";
        Strings options;
        for (const OptionDescription& option : command->options) {
            options.insert(options.end(), option.names.begin(), option.names.end());
            if (option.value.empty())
                continue;
            Strings patterns;
            for (const std::string& name : option.names)
                patterns.push_back("\"" + path + " " + name + "\"");
            values += "    " + joined(patterns, " | ") + ")\n        " + bashValue(option)
                + "\n        return\n        ;;\n";
        }
        words += "    \"" + path + "\")\n        case $word in\n        -*) _zkrt46_words '"
            + joined(options) + "' ;;\n";
        if (!names.empty())
            words += "        *) _zkrt46_words '" + joined(names) + "' ;;\n";
        if (!command->arguments.empty()) {
            // The arguments' places are not counted: files for any of them are offered.
            OptionDescription argument = command->arguments.front();
            for (const OptionDescription& other : command->arguments)
                if (other.endings != argument.endings)
                    argument.endings.clear();
            words += "        *) " + bashValue(argument) + " ;;\n";
        }
        words += "        esac\n        ;;\n";
    }
    return R"(# Completion of zkrt46 for bash.

_zkrt46_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word")
}

# _zkrt46_titles SUFFIX
_zkrt46_titles() {
    [ -z "$1" ] || compopt -o nospace 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -S "$1" -W ')"
        + joined(titles) + R"(' -- "$word")
}

# _zkrt46_files [ENDING...]: folders, and files with one of the endings; no file ends in a slash.
_zkrt46_files() {
    local ending name=${word//\\/}
    name=${name#[\"\']}
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(
        if [ $# -eq 0 ]; then
            compgen -f -- "$name"
        else
            compgen -d -- "$name"
            for ending; do
                compgen -f -X "!*.$ending" -- "$name"
            done
        fi
    )
}

_zkrt46() {
    local word option=${COMP_WORDS[COMP_CWORD - 1]} command=
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$command $word" in
        )"
        + commands + R"()
            command=${command:+$command }$word
            ;;
        esac
    done
    word=${COMP_WORDS[COMP_CWORD]}
    # A value behind "=" is typed.
    [ "$option" != = ] && [ "$word" != = ] || return
    case "$command $option" in
)" + values
        + "    esac\n    case $command in\n" + words
        + "    esac\n}\n\ncomplete -F _zkrt46 zkrt46\n";
}

// --- zsh ---

std::string zshSummary(const std::string& text)
{
    return summary(text, "'\\''", "[]:\\");
}

std::string zshValue(const OptionDescription& option)
{
    const std::string label = ":" + joined({option.value}, "") + ":";
    if (takesTitle(option))
        return label + "_zkrt46_titles" + (option.value == "TITLE" ? "" : " =");
    if (!option.choices.empty())
        return label + "(" + joined(option.choices) + ")";
    if (option.isFolder)
        return label + "_files -/";
    if (option.isFile)
        return label + "_files"
            + (option.endings.empty() ? "" : " -g \"*.(" + joined(option.endings, "|") + ")(-.)\"");
    return label;
}

std::string zshFunction(const CommandDescription& command)
{
    std::string name = "_" + command.path;
    std::replace(name.begin(), name.end(), ' ', '_');
    std::string text = name
        + "() {\n    local curcontext=$curcontext line state\n"
          "    _arguments -C";
    for (const OptionDescription& option : command.options) {
        const std::string names = option.names.size() == 1
            ? "'" + std::string(option.isRepeatable ? "*" : "") + option.names[0]
            : "'(" + joined(option.names) + ")'{" + joined(option.names, ",") + "}'";
        text += " \\\n        " + names + "[" + zshSummary(option.text) + "]"
            + (option.value.empty() ? "" : zshValue(option)) + "'";
    }
    int place = 0;
    for (const OptionDescription& argument : command.arguments) {
        ++place;
        text += " \\\n        '" + (argument.isRepeatable ? "*" : std::to_string(place))
            + zshValue(argument) + "'";
    }
    if (command.commands.empty())
        return text + "\n}\n\n";
    text += " \\\n        '1:command:->command' '*::argument:->arguments'\n"
            "    case $state in\n    command)\n        local -a commands=(\n";
    for (const CommandDescription& inner : command.commands)
        text += "            '" + inner.name + ":" + zshSummary(inner.text) + "'\n";
    text += "        )\n        _describe command commands\n        ;;\n    arguments)\n"
            "        (( $+functions["
        + name + "_$line[1]] )) && " + name + "_$line[1]\n        ;;\n    esac\n}\n\n";
    for (const CommandDescription& inner : command.commands)
        text += zshFunction(inner);
    return text;
}

std::string zshScript(const CommandDescription& program, const Strings& titles)
{
    return "#compdef zkrt46\n# Completion of zkrt46 for zsh.\n\n"
           "# _zkrt46_titles [SUFFIX]\n_zkrt46_titles() {\n    compadd -S \"${1- }\" -- "
        + joined(titles) + "\n}\n\n" + zshFunction(program)
        + "if [ \"$funcstack[1]\" = _zkrt46 ]; then\n    _zkrt46 \"$@\"\nelse\n"
          "    compdef _zkrt46 zkrt46\nfi\n";
}

// --- fish ---

std::string fishSummary(const std::string& text)
{
    return summary(text, "\\'", "\\");
}

// The arguments of `complete` for a value.
std::string fishValue(const OptionDescription& option, const Strings& titles)
{
    if (takesTitle(option))
        return " -x -a '" + joined(titles, option.value == "TITLE" ? " " : "= ")
            + (option.value == "TITLE" ? "'" : "='");
    if (!option.choices.empty())
        return " -x -a '" + joined(option.choices) + "'";
    if (option.isFolder)
        return " -x -a '(__fish_complete_directories)'";
    if (option.isFile)
        return option.endings.empty() ? " -r -F"
                                      : " -x -a '(__zkrt46_files " + joined(option.endings) + ")'";
    return " -x";
}

std::string fishScript(const CommandDescription& program, const Strings& titles)
{
    std::string commands, lines;
    for (const CommandDescription* command : allOf(program)) {
        const std::string path = pathBelow(program, *command);
        const std::string head = "complete -c zkrt46 -n '__zkrt46_at "
            + (path.empty() ? std::string("\"\"") : path) + "'";
        for (const CommandDescription& inner : command->commands) {
            commands += " '" + path + " " + inner.name + "'";
            lines += head + " -a " + inner.name + " -d '" + fishSummary(inner.text) + "'\n";
        }
        for (const OptionDescription& option : command->options) {
            lines += head;
            for (const std::string& name : option.names)
                lines += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
            lines += (option.value.empty() ? "" : fishValue(option, titles)) + " -d '"
                + fishSummary(option.text) + "'\n";
        }
        for (const OptionDescription& argument : command->arguments)
            if (argument.isFile || takesTitle(argument))
                lines += head + fishValue(argument, titles) + "\n";
    }
    return R"(# Completion of zkrt46 for fish.

# Whether the line has exactly these commands.
function __zkrt46_at
    set -l at ''
    for word in (commandline -opc)[2..-1]
        switch "$at $word"
            case)"
        + commands + R"(
                set at (string trim -- "$at $word")
        end
    end
    test "$at" = "$argv"
end

# Folders, and files with one of the endings.
function __zkrt46_files
    complete -C "__fish_command_without_completions "(commandline -ct) |
        string match -r -- '^.*(?:/|\.(?:'(string join '|' $argv)'))$'
end

complete -c zkrt46 -f
)" + lines;
}

}  // namespace

std::string completionScript(const std::string& shell, const CommandDescription& program)
{
    const Strings titles = parameterTitles();
    return shell == "bash" ? bashScript(program, titles)
        : shell == "zsh"   ? zshScript(program, titles)
                           : fishScript(program, titles);
}

}  // namespace tool
