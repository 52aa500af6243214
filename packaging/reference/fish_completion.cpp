#include "completion.h"

namespace tandril::reference {
namespace {

using Texts = std::vector<std::string>;

std::string quoted(const std::string& text) {
    std::string escaped = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\') escaped += '\\';
        escaped += character;
    }
    return escaped + "'";
}

std::string joined(const Texts& texts) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : " ") + text;
    return all;
}

// Whether the words so far have come to the command at that path, and to none of its children.
std::string conditionOf(const Texts& path, const Command& command) {
    if (path.size() == 1) return "__fish_use_subcommand";
    std::string condition;
    for (std::size_t i = 1; i < path.size(); ++i) {
        condition += (i > 1 ? "; and " : "") + ("__fish_seen_subcommand_from " + path[i]);
    }
    Texts children;
    for (const Command& child : command.commands) children.push_back(child.name);
    if (!children.empty()) condition += "; and not __fish_seen_subcommand_from " + joined(children);
    return condition;
}

std::string valueOf(const std::string& value) {
    if (value.empty()) return "";
    if (value == "DIR") return " -x -a '(__fish_complete_directories)'";
    return value == "FILE" ? " -r -F" : " -x";
}

void write(const Texts& path, const Command& command, const Texts& methods, std::string& text) {
    const std::string lead = "complete -c tandril -n " + quoted(conditionOf(path, command));
    for (const Option& option : command.options) {
        text += lead;
        for (const std::string& name : option.names) {
            text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        text += valueOf(option.value) + " -d " + quoted(option.help) + '\n';
    }
    for (const Argument& argument : command.arguments) {
        if (argument.name == "FILE") text += lead + " -F\n";
        if (argument.name == "METHOD") text += lead + " -a " + quoted(joined(methods)) + '\n';
    }
    for (const Command& child : command.commands) {
        text += lead + " -a " + child.name + " -d " + quoted(child.summary) + '\n';
        Texts childPath = path;
        childPath.push_back(child.name);
        write(childPath, child, methods, text);
    }
}

}  // namespace

std::string fishCompletion(const Command& program, const Texts& methods) {
    std::string text =
        "# Made from the program's own description of its command line.\n"
        "complete -c tandril -f\n";
    write({program.name}, program, methods, text);
    return text;
}

}  // namespace tandril::reference
