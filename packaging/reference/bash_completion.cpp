#include <set>

#include "completion.h"

namespace tandril::reference {
namespace {

using Texts = std::vector<std::string>;

std::string joined(const Texts& texts, const char* separator) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : separator) + text;
    return all;
}

// What the script is made from. A command is known by the words that lead to it:
// "/removed/restore".
struct Lists {
    Texts paths;                    // of all commands
    std::set<std::string> folders;  // options with a folder as value
    std::set<std::string> others;   // options with another value
    Texts cases;                    // one for each command: what may follow it
};

Texts sortedTexts(const std::set<std::string>& names) {
    return {names.begin(), names.end()};
}

std::string caseOf(const std::string& path, const Command& command, const Texts& inherited,
                   const Texts& methods) {
    Texts words = inherited;
    std::string more;
    for (const Command& child : command.commands) words.push_back(child.name);
    for (const Option& option : command.options) {
        words.insert(words.end(), option.names.begin(), option.names.end());
    }
    for (const Argument& argument : command.arguments) {
        if (argument.name == "FILE") more = "_tandril_paths -f";
        if (argument.name != "METHOD") continue;
        more = "[ -n \"$argument\" ] && words= || words+=' " + joined(methods, " ") + "'";
    }
    return "        '" + path + "')\n            words='" + joined(words, " ") + "'\n" +
           (more.empty() ? "" : "            " + more + "\n") + "            ;;\n";
}

// `inherited` is the options of the commands above, which their children take as well.
void collect(const std::string& path, const Command& command, const Texts& inherited,
             const Texts& methods, Lists& lists) {
    Texts below = inherited;
    for (const Option& option : command.options) {
        if (option.value.empty()) continue;
        (option.value == "DIR" ? lists.folders : lists.others).insert(option.longName());
        below.push_back(option.longName());
    }
    lists.cases.push_back(caseOf(path, command, inherited, methods));
    for (const Command& child : command.commands) {
        const std::string childPath = path + '/' + child.name;
        lists.paths.push_back(childPath);
        collect(childPath, child, below, methods, lists);
    }
}

constexpr const char* head = R"(# bash completion for tandril
# Made from the program's own description of its command line.

# Adds files (-f) or folders (-d) to the replies.
_tandril_paths() {
    compopt -o filenames 2>/dev/null
    local path
    while IFS= read -r path; do
        COMPREPLY+=("$path")
    done < <(compgen "$1" -- "${COMP_WORDS[COMP_CWORD]}")
}

_tandril() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' argument='' words='' reply i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
)";

constexpr const char* tail = R"(    esac
    while IFS= read -r reply; do
        COMPREPLY+=("$reply")
    done < <(compgen -W "$words" -- "$word")
}

complete -F _tandril tandril
)";

}  // namespace

std::string bashCompletion(const Command& program, const Texts& methods) {
    Lists lists;
    collect("", program, {}, methods, lists);
    std::set<std::string> all = lists.folders;
    all.insert(lists.others.begin(), lists.others.end());
    std::string script = head;
    script += "            " + joined(sortedTexts(all), " | ") + ") i=$((i + 1)) ;;\n";
    script += "            -*) ;;\n            *)\n";
    script += "                case $command/${COMP_WORDS[i]} in\n";
    script += "                    " + joined(lists.paths, " | ") + ")\n";
    script += "                        command+=/${COMP_WORDS[i]} ;;\n";
    script += "                    *) argument=${COMP_WORDS[i]} ;;\n";
    script += "                esac ;;\n        esac\n    done\n";
    script += "    case $previous in\n";
    script +=
        "        " + joined(sortedTexts(lists.folders), " | ") + ") _tandril_paths -d; return ;;\n";
    script += "        " + joined(sortedTexts(lists.others), " | ") + ") return ;;\n    esac\n";
    script += "    case $command in\n" + joined(lists.cases, "");
    return script + tail;
}

}  // namespace tandril::reference
