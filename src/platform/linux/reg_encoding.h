#pragma once

#include <optional>
#include <string>
#include <string_view>

// Unicode as registry files hold it. Only well-formed text passes, so that nothing is lost on the
// way there and back.
namespace tandril::platform {

enum class RegEncoding { Utf8, Utf8WithMark, Utf16Le };

// The encoding that the byte order mark at the beginning names; UTF-8 without one.
RegEncoding detectEncoding(std::string_view bytes);

// UTF-8 text of the bytes, mark left out. At the first character that is not well-formed the text
// ends and `complete` is false.
struct DecodedText {
    std::string text;
    bool complete = true;
};
DecodedText decodeText(std::string_view bytes, RegEncoding encoding);

// The bytes, mark included, of well-formed UTF-8 text.
std::string encodeText(std::string_view text, RegEncoding encoding);

// UTF-16LE without a mark. Nothing for UTF-16 that is not well-formed; a byte of UTF-8 that is not
// becomes U+FFFD.
std::optional<std::string> utf8FromUtf16(std::string_view bytes);
std::string utf16FromUtf8(std::string_view text);

// Whether the text is well-formed UTF-8.
bool isUtf8(std::string_view text);

}  // namespace tandril::platform
