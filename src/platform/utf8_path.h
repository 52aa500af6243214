#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Paths of this machine as texts. The standard library would take the plain characters for those of
// the machine's own code page.
namespace tandril::platform {

inline std::filesystem::path pathFromUtf8(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

inline std::string utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace tandril::platform
