#pragma once

#include <string>
#include <vector>

#include "command_model.h"

namespace tandril::reference {

// The name of the manual page of a command: "tandril-serve" for {"tandril", "serve"}.
std::string manualName(const std::vector<std::string>& path);

// The whole manual page, in man's macros, from the page's template: its lines "@NAME@",
// "@SYNOPSIS@" and "@OPTIONS@" are replaced by what the parser knows, and so is "@VERSION@" within
// a line. `path` is the words that lead to the command. Throws std::runtime_error when the template
// lacks one of the lines.
std::string manualPage(const std::string& pageTemplate, const std::vector<std::string>& path,
                       const Command& command, const std::string& version);

}  // namespace tandril::reference
