#include "xml/well_formed.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_set>
#include <utility>
#include <vector>

#include "xml/characters.h"
#include "xml/cursor.h"

namespace tandril::xml {
namespace {

// Walks over a document and stops at the first thing that a document may not have.
class Scanner {
  public:
    Scanner(std::string_view text, Facts& facts, PartNames names)
        : cursor_(text), facts_(facts), names_(names), hasParts_(!names.empty()) {
        for (const std::string_view name : names_) {
            lengths_ |= lengthBit(name);
        }
    }

    void document() {
        facts_.declaration = scanDeclaration(cursor_);
        prolog();
        content();
        epilog();
    }

  private:
    void prolog() {
        miscellaneous();
        if (cursor_.atEnd()) {
            cursor_.fail("there is no root element");
        }
        if (cursor_.current() != '<') {
            cursor_.fail("there is text beside the root element");
        }
        if (cursor_.startsWith("<!DOCTYPE")) {
            cursor_.fail("a document type declaration is not accepted");
        }
    }

    void epilog() {
        miscellaneous();
        if (!cursor_.atEnd()) {
            cursor_.fail("there is something behind the root element");
        }
    }

    void miscellaneous() {
        while (true) {
            cursor_.skipBlanks();
            if (cursor_.startsWith("<!--")) {
                comment();
            } else if (cursor_.startsWith("<?")) {
                instruction();
            } else {
                return;
            }
        }
    }

    // The root element with all that it holds.
    void content() {
        facts_.root = startTag();
        while (!open_.empty()) {
            inRoot();
        }
        if (!hasParts_) {
            facts_.parts.clear();
        }
    }

    // The next thing that stands directly in the root, or its end.
    void inRoot() {
        cursor_.skipBlanks();
        if (!isAtStartTag()) {
            hasParts_ = hasParts_ && cursor_.startsWith("</");
            inElement();
            return;
        }
        const std::size_t start = cursor_.position();
        const std::string_view name = startTag();
        while (open_.size() > 1) {
            inElement();
        }
        if (hasParts_) {
            facts_.parts.push_back({name, cursor_.from(start)});
        }
    }

    bool isAtStartTag() const {
        return !cursor_.atEnd() && cursor_.current() == '<' && cursor_.next() != '/' &&
               cursor_.next() != '!' && cursor_.next() != '?';
    }

    // Text, and the tag or other markup behind it.
    void inElement() {
        characterData();
        if (cursor_.atEnd()) {
            cursor_.fail("an element is not closed");
        }
        switch (cursor_.next()) {
            case '/':
                endTag();
                break;
            case '!':
            case '?':
                innerMarkup();
                break;
            default:
                startTag();
        }
    }

    void innerMarkup() {
        isMarkupLast_ = true;
        if (cursor_.startsWith("<!--")) {
            comment();
        } else if (cursor_.startsWith("<![CDATA[")) {
            cdata();
        } else if (cursor_.startsWith("<?")) {
            instruction();
        } else {
            startTag();
        }
    }

    // Text and references up to the character that ends them, or the end of all. `plainLength`
    // tells how many ordinary bytes come next, at least; what means something to a text or a value
    // is left to it.
    template <class PlainLength, class PassSpecial>
    void charactersUntil(char last, PlainLength plainLength, PassSpecial passSpecial) {
        while (true) {
            cursor_.advance(plainLength(cursor_.rest()));
            if (cursor_.atEnd()) {
                return;
            }
            switch (textClasses[cursor_.currentByte()]) {
                case Plain:
                    cursor_.advance(1);
                    break;
                case MultiByte:
                    cursor_.legalCharacter();
                    break;
                case Illegal:
                    cursor_.fail("a character is not allowed");
                case Special:
                    if (cursor_.current() == last) {
                        return;
                    }
                    passSpecial();
                    break;
            }
        }
    }

    void characterData() {
        const std::size_t start = cursor_.position();
        bool hasReference = false;
        charactersUntil('<', plainTextLength, [&] { specialInText(start, hasReference); });
    }

    void specialInText(std::size_t start, bool& hasReference) {
        if (cursor_.current() == '&') {
            // Only the first is looked at, so that the check stays linear.
            const bool isFirstAmongBlanks =
                !std::exchange(hasReference, true) && isBlankText(cursor_.from(start));
            const bool isBlankReference = isBlank(cursor_.reference());
            facts_.mayHideBlanks |= isFirstAmongBlanks && isBlankReference;
            return;
        }
        if (cursor_.startsWith("]]>")) {
            cursor_.fail("\"]]>\" stands in text");
        }
        cursor_.advance(1);
    }

