#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts inside are UTF-8; files may be otherwise.
namespace tandril::platform {

// One character decoded from UTF-8.
struct DecodedCharacter {
    char32_t character = 0;
    std::size_t length = 0;  // bytes taken; 0 when the bytes are not UTF-8
};

// Decodes the character at the start of `bytes`, strictly: no overlong forms, no surrogates,
// nothing beyond U+10FFFF.
DecodedCharacter decodeUtf8(std::string_view bytes);

// Appends a character as UTF-8.
void appendUtf8(std::string& out, char32_t character);

// Whether the text is well-formed UTF-8.
bool isUtf8(std::string_view text);

// How many of the first `most` bytes of a UTF-8 text make whole characters.
std::size_t wholeCharacters(std::string_view text, std::size_t most);

enum class ByteOrder { LittleEndian, BigEndian };

// UTF-8 text of bytes. At the first character that is not well-formed the text ends and `complete`
// is false.
struct DecodedText {
    std::string text;
    bool complete = true;
};
DecodedText utf8FromUtf16(std::string_view bytes, ByteOrder order);

// UTF-16 without a mark. A byte of the text that is not UTF-8 becomes U+FFFD.
std::string utf16FromUtf8(std::string_view text, ByteOrder order);

}  // namespace tandril::platform
