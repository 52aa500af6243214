#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Rules for the system's own paths, shared by the file systems that map them elsewhere.
namespace tandril::platform {

// The parts of a path below its drive: "C:\a\b" has "a" and "b", "C:" and "C:\" have none. One
// backslash at the end is ignored. Nothing when the path does not lie on drive "C:" (in any case),
// or when a part might lead out of its folder: an empty one, ".", "..", one with a slash or a NUL.
std::optional<std::vector<std::string>> systemPathParts(std::string_view path);

// Whether the name, put behind a folder, names something directly in that folder.
bool isPlainFileName(std::string_view name);

// What a shell without further knowledge calls a file of this name: "MDB File" for "parts.mdb",
// "File" for a name without an extension.
std::string describeFileType(std::string_view path);

}  // namespace tandril::platform
