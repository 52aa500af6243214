#pragma once

#include <string>
#include <vector>

#include "command_model.h"

// Completion of the command line, in the language of a shell. A value called DIR is a folder, FILE
// a file, METHOD one of the methods.
namespace tandril::reference {

std::string bashCompletion(const Command& program, const std::vector<std::string>& methods);
std::string zshCompletion(const Command& program, const std::vector<std::string>& methods);
std::string fishCompletion(const Command& program, const std::vector<std::string>& methods);

}  // namespace tandril::reference
