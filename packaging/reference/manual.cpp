#include "manual.h"

#include <stdexcept>
#include <string_view>

namespace tandril::reference {
namespace {

constexpr std::string_view helpOption = "--help";

// What stands for a character that man's macros would make something else of.
std::string_view spellingOf(char character) {
    switch (character) {
        case '\\':
            return "\\e";
        case '-':
            return "\\-";
        case '~':
            return "\\(ti";
        case '\'':
            return "\\(aq";
        case '"':
            return "\\(dq";
        default:
            return {};
    }
}

// A text as it is.
std::string plain(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        const std::string_view spelling = spellingOf(character);
        escaped += spelling.empty() ? std::string_view(&character, 1) : spelling;
    }
    // A full stop in front would begin a macro.
    return escaped.starts_with('.') ? "\\&" + escaped : escaped;
}

std::string bold(std::string_view text) {
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(std::string_view text) {
    return "\\fI" + plain(text) + "\\fR";
}

std::string signatureOf(const Option& option) {
    std::string text;
    for (const std::string& name : option.names) text += (text.empty() ? "" : ", ") + bold(name);
    return option.value.empty() ? text : text + ' ' + italic(option.value);
}

std::string explanationOf(const Option& option) {
    std::string text = plain(option.help);
    if (!option.range.empty()) text += " (" + plain(option.range) + ")";
    if (!option.standard.empty()) text += " (default: " + plain(option.standard) + ")";
    return text;
}

std::string usageOf(const Argument& argument) {
    const std::string name = italic(argument.name) + (argument.repeats ? "..." : "");
    return argument.isRequired ? name : "[" + name + "]";
}

// The words of a command line as far as this command goes, its options without --help.
std::string usageOf(const Command& command) {
    std::string line = bold(command.name);
    for (const Option& option : command.options) {
        if (option.longName() == helpOption) continue;
        line += " [" + bold(option.longName());
        line += option.value.empty() ? "]" : ' ' + italic(option.value) + ']';
    }
    for (const Argument& argument : command.arguments) line += ' ' + usageOf(argument);
    return line;
}

std::string leadOf(const std::vector<std::string>& path) {
    std::string lead;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) lead += bold(path[i]) + ' ';
    return lead;
}

std::string synopsis(const std::vector<std::string>& path, const Command& command) {
    std::string lines;
    const bool isProgram = path.size() == 1;
    if (command.commands.empty() || isProgram) lines = leadOf(path) + usageOf(command);
    if (isProgram) lines += "\n.br\n" + bold(command.name) + ' ' + italic("COMMAND") + " ...";
    if (!isProgram) {
        for (const Command& child : command.commands) {
            if (!lines.empty()) lines += "\n.br\n";
            lines += leadOf(path) + usageOf(command) + ' ' + usageOf(child);
        }
    }
    return ".SH SYNOPSIS\n" + lines + '\n';
}

std::string entry(const std::string& term, const std::string& text) {
    return ".TP\n" + term + '\n' + text + '\n';
}

std::string entries(const Command& command) {
    std::string text;
    for (const Argument& argument : command.arguments) {
        text += entry(usageOf(argument), plain(argument.help));
    }
    for (const Option& option : command.options) {
        text += entry(signatureOf(option), explanationOf(option));
    }
    return text;
}

// The options of the command, and its commands with theirs; those of the program have pages of
// their own.
std::string options(const std::vector<std::string>& path, const Command& command) {
    std::string text = ".SH OPTIONS\n" + entries(command);
    if (!command.commands.empty()) text += ".SH COMMANDS\n";
    for (const Command& child : command.commands) {
        if (path.size() == 1) {
            const std::string page = manualName({path.front(), child.name});
            text += entry(bold(child.name),
                          plain(child.summary) + "; see\n.BR " + plain(page) + " (1)");
        } else {
            text +=
                ".SS " + plain(child.name) + '\n' + plain(child.summary) + ".\n" + entries(child);
        }
    }
    return text;
}

void replaceLine(std::string& page, const std::string& line, const std::string& text) {
    const std::size_t at = page.find('\n' + line + '\n');
    if (at == std::string::npos) throw std::runtime_error("the template has no line " + line);
    page.replace(at + 1, line.size() + 1, text);
}

}  // namespace

std::string manualName(const std::vector<std::string>& path) {
    std::string name;
    for (const std::string& word : path) name += (name.empty() ? "" : "-") + word;
    return name;
}

std::string manualPage(const std::string& pageTemplate, const std::vector<std::string>& path,
                       const Command& command, const std::string& version) {
    std::string page = pageTemplate;
    const std::string versionMark = "@VERSION@";
    if (const std::size_t at = page.find(versionMark); at != std::string::npos) {
        page.replace(at, versionMark.size(), version);
    }
    replaceLine(page, "@NAME@",
                ".SH NAME\n" + plain(manualName(path)) + " \\- " + plain(command.summary) + '\n');
    replaceLine(page, "@SYNOPSIS@", synopsis(path, command));
    replaceLine(page, "@OPTIONS@", options(path, command));
    return page;
}

}  // namespace tandril::reference
