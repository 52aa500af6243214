#pragma once

#include <string>
#include <vector>

#include "cli/parser.h"

// What manual pages and completions say of the program, read from the very parser that it takes its
// arguments apart with.
namespace tandril::reference {

struct Option {
    std::vector<std::string> names;  // "-h", "--help"; the long one last
    std::string value;               // what stands for its value, "DIR"; "" for a flag
    std::string range;               // "0 - 65535"; "" for any
    std::string standard;            // what it is when it is not given; may be ""
    std::string help;

    const std::string& longName() const { return names.back(); }
};

struct Argument {
    std::string name;
    std::string help;
    bool isRequired = false;
    bool repeats = false;
};

struct Command {
    std::string name;
    std::string summary;
    std::vector<Option> options;
    std::vector<Argument> arguments;
    std::vector<Command> commands;  // one of them has to follow
};

// The parser and all that is below it.
Command describe(const cli::Parser& parser);

}  // namespace tandril::reference
