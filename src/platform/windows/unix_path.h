#pragma once

#include <optional>
#include <string>

namespace tandril::platform {

// Under Wine, the path as the system below knows it; nothing on Windows itself.
std::optional<std::string> unixPath(const std::string& path);

}  // namespace tandril::platform