    // Returns the name of the element.
    std::string_view startTag() {
        isMarkupLast_ = false;
        cursor_.require('<', "an element is expected");
        const std::string_view tag = cursor_.name();
        if ((lengths_ & lengthBit(tag)) != 0 && open_.size() != 1) {
            hasParts_ = hasParts_ && std::find(names_.begin(), names_.end(), tag) == names_.end();
        }
        attributes_.clear();
        while (true) {
            const bool separated = cursor_.skipBlanks();
            if (cursor_.atEnd()) {
                cursor_.fail("a tag is not closed");
            }
            if (cursor_.current() == '>') {
                cursor_.advance(1);
                if (open_.size() >= maximumDepth) {
                    cursor_.fail("elements are nested too deeply");
                }
                open_.push_back(tag);
                return tag;
            }
            if (cursor_.current() == '/') {
                cursor_.require("/>", "a tag is not closed");
                return tag;
            }
            if (!separated) {
                cursor_.fail("a blank is missing before an attribute");
            }
            attribute();
        }
    }

    // Tells most names apart from those of parts at a glance.
    static std::uint64_t lengthBit(std::string_view name) {
        return std::uint64_t{1} << (name.size() % 64);
    }

    void attribute() {
        const std::string_view key = cursor_.name();
        if (isRepeated(key)) {
            cursor_.fail("an attribute occurs twice");
        }
        attributes_.push_back(key);
        cursor_.skipBlanks();
        cursor_.require('=', "an attribute has no value");
        cursor_.skipBlanks();
        attributeValue();
    }

    // Few names are compared one by one; very many go into a set, so that the check stays linear.
    bool isRepeated(std::string_view key) {
        constexpr std::size_t few = 16;
        if (attributes_.size() < few) {
            return std::find(attributes_.begin(), attributes_.end(), key) != attributes_.end();
        }
        if (attributes_.size() == few) {
            attributeSet_ = {attributes_.begin(), attributes_.end()};
        }
        return !attributeSet_.insert(key).second;
    }

    void attributeValue() {
        if (cursor_.atEnd() || (cursor_.current() != '"' && cursor_.current() != '\'')) {
            cursor_.fail("an attribute value is not quoted");
        }
        const char quote = cursor_.current();
        cursor_.advance(1);
        charactersUntil(
            quote, [quote](std::string_view rest) { return plainValueLength(rest, quote); },
            [this] { specialInValue(); });
        if (cursor_.atEnd()) {
            cursor_.fail("an attribute value is not closed");
        }
        cursor_.advance(1);
    }

    void specialInValue() {
        if (cursor_.current() == '<') {
            cursor_.fail("\"<\" stands in an attribute value");
        }
        if (cursor_.current() == '&') {
            cursor_.reference();
            return;
        }
        cursor_.advance(1);
    }

    void endTag() {
        facts_.mayHideBlanks |= isMarkupLast_;
        isMarkupLast_ = false;
        cursor_.advance(2);
        const std::string_view& tag = open_.back();
        if (!cursor_.startsWith(tag)) {
            cursor_.fail("a closing tag does not match");
        }
        cursor_.advance(tag.size());
        cursor_.skipBlanks();
        cursor_.require('>', "a closing tag does not match");
        open_.pop_back();
    }

    void comment() {
        cursor_.advance(4);
        const std::size_t end = cursor_.find("--");
        if (end == std::string_view::npos) {
            cursor_.fail("a comment is not closed");
        }
        cursor_.legalUntil(end);
        cursor_.require("-->", "\"--\" stands in a comment");
    }

    void cdata() {
        cursor_.advance(9);
        const std::size_t end = cursor_.find("]]>");
        if (end == std::string_view::npos) {
            cursor_.fail("a CDATA section is not closed");
        }
        cursor_.legalUntil(end);
        cursor_.advance(3);
    }

    void instruction() {
        cursor_.advance(2);
        const std::string_view target = cursor_.name();
        if (isReservedTarget(target)) {
            cursor_.fail("a processing instruction is named xml");
        }
        const std::size_t end = cursor_.find("?>");
        if (end == std::string_view::npos) {
            cursor_.fail("a processing instruction is not closed");
        }
        if (cursor_.position() != end && !isBlank(cursor_.current())) {
            cursor_.fail("a blank is missing in a processing instruction");
        }
        cursor_.legalUntil(end);
        cursor_.advance(2);
    }

    static bool isReservedTarget(std::string_view target) {
        const auto lower = [](char c) { return static_cast<char>(c | 0x20); };
        return target.size() == 3 && lower(target[0]) == 'x' && lower(target[1]) == 'm' &&
               lower(target[2]) == 'l';
    }

    Cursor cursor_;
    Facts& facts_;
    PartNames names_;
    std::uint64_t lengths_ = 0;                 // of the names
    bool hasParts_;                             // as far as is known
    bool isMarkupLast_ = false;                 // other markup was the last to come, not a tag
    std::vector<std::string_view> open_;        // names of the elements around the position
    std::vector<std::string_view> attributes_;  // of the tag being read
    std::unordered_set<std::string_view> attributeSet_;  // the same, when there are many
};

}  // namespace

std::optional<Problem> checkWellFormed(std::string_view text, Facts& facts, PartNames names) {
    facts = Facts();
    try {
        Scanner(text, facts, names).document();
    } catch (const Stop& stop) {
        return stop.problem;
    }
    return std::nullopt;
}

}  // namespace tandril::xml
