#include "platform/unicode.h"

#include <algorithm>
#include <array>

namespace tandril::platform {
namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t firstHighSurrogate = 0xD800;
constexpr char32_t firstLowSurrogate = 0xDC00;
constexpr char32_t lastSurrogate = 0xDFFF;
constexpr char32_t firstPair = 0x10000;  // characters from here on are two units of UTF-16
constexpr char32_t lastCharacter = 0x10FFFF;

struct Form {
    unsigned char mask;  // bits of the lead byte that tell the form
    unsigned char lead;  // their value
    std::size_t length;  // bytes of the form
    char32_t smallest;   // smaller ones are overlong
};

constexpr std::array<Form, 3> multiByteForms{{
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
}};

char32_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

bool isSurrogate(char32_t unit) {
    return unit >= firstHighSurrogate && unit <= lastSurrogate;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= firstLowSurrogate && unit <= lastSurrogate;
}

DecodedCharacter decodeMultiByte(std::string_view bytes, const Form& form) {
    if (bytes.size() < form.length) return {};
    char32_t character = byteAt(bytes, 0) & ~char32_t{form.mask};
    for (std::size_t i = 1; i < form.length; ++i) {
        const char32_t byte = byteAt(bytes, i);
        if ((byte & 0xC0U) != 0x80U) return {};
        character = (character << 6U) | (byte & 0x3FU);
    }
    if (character < form.smallest || character > lastCharacter || isSurrogate(character)) {
        return {};
    }
    return {character, form.length};
}

char32_t unitAt(std::string_view bytes, std::size_t index, ByteOrder order) {
    const char32_t first = byteAt(bytes, index);
    const char32_t second = byteAt(bytes, index + 1);
    return order == ByteOrder::LittleEndian ? first | (second << 8U) : (first << 8U) | second;
}

void appendUnit(std::string& out, char32_t unit, ByteOrder order) {
    const auto low = static_cast<char>(unit & 0xFFU);
    const auto high = static_cast<char>((unit >> 8U) & 0xFFU);
    out += order == ByteOrder::LittleEndian ? low : high;
    out += order == ByteOrder::LittleEndian ? high : low;
}

// The character at the start of UTF-16; `length` counts bytes.
DecodedCharacter decodeUtf16(std::string_view bytes, ByteOrder order) {
    if (bytes.size() < 2) return {};
    const char32_t unit = unitAt(bytes, 0, order);
    if (!isSurrogate(unit)) return {unit, 2};
    if (isLowSurrogate(unit) || bytes.size() < 4) return {};
    const char32_t low = unitAt(bytes, 2, order);
    if (!isLowSurrogate(low)) return {};
    return {firstPair + ((unit - firstHighSurrogate) << 10U) + (low - firstLowSurrogate), 4};
}

}  // namespace

DecodedCharacter decodeUtf8(std::string_view bytes) {
    if (bytes.empty()) return {};
    const char32_t lead = byteAt(bytes, 0);
    if (lead < 0x80) return {lead, 1};
    for (const Form& form : multiByteForms) {
        if ((lead & form.mask) == form.lead) return decodeMultiByte(bytes, form);
    }
    return {};
}

void appendUtf8(std::string& out, char32_t character) {
    const auto continuation = [](char32_t bits) {
        return static_cast<char>(0x80U | (bits & 0x3FU));
    };
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0U | (character >> 6U));
        out += continuation(character);
    } else if (character < 0x10000) {
        out += static_cast<char>(0xE0U | (character >> 12U));
        out += continuation(character >> 6U);
        out += continuation(character);
    } else {
        out += static_cast<char>(0xF0U | (character >> 18U));
        out += continuation(character >> 12U);
        out += continuation(character >> 6U);
        out += continuation(character);
    }
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = decodeUtf8(text).length;
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::size_t wholeCharacters(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text.size();
    constexpr std::size_t longest = 4;
    std::size_t length = most;
    while (length > 0 && most - length < longest && (byteAt(text, length) & 0xC0U) == 0x80U) {
        --length;
    }
    return length;
}

DecodedText utf8FromUtf16(std::string_view bytes, ByteOrder order) {
    DecodedText decoded;
    decoded.text.reserve(bytes.size());
    while (!bytes.empty()) {
        const DecodedCharacter next = decodeUtf16(bytes, order);
        if (next.length == 0) {
            decoded.complete = false;
            break;
        }
        appendUtf8(decoded.text, next.character);
        bytes.remove_prefix(next.length);
    }
    return decoded;
}

std::string utf16FromUtf8(std::string_view text, ByteOrder order) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    while (!text.empty()) {
        const DecodedCharacter next = decodeUtf8(text);
        const char32_t character = next.length == 0 ? replacement : next.character;
        if (character >= firstPair) {
            const char32_t rest = character - firstPair;
            appendUnit(bytes, firstHighSurrogate + (rest >> 10U), order);
            appendUnit(bytes, firstLowSurrogate + (rest & 0x3FFU), order);
        } else {
            appendUnit(bytes, character, order);
        }
        text.remove_prefix(std::max<std::size_t>(next.length, 1));
    }
    return bytes;
}

}  // namespace tandril::platform
