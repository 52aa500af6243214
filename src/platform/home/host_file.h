#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

// Files by their path on this machine, which is also how faults name them. Each platform has its
// own way to replace a file safely.
namespace tandril::platform {

// Any other reason than a missing file is for the reading to report.
bool isHostFileMissing(const std::string& path);

// Throws Fault.
std::string readHostFile(const std::string& path);

// Replaces the file as a whole (see FileSystem::replace). Throws Fault.
void replaceHostFile(const std::string& path, std::string_view bytes, Durability durability);

}  // namespace tandril::platform
