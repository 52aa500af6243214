#pragma once

#include <iosfwd>
#include <string>

#include "cli/parser.h"

namespace tandril::cli {

// Where a command reads from and writes to.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

// The exit statuses of every command: done; what was asked for failed, or its answer could not be
// written; it was asked for in a wrong way, and nothing was done.
constexpr int exitSuccess = 0;
constexpr int exitFault = 1;
constexpr int exitMisuse = 2;

// One command of the program. A new one is a class of its own, in a file pair of its own, and a
// line in allCommands().
class Command {
  public:
    virtual ~Command() = default;

    // The word on the command line, and one line about it for --help.
    virtual std::string name() const = 0;
    virtual std::string summary() const = 0;

    // Describes the options and arguments to the parser, which stores them in this object.
    virtual void define(Parser& parser) = 0;

    // Runs the command after the parser has stored its arguments. Returns the exit status. A
    // std::exception that leaves it is shown to the user and is a fault.
    virtual int run(const Streams& streams) = 0;
};

}  // namespace tandril::cli
