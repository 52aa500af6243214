#include "completion.h"

namespace tandril::reference {
namespace {

using Texts = std::vector<std::string>;

// Within single quotes and brackets.
std::string quoted(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '\'') {
            escaped += "'\\''";
        } else if (character == '[' || character == ']' || character == ':') {
            escaped += std::string("\\") + character;
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string actionOf(const std::string& value, const Texts& methods) {
    if (value == "DIR") return "_files -/";
    if (value == "FILE") return "_files";
    if (value != "METHOD") return " ";
    std::string words;
    for (const std::string& method : methods) words += (words.empty() ? "" : " ") + method;
    return "(" + words + ")";
}

std::string specOf(const Option& option) {
    std::string names = option.longName();
    if (option.names.size() > 1) {
        names = "'{" + option.names.front() + ',' + option.longName() + "}'";
    }
    const std::string value =
        option.value.empty() ? "" : ':' + option.value + ':' + actionOf(option.value, {});
    return " \\\n        '" + names + "[" + quoted(option.help) + "]" + value + "'";
}

std::string functionName(const Texts& path) {
    std::string name;
    for (const std::string& word : path) name += "_" + word;
    return name;
}

// One function for each command, its children's first.
std::string functions(const Texts& path, const Command& command, const Texts& methods) {
    std::string text;
    for (const Command& child : command.commands) {
        Texts childPath = path;
        childPath.push_back(child.name);
        text += functions(childPath, child, methods);
    }
    text += functionName(path) + "() {\n";
    std::string specs;
    for (const Option& option : command.options) specs += specOf(option);
    for (const Argument& argument : command.arguments) {
        const std::string where = argument.repeats ? "*" : "";
        specs += " \\\n        '" + where + ":" + argument.name + ":" +
                 actionOf(argument.name, methods) + "'";
    }
    if (command.commands.empty()) return text + "    _arguments" + specs + "\n}\n\n";

    text += "    local curcontext=$curcontext state line\n    typeset -A opt_args\n";
    text += "    _arguments -C" + specs +
            " \\\n        '1:command:->command' '*::argument:->argument'\n";
    text += "    case $state in\n        command)\n            local -a commands=(\n";
    for (const Command& child : command.commands) {
        text += "                '" + child.name + ":" + quoted(child.summary) + "'\n";
    }
    text += "            )\n            _describe command commands ;;\n        argument)\n";
    text += "            (( $+functions[" + functionName(path) + "_$words[1]] )) && " +
            functionName(path) + "_$words[1] ;;\n    esac\n}\n\n";
    return text;
}

}  // namespace

std::string zshCompletion(const Command& program, const Texts& methods) {
    return "#compdef tandril\n# Made from the program's own description of its command line.\n\n" +
           functions({program.name}, program, methods) + "_tandril \"$@\"\n";
}

}  // namespace tandril::reference
