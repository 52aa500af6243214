#pragma once

#include <string>
#include <string_view>

// Letter case of the names that machines give: only the letters A to Z have one, whatever the
// locale, so that the bytes of UTF-8 text are left alone.
namespace tandril::platform {

inline std::string foldAscii(std::string_view text) {
    std::string folded(text);
    for (char& c : folded) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return folded;
}

inline std::string upperAscii(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return upper;
}

}  // namespace tandril::platform
