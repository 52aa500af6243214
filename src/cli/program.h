#pragma once

#include "cli/command.h"

namespace tandril::cli {

// The whole program but its process: parses the arguments (argv[0] is the program's name), runs
// the command that they name and returns the exit status.
int runProgram(int argc, const char* const* argv, const Streams& streams);

}  // namespace tandril::cli
