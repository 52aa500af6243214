#pragma once

#include <memory>
#include <vector>

#include "cli/command.h"

namespace tandril::cli {

// A new object of each command, in the order in which --help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

}  // namespace tandril::cli
