#pragma once

#include <filesystem>
#include <optional>

namespace tandril::platform {

// Where what the path names really lies: absolute, and without links on the way. Nothing when there
// is no such thing.
std::optional<std::filesystem::path> realPath(const std::filesystem::path& path);

}  // namespace tandril::platform
