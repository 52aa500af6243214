#pragma once

#include <filesystem>
#include <string>

namespace tandril::test {

// The whole content of a file; throws when it cannot be read.
std::string readFile(const std::filesystem::path& path);

}  // namespace tandril::test
