#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/file_system.h"

// Whole-file operations on POSIX paths. Each throws Fault with a message that names the file by
// `shown`, which is how its users know it.
namespace tandril::platform {

// Throws the Fault for a failed system call: 'cannot WHAT "SHOWN": cause of `error`'.
[[noreturn]] void throwSystemFault(std::string_view what, std::string_view shown, int error);

// The content of an existing file; devices and pipes are refused, they might block for ever.
std::string readFile(const std::string& path, std::string_view shown);

// Replaces the file through a temporary one in the same folder (see FileSystem::replace). Keeps
// the permissions of the old file, and refuses one that is write-protected.
void replaceFile(const std::string& path, std::string_view shown, const Content& content,
                 Durability durability);

// A file to replace, by the name that the system knows it by and the one that its users do.
struct Replacement {
    std::string path;
    std::string_view shown;
    Content content;
};

// Replaces files durably (see FileSystem::replaceTogether).
void replaceFiles(std::span<const Replacement> files);

// Adds to the end of an existing file (see FileSystem::append).
void appendFile(const std::string& path, std::string_view shown, const Content& content);

}  // namespace tandril::platform
