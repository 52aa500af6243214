#pragma once

#include <string_view>

namespace tandril::xml {

// Whether a document may hold the character.
bool isLegal(char32_t character);

// Whether a name may begin with, or contain, the character.
bool isNameStart(char32_t character);
bool isNameCharacter(char32_t character);

// Whether the byte, or the character, is one of XML's four white-space characters.
constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
constexpr bool isBlank(char32_t c) {
    return c == U' ' || c == U'\t' || c == U'\n' || c == U'\r';
}

// Whether the byte is one of A to Z and a to z, or of 0 to 9.
constexpr bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Whether the text is empty or white space only.
bool isBlankText(std::string_view text);

}  // namespace tandril::xml
