#pragma once

#include <string>
#include <vector>

namespace tandril::platform {

// Starts a program, by its path or by a name that is looked for as a shell does, in that folder. It
// has a session of its own and no part of this process's files and signals. Returns false when it
// cannot be started.
bool startDetached(std::string program, std::vector<std::string> arguments,
                   const std::string& folder);

}  // namespace tandril::platform
