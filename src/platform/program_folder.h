#pragma once

#include <filesystem>

namespace tandril::platform {

// The folder that the running program lies in; an empty path when the system does not tell.
std::filesystem::path programFolder();

}  // namespace tandril::platform
