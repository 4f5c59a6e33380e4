// What the command line says about each command: the source of --help, of the manual page and of
// the shells' completion.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

// About all commands.
constexpr const char* kPluginText =
    "The plug-in is the library that --plugin names, else that of the environment variable "
    "ZKRT46_PLUGIN, else ZKRT46.so beside this program or in ../lib/vst. It is a VST 2 library for "
    "Linux (.so) or, through Wine, for Windows (.dll).";
constexpr const char* kExitText =
    "Exit codes: 0 on success; 1 where check finds faults, bank diff differences, latency a delay "
    "other than the reported one, or render or edit an input that ends early; 2 on errors, with a "
    "message.";

struct OptionDescription {
    std::vector<std::string> names;    // "-o", "--output"; empty for an argument without a name
    std::string value;                 // "FILE", "16|24|32f"; empty for a flag
    std::string text;                  // with range, default, and the options that exclude it
    std::vector<std::string> choices;  // the possible values, if they are few
    std::vector<std::string> endings;  // of the files it takes, such as "wav"; empty: any
    bool isFile = false;
    bool isFolder = false;
    bool isRequired = false;
    bool isRepeatable = false;

    bool isNamed() const { return !names.empty(); }
};

struct CommandDescription {
    std::string name;  // "zkrt46", "render"
    std::string path;  // "zkrt46 preset list"
    std::string text;
    std::string footer;
    std::vector<OptionDescription> arguments;  // in their order
    std::vector<OptionDescription> options;
    std::vector<CommandDescription> commands;

    // "zkrt46 render [OPTIONS] IN OUT"
    std::string usage() const;
};

// The command with all below it, without hidden options. An option takes a file if its type is
// FILE, and so does an argument without a type; the files' endings are those that the text names.
// It takes a folder if its type is DIR. Choices are those of CLI::IsMember or of a type written as
// {a,b,c}.
CommandDescription describe(const CLI::App& app, const std::string& parents = "");

// The paragraphs of the text in lines of at most `width` characters, where words are shorter; each
// line begins with `indent`.
std::string wrapped(const std::string& text, std::size_t width, const std::string& indent = "");

}  // namespace tool
