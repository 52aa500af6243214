#include "xml/cursor.h"

#include <algorithm>
#include <utility>

#include "platform/unicode.h"
#include "xml/characters.h"

namespace tandril::xml {

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
