#include "xml/characters.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tandril::xml {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// What a name may begin with, beyond ASCII.
constexpr std::array<Range, 12> nameStartRanges{{
    {0xC0, 0xD6},
    {0xD8, 0xF6},
    {0xF8, 0x2FF},
    {0x370, 0x37D},
    {0x37F, 0x1FFF},
    {0x200C, 0x200D},
    {0x2070, 0x218F},
    {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF},
    {0xF900, 0xFDCF},
    {0xFDF0, 0xFFFD},
    {0x10000, 0xEFFFF},
}};

constexpr bool isAsciiLetter(char32_t c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

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

Decoded decodeMultiByte(std::string_view bytes, const Form& form) {
    if (bytes.size() < form.length) {
        return {};
    }
    auto character = static_cast<char32_t>(static_cast<unsigned char>(bytes[0]) &
                                           static_cast<unsigned>(~form.mask) & 0x7FU);
    for (std::size_t i = 1; i < form.length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (!isContinuation(byte)) {
            return {};
        }
        character = (character << 6U) | (byte & 0x3FU);
    }
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < form.smallest || character > 0x10FFFF || surrogate) {
        return {};
    }
    return {character, form.length};
}

}  // namespace

Decoded decodeUtf8(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80) {
        return {lead, 1};
    }
    for (const Form& form : multiByteForms) {
        if ((lead & form.mask) == form.lead) {
            return decodeMultiByte(bytes, form);
        }
    }
    return {};
}

void appendUtf8(std::string& out, char32_t c) {
    const auto continuation = [](char32_t bits) {
        return static_cast<char>(0x80U | (bits & 0x3FU));
    };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0U | (c >> 6U));
        out += continuation(c);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0U | (c >> 12U));
        out += continuation(c >> 6U);
        out += continuation(c);
    } else {
        out += static_cast<char>(0xF0U | (c >> 18U));
        out += continuation(c >> 12U);
        out += continuation(c >> 6U);
        out += continuation(c);
    }
}

bool isLegal(char32_t c) {
    if (c < 0x20) {
        return c == '\t' || c == '\n' || c == '\r';
    }
    return c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

bool isNameStart(char32_t c) {
    if (c < 0x80) {
        return isAsciiLetter(c) || c == '_' || c == ':';
    }
    const auto* range = std::find_if(nameStartRanges.begin(), nameStartRanges.end(),
                                     [c](const Range& r) { return c <= r.last; });
    return range != nameStartRanges.end() && c >= range->first;
}

bool isNameCharacter(char32_t c) {
    if (isNameStart(c)) {
        return true;
    }
    return c == '-' || c == '.' || (c >= '0' && c <= '9') || c == 0xB7 ||
           (c >= 0x300 && c <= 0x36F) || (c >= 0x203F && c <= 0x2040);
}

bool isBlankText(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isBlank);
}

}  // namespace tandril::xml
