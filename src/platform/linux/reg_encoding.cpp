#include "platform/linux/reg_encoding.h"

#include <cstdint>

namespace tandril::platform {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char32_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

// Length of a well-formed character at the beginning of the text, 0 when there is none. Refuses
// what has a shorter form, surrogates and what lies beyond Unicode.
std::size_t characterLength(std::string_view text) {
    const char32_t lead = byteAt(text, 0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, i) & 0xC0) != 0x80) return 0;
    }
    const char32_t second = byteAt(text, 1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool beyond = lead == 0xF4 && second >= 0x90;
    return overlong || surrogate || beyond ? 0 : length;
}

char32_t characterValue(std::string_view character) {
    if (character.size() == 1) return byteAt(character, 0);
    char32_t value = byteAt(character, 0) & (0x7Fu >> character.size());
    for (std::size_t i = 1; i < character.size(); ++i) {
        value = (value << 6) | (byteAt(character, i) & 0x3F);
    }
    return value;
}

void appendUtf8(std::string& out, char32_t value) {
    if (value < 0x80) {
        out += static_cast<char>(value);
        return;
    }
    const int extra = value < 0x800 ? 1 : value < 0x10000 ? 2 : 3;
    const char32_t lead = (0xFF00u >> (extra + 1)) & 0xFFu;
    out += static_cast<char>(lead | (value >> (6 * extra)));
    for (int i = extra - 1; i >= 0; --i) {
        out += static_cast<char>(0x80 | ((value >> (6 * i)) & 0x3F));
    }
}

void appendUnit(std::string& out, char32_t unit) {
    out += static_cast<char>(unit & 0xFF);
    out += static_cast<char>(unit >> 8);
}

DecodedText decodeUtf8(std::string_view bytes) {
    std::size_t end = 0;
    while (end < bytes.size()) {
        const std::size_t length = characterLength(bytes.substr(end));
        if (length == 0) return {std::string(bytes.substr(0, end)), false};
        end += length;
    }
    return {std::string(bytes), true};
}

DecodedText decodeUtf16(std::string_view bytes) {
    DecodedText decoded;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t value = byteAt(bytes, i) | (byteAt(bytes, i + 1) << 8);
        if (isHighSurrogate(value) && i + 3 < bytes.size()) {
            const char32_t low = byteAt(bytes, i + 2) | (byteAt(bytes, i + 3) << 8);
            if (isLowSurrogate(low)) {
                value = 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        if (isHighSurrogate(value) || isLowSurrogate(value)) {
            decoded.complete = false;
            return decoded;
        }
        appendUtf8(decoded.text, value);
    }
    decoded.complete = bytes.size() % 2 == 0;
    return decoded;
}

}  // namespace

RegEncoding detectEncoding(std::string_view bytes) {
    if (bytes.starts_with(kUtf16Mark)) return RegEncoding::Utf16Le;
    return bytes.starts_with(kUtf8Mark) ? RegEncoding::Utf8WithMark : RegEncoding::Utf8;
}

DecodedText decodeText(std::string_view bytes, RegEncoding encoding) {
    if (encoding == RegEncoding::Utf16Le) return decodeUtf16(bytes.substr(kUtf16Mark.size()));
    if (encoding == RegEncoding::Utf8WithMark) bytes.remove_prefix(kUtf8Mark.size());
    return decodeUtf8(bytes);
}

std::string encodeText(std::string_view text, RegEncoding encoding) {
    if (encoding == RegEncoding::Utf16Le) return std::string(kUtf16Mark) + utf16FromUtf8(text);
    const bool mark = encoding == RegEncoding::Utf8WithMark;
    return std::string(mark ? kUtf8Mark : "").append(text);
}

std::optional<std::string> utf8FromUtf16(std::string_view bytes) {
    DecodedText decoded = decodeUtf16(bytes);
    if (!decoded.complete) return std::nullopt;
    return std::move(decoded.text);
}

std::string utf16FromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0) {
            appendUnit(bytes, kReplacement);
            text.remove_prefix(1);
            continue;
        }
        const char32_t value = characterValue(text.substr(0, length));
        if (value >= 0x10000) {
            appendUnit(bytes, 0xD800 + ((value - 0x10000) >> 10));
            appendUnit(bytes, 0xDC00 + ((value - 0x10000) & 0x3FF));
        } else {
            appendUnit(bytes, value);
        }
        text.remove_prefix(length);
    }
    return bytes;
}

bool isUtf8(std::string_view text) {
    return decodeUtf8(text).complete;
}

}  // namespace tandril::platform
