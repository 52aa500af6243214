#include "command_model.h"

#include <CLI/CLI.hpp>
#include <string_view>

namespace tandril::reference {
namespace {

constexpr std::string_view rangeMark = ":INT in [";

// The parser shows "N:INT in [0 - 65535]" for a number that is checked.
void describeValue(std::string_view shown, Option& option) {
    const std::size_t range = shown.find(rangeMark);
    option.value = shown.substr(0, range);
    if (range != std::string_view::npos) {
        const std::size_t begin = range + rangeMark.size();
        option.range = shown.substr(begin, shown.find(']', begin) - begin);
    }
}

Option describeOption(const CLI::Option& from) {
    Option option;
    for (const std::string& name : from.get_snames()) option.names.push_back("-" + name);
    for (const std::string& name : from.get_lnames()) option.names.push_back("--" + name);
    if (from.get_items_expected_max() != 0) describeValue(from.get_type_name(), option);
    option.standard = from.get_default_str();
    option.help = from.get_description();
    return option;
}

Argument describeArgument(const CLI::Option& from) {
    return {from.get_name(true), from.get_description(), from.get_required(),
            from.get_expected_max() >= CLI::detail::expected_max_vector_size};
}

// A command that leaves all the rest of the line alone makes a call of it.
std::vector<Argument> callArguments() {
    return {{"METHOD", "The method to call, in any case", true, false},
            {"ARG", "Its arguments in order, also those that begin with \"-\"", false, true}};
}

}  // namespace

Command describe(const cli::Parser& parser) {
    Command command;
    command.name = parser.get_name();
    command.summary = parser.get_description();
    for (const CLI::Option* option : parser.get_options()) {
        if (option->get_positional()) {
            command.arguments.push_back(describeArgument(*option));
        } else {
            command.options.push_back(describeOption(*option));
        }
    }
    if (parser.get_prefix_command()) command.arguments = callArguments();
    for (const CLI::App* child : parser.get_subcommands(nullptr)) {
        command.commands.push_back(describe(*child));
    }
    return command;
}

}  // namespace tandril::reference
