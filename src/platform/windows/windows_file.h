#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/file_system.h"

// Whole-file operations on Windows paths. Each throws Fault with a message that names the file by
// `shown`, which is how its users know it.
namespace tandril::platform {

// The content of an existing file. Others may have it open, and may go on writing to it.
std::string readFile(const std::wstring& path, std::string_view shown);

// Replaces the file through a temporary one in the same folder (see FileSystem::replace), and
// refuses one that is write-protected.
void replaceFile(const std::wstring& path, std::string_view shown, const Content& content,
                 Durability durability);

// A file to replace, by the name that the system knows it by and the one that its users do.
struct Replacement {
    std::wstring path;
    std::string_view shown;
    Content content;
};

// Replaces files durably (see FileSystem::replaceTogether).
void replaceFiles(std::span<const Replacement> files);

// Adds to the end of an existing file (see FileSystem::append).
void appendFile(const std::wstring& path, std::string_view shown, const Content& content);

// Gives a file a new name in its folder, in place of any other file of that name, and waits until
// that is on the disk.
void renameFile(const std::wstring& from, const std::wstring& to, std::string_view what,
                std::string_view shown);

}  // namespace tandril::platform
