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

}  // namespace

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
    return std::all_of(text.begin(), text.end(), [](char c) { return isBlank(c); });
}

}  // namespace tandril::xml
