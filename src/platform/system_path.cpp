#include "platform/system_path.h"

#include "platform/ascii.h"

namespace tandril::platform {
namespace {

constexpr char separator = '\\';

}  // namespace

bool isPlainFileName(std::string_view name) {
    constexpr std::string_view forbidden("\\/\0", 3);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(forbidden) == std::string_view::npos;
}

std::optional<std::vector<std::string>> systemPathParts(std::string_view path) {
    if (foldAscii(path.substr(0, 2)) != "c:") return std::nullopt;
    path.remove_prefix(2);
    if (!path.empty() && path.front() != separator) return std::nullopt;
    if (!path.empty() && path.back() == separator) path.remove_suffix(1);

    std::vector<std::string> parts;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view part = path.substr(0, path.find(separator));
        if (!isPlainFileName(part)) return std::nullopt;
        parts.emplace_back(part);
        path.remove_prefix(part.size());
    }
    return parts;
}

std::string describeFileType(std::string_view path) {
    const std::string_view name = path.substr(path.rfind(separator) + 1);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 == name.size()) return "File";
    return upperAscii(name.substr(dot + 1)) + " File";
}

}  // namespace tandril::platform
