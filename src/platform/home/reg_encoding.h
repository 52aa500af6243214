#pragma once

#include <string>
#include <string_view>

#include "platform/unicode.h"

// The encodings of registry files. Only well-formed text passes, so that nothing is lost on the
// way there and back.
namespace tandril::platform {

enum class RegEncoding { Utf8, Utf8WithMark, Utf16Le };

// The encoding that the byte order mark at the beginning names; UTF-8 without one.
RegEncoding detectEncoding(std::string_view bytes);

// UTF-8 text of the bytes, mark left out, as far as it is well-formed.
DecodedText decodeText(std::string_view bytes, RegEncoding encoding);

// The bytes, mark included, of well-formed UTF-8 text.
std::string encodeText(std::string_view text, RegEncoding encoding);

}  // namespace tandril::platform
