#include "tools/commands/ManualPage.h"

#include "Product.h"

#include <algorithm>

namespace tool {

namespace {

constexpr std::size_t kLineWidth = 78;

struct Entry {
    std::string name, text;
};

const Entry kEnvironment[]{
    {"ZKRT46_PLUGIN", "The plug-in to load without --plugin."},
    {"ZKRT46_BRIDGE",
     "The helper program that loads Windows plug-ins through Wine. Without it, "
     "zkrt46-bridge.exe beside the plug-in or beside this program."},
    {"WINEPREFIX", "Wine's folder. Without it, zkrt46/wine below the user's cache folder."},
    {"XDG_CACHE_HOME", "The user's cache folder. Without it, ~/.cache."},
    {"XDG_DATA_HOME", "The folder of the user's data. Without it, ~/.local/share."},
    {"COLUMNS", "The width of help texts. Without it, that of the terminal, or 80."},
};

const Entry kExamples[]{
    {"zkrt46 render --preset \"Mastering round\" in.wav out.flac",
     "Renders with a preset of the factory bank."},
    {"zkrt46 render --set LFreq=82 --set LGain=+3.5 in.wav out.flac",
     "Renders with a boost at 82 Hz in both channels."},
    {"zkrt46 response --curve \"Air: HShelf=On HFreq=12000 HGain=4\" -o air.png",
     "Draws the response of a shelf."},
    {"zkrt46 preset export Vox -o vox.json", "Writes a preset as JSON."},
    {"zkrt46 params --json LFreqL", "Prints what a parameter can be set to, for other programs."},
};

// Hyphens are minus signs, so that options can be copied from the page.
std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text)
        switch (c) {
        case '\\':
            result += "\\e";
            break;
        case '-':
            result += "\\-";
            break;
        case '"':
            result += "\\(dq";
            break;
        case '\'':
            result += "\\(aq";
            break;
        case '~':
            result += "\\(ti";
            break;
        default:
            result += c;
        }
    return result;
}

// Text for the page, in lines that are no macros.
std::string body(const std::string& text)
{
    std::string lines = wrapped(escaped(text), kLineWidth);
    for (std::size_t at = 0; at < lines.size(); at = lines.find('\n', at) + 1)
        if (lines[at] == '\n')
            lines.replace(at, 1, ".PP\n");
        else if (lines[at] == '.')
            lines.insert(at, "\\&");
    return lines;
}

std::string macro(const std::string& name, const std::string& text)
{
    return "." + name + " \"" + escaped(text) + "\"\n";
}

std::string tagged(const std::string& name, const std::string& text)
{
    return ".TP\n" + macro("B", name) + body(text);
}

std::string optionsOf(const CommandDescription& command)
{
    std::string page;
    for (const OptionDescription& argument : command.arguments)
        page += ".TP\n" + macro("I", argument.value + (argument.isRepeatable ? " ..." : ""))
            + body(argument.text);
    for (const OptionDescription& option : command.options) {
        std::string names;
        for (const std::string& name : option.names)
            names += (names.empty() ? "" : ", ") + name;
        const bool isHelp = names.find("--help") != std::string::npos;
        if (isHelp && command.commands.empty())
            continue;
        page += ".TP\n";
        page += option.value.empty()
            ? macro("B", names)
            : ".BI \"" + escaped(names) + " \" \"" + escaped(option.value) + "\"\n";
        page += body(option.text + (option.isRequired ? ". Required" : ""));
    }
    return page;
}

std::string commandsOf(const CommandDescription& program)
{
    std::string page;
    for (const CommandDescription& command : program.commands)
        page += command.commands.empty()
            ? macro("SS", command.usage()) + body(command.text) + optionsOf(command)
            : commandsOf(command);
    return page;
}

}  // namespace

std::string manualPage(const CommandDescription& program, const std::string& day)
{
    std::string page = ".TH ZKRT46 1 \"" + day + "\" \"ZKR T46 " + product::kVersion
        + "\" \"User commands\"\n.SH NAME\nzkrt46 \\- send audio through the ZKR T46 mastering "
          "equaliser, and measure it\n";
    page += ".SH SYNOPSIS\n.B zkrt46\n.I command\n.RI [ options ]\n.RI [ arguments ]\n";
    page += ".SH DESCRIPTION\n" + body(program.text)
        + ".PP\nSettings are given by the titles and in the units that the plug-in shows.\n.PP\n"
        + body(kPluginText);
    page += ".SH OPTIONS\n" + optionsOf(program);
    page += ".SH COMMANDS\nEach command prints its options with\n.BR \\-\\-help .\n"
        + commandsOf(program);
    page += ".SH EXIT STATUS\n" + body(kExitText);
    page += ".SH ENVIRONMENT\n";
    for (const Entry& variable : kEnvironment)
        page += tagged(variable.name, variable.text);
    page += ".SH FILES\n.TP\n"
        + macro("I", std::string("$XDG_DATA_HOME/") + product::kSettingsFolder)
        + "The user's settings, such as a default bank.\n";
    page += ".SH EXAMPLES\n";
    for (const Entry& example : kExamples)
        page += tagged(example.name, example.text);
    return page + ".SH SEE ALSO\n.BR gnuplot (1),\nwhich draws the pictures.\n";
}

}  // namespace tool
