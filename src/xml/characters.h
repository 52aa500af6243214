#pragma once

#include <string_view>

namespace tandril::xml {

// Whether a document may hold the character.
bool isLegal(char32_t character);

// Whether a name may begin with, or contain, the character.
bool isNameStart(char32_t character);
bool isNameCharacter(char32_t character);

// Whether the byte is one of XML's four white-space characters.
constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Whether the text is empty or white space only.
bool isBlankText(std::string_view text);

}  // namespace tandril::xml
