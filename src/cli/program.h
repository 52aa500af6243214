#pragma once

#include <memory>
#include <vector>

#include "cli/command.h"

namespace tandril::cli {

// The parser of the whole program: its options, and those of the commands, which stay where they
// are and take in what is parsed.
std::shared_ptr<Parser> describeProgram(const std::vector<std::unique_ptr<Command>>& commands);

// The whole program but its process: parses the arguments (argv[0] is the program's name), runs
// the command that they name and returns the exit status.
int runProgram(int argc, const char* const* argv, const Streams& streams);

}  // namespace tandril::cli
