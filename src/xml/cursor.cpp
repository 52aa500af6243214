#include "xml/cursor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/unicode.h"
#include "xml/characters.h"

namespace tandril::xml {
namespace {

int digitOf(char c, bool hexadecimal) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (hexadecimal && c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (hexadecimal && c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

}  // namespace

void Cursor::fail(std::string reason) const {
    throw Stop{Problem{std::min(position_, text_.size()), std::move(reason)}};
}

void Cursor::legalCharacter() {
    const platform::DecodedCharacter decoded = platform::decodeUtf8(rest());
    if (decoded.length == 0) {
        fail("a byte is not UTF-8");
    }
    if (!isLegal(decoded.character)) {
        fail("a character is not allowed");
    }
    position_ += decoded.length;
}

void Cursor::legalUntil(std::size_t end) {
    while (position_ < end) {
        switch (textClasses[currentByte()]) {
            case Plain:
            case Special:
                ++position_;
                break;
            case MultiByte:
                legalCharacter();
                break;
            case Illegal:
                fail("a character is not allowed");
        }
    }
}

void Cursor::restOfName(std::size_t start) {
    if (position_ == start && (atEnd() || !isNameStart(platform::decodeUtf8(rest()).character))) {
        fail("a name is expected");
    }
    while (!atEnd()) {
        const ByteClass kind = nameClasses[currentByte()];
        if (kind == Plain) {
            ++position_;
            continue;
        }
        const platform::DecodedCharacter decoded = platform::decodeUtf8(rest());
        if (decoded.length == 0) {
            fail("a byte is not UTF-8");
        }
        if (kind != MultiByte || !isNameCharacter(decoded.character)) {
            break;
        }
        position_ += decoded.length;
    }
}

char32_t Cursor::reference() {
    advance(1);
    if (!atEnd() && current() == '#') {
        advance(1);
        return characterReference();
    }
    static constexpr std::array<std::pair<std::string_view, char32_t>, 5> known{
        {{"amp;", U'&'}, {"lt;", U'<'}, {"gt;", U'>'}, {"quot;", U'"'}, {"apos;", U'\''}}};
    for (const auto& [entity, character] : known) {
        if (startsWith(entity)) {
            advance(entity.size());
            return character;
        }
    }
    fail("an entity is not known");
}

char32_t Cursor::characterReference() {
    const bool hexadecimal = !atEnd() && current() == 'x';
    if (hexadecimal) {
        advance(1);
    }
    const std::size_t start = position();
    char32_t character = 0;
    while (!atEnd() && current() != ';') {
        const int digit = digitOf(current(), hexadecimal);
        if (digit < 0 || character > 0x10FFFF) {
            fail("a character reference is malformed");
        }
        character = character * (hexadecimal ? 16U : 10U) + static_cast<char32_t>(digit);
        advance(1);
    }
    if (atEnd() || position() == start || !isLegal(character)) {
        fail("a character reference is malformed");
    }
    advance(1);
    return character;
}

std::string_view Cursor::quoted() {
    if (atEnd() || (current() != '"' && current() != '\'')) {
        fail("a quoted value is expected");
    }
    const char quote = current();
    const std::size_t start = ++position_;
    const std::size_t end = text_.find(quote, start);
    if (end == std::string_view::npos) {
        fail("a quoted value is not closed");
    }
    position_ = end + 1;
    return text_.substr(start, end - start);
}

}  // namespace tandril::xml
