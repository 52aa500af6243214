#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tandril::xml {

// One character decoded from UTF-8.
struct Decoded {
    char32_t character = 0;
    std::size_t length = 0;  // bytes taken; 0 when the bytes are not UTF-8
};

// Decodes the character at the start of `bytes`, strictly: no overlong forms, no surrogates,
// nothing beyond U+10FFFF.
Decoded decodeUtf8(std::string_view bytes);

// Appends a character as UTF-8.
void appendUtf8(std::string& out, char32_t character);

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
