#include "xml/well_formed.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>
#include <vector>

#include "xml/characters.h"

namespace tandril::xml {
namespace {

// Classes of bytes, so that the long runs of ordinary text are passed over with one look each.
enum ByteClass : unsigned char {
    Plain,      // an ASCII character without meaning in text
    Special,    // means something in text or in an attribute value
    Illegal,    // a control character
    MultiByte,  // part of a character beyond ASCII
};

constexpr std::array<ByteClass, 256> makeTextClasses() {
    std::array<ByteClass, 256> classes{};
    for (std::size_t i = 0; i < classes.size(); ++i) {
        classes[i] = i >= 0x80 ? MultiByte : (i < 0x20 ? Illegal : Plain);
    }
    for (const unsigned char blank : {'\t', '\n', '\r'}) {
        classes[blank] = Plain;
    }
    for (const unsigned char special : {'<', '&', ']', '"', '\''}) {
        classes[special] = Special;
    }
    return classes;
}

constexpr std::array<ByteClass, 256> makeNameClasses() {
    std::array<ByteClass, 256> classes{};
    for (std::size_t i = 0; i < classes.size(); ++i) {
        const bool letter = (i >= 'A' && i <= 'Z') || (i >= 'a' && i <= 'z');
        const bool other = (i >= '0' && i <= '9') || i == '_' || i == ':' || i == '-' || i == '.';
        classes[i] = i >= 0x80 ? MultiByte : (letter || other ? Plain : Special);
    }
    return classes;
}

constexpr std::array<ByteClass, 256> textClasses = makeTextClasses();
constexpr std::array<ByteClass, 256> nameClasses = makeNameClasses();

// Thrown to end the check; never leaves this file.
struct Stop {
    Problem problem;
};

class Scanner {
  public:
    Scanner(std::string_view text, Facts& facts) : text_(text), facts_(facts) {}

    void document() {
        declaration();
        prolog();
        content();
        epilog();
    }

    void declaration() {
        if (!startsWith("<?xml") || position_ + 5 >= text_.size() ||
            !isBlank(text_[position_ + 5])) {
            return;
        }
        position_ += 5;
        Declaration& found = facts_.declaration;
        found.present = true;
        found.version = pseudoAttribute("version", true);
        requireVersion(found.version);
        found.encoding = pseudoAttribute("encoding", false);
        found.standalone = pseudoAttribute("standalone", false);
        if (!found.standalone.empty() && found.standalone != "yes" && found.standalone != "no") {
            fail("standalone is neither yes nor no");
        }
        skipBlanks();
        require("?>", "the declaration is not closed");
        found.end = position_;
    }

  private:
    [[noreturn]] void fail(std::string reason) const {
        throw Stop{Problem{std::min(position_, text_.size()), std::move(reason)}};
    }

    bool atEnd() const { return position_ >= text_.size(); }
    char current() const { return text_[position_]; }
    unsigned char currentByte() const { return static_cast<unsigned char>(text_[position_]); }
    bool startsWith(std::string_view token) const {
        return text_.compare(position_, token.size(), token) == 0;
    }

    void require(std::string_view token, const char* reason) {
        if (!startsWith(token)) {
            fail(reason);
        }
        position_ += token.size();
    }

    bool skipBlanks() {
        const std::size_t start = position_;
        while (!atEnd() && isBlank(current())) {
            ++position_;
        }
        return position_ != start;
    }

    char32_t legalCharacter() {
        const Decoded decoded = decodeUtf8(text_.substr(position_));
        if (decoded.length == 0) {
            fail("a byte is not UTF-8");
        }
        if (!isLegal(decoded.character)) {
            fail("a character is not allowed");
        }
        position_ += decoded.length;
        return decoded.character;
    }

    std::string_view name() {
        const std::size_t start = position_;
        if (atEnd() || !isNameStart(decodeUtf8(text_.substr(position_)).character)) {
            fail("a name is expected");
        }
        while (!atEnd()) {
            const ByteClass kind = nameClasses[currentByte()];
            if (kind == Plain) {
                ++position_;
            } else if (kind == MultiByte) {
                const Decoded decoded = decodeUtf8(text_.substr(position_));
                if (decoded.length == 0) {
                    fail("a byte is not UTF-8");
                }
                if (!isNameCharacter(decoded.character)) {
                    break;
                }
                position_ += decoded.length;
            } else {
                break;
            }
        }
        return text_.substr(start, position_ - start);
    }

    std::string_view quoted() {
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

    // One of version, encoding and standalone in the declaration; "" when it is not there.
    std::string_view pseudoAttribute(std::string_view which, bool required) {
        const std::size_t start = position_;
        const bool separated = skipBlanks();
        if (!startsWith(which)) {
            if (required) {
                fail("the declaration has no version");
            }
            position_ = start;
            return {};
        }
        if (!separated) {
            fail("a blank is missing in the declaration");
        }
        position_ += which.size();
        skipBlanks();
        require("=", "an equals sign is missing in the declaration");
        skipBlanks();
        const std::string_view value = quoted();
        if (value.empty()) {
            fail("a value in the declaration is empty");
        }
        if (which == "encoding") {
            requireEncodingName(value);
        }
        return value;
    }

    void requireVersion(std::string_view version) const {
        const bool wellShaped = version.size() >= 3 && version.substr(0, 2) == "1." &&
                                std::all_of(version.begin() + 2, version.end(),
                                            [](char c) { return c >= '0' && c <= '9'; });
        if (!wellShaped) {
            fail("the version is not supported");
        }
    }

    void requireEncodingName(std::string_view value) const {
        const auto isLetter = [](char c) {
            return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        };
        const bool wellShaped =
            isLetter(value.front()) && std::all_of(value.begin(), value.end(), [&](char c) {
                return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
            });
        if (!wellShaped) {
            fail("the encoding has no proper name");
        }
    }

    void prolog() {
        miscellaneous();
        if (atEnd()) {
            fail("there is no root element");
        }
        if (current() != '<') {
            fail("there is text beside the root element");
        }
        if (startsWith("<!DOCTYPE")) {
            fail("a document type declaration is not accepted");
        }
    }

    void epilog() {
        miscellaneous();
        if (!atEnd()) {
            fail("there is something behind the root element");
        }
    }

    void miscellaneous() {
        while (true) {
            skipBlanks();
            if (startsWith("<!--")) {
                comment();
            } else if (startsWith("<?")) {
                instruction();
            } else {
                return;
            }
        }
    }

    // The root element with all that it holds.
    void content() {
        startTag();
        while (!open_.empty()) {
            characterData();
            if (atEnd()) {
                fail("an element is not closed");
            }
            if (startsWith("</")) {
                endTag();
            } else if (startsWith("<!--")) {
                facts_.hasInnerMarkup = true;
                comment();
            } else if (startsWith("<![CDATA[")) {
                facts_.hasInnerMarkup = true;
                cdata();
            } else if (startsWith("<?")) {
                facts_.hasInnerMarkup = true;
                instruction();
            } else {
                startTag();
            }
        }
    }

    // Text and references up to the next "<" or the end.
    void characterData() {
        while (!atEnd()) {
            switch (textClasses[currentByte()]) {
                case Plain:
                    ++position_;
                    break;
                case MultiByte:
                    legalCharacter();
                    break;
                case Illegal:
                    fail("a character is not allowed");
                case Special:
                    if (current() == '<') {
                        return;
                    }
                    specialInText();
                    break;
            }
        }
    }

    void specialInText() {
        if (current() == '&') {
            reference();
            return;
        }
        if (startsWith("]]>")) {
            fail("\"]]>\" stands in text");
        }
        ++position_;
    }

    void reference() {
        ++position_;
        if (!atEnd() && current() == '#') {
            ++position_;
            characterReference();
            return;
        }
        static constexpr std::array<std::string_view, 5> known{"amp;", "lt;", "gt;", "quot;",
                                                               "apos;"};
        for (const std::string_view entity : known) {
            if (startsWith(entity)) {
                position_ += entity.size();
                return;
            }
        }
        fail("an entity is not known");
    }

    void characterReference() {
        const bool hexadecimal = !atEnd() && current() == 'x';
        if (hexadecimal) {
            ++position_;
        }
        const std::size_t start = position_;
        char32_t character = 0;
        while (!atEnd() && current() != ';') {
            const int digit = digitOf(current(), hexadecimal);
            if (digit < 0 || character > 0x10FFFF) {
                fail("a character reference is malformed");
            }
            character = character * (hexadecimal ? 16U : 10U) + static_cast<char32_t>(digit);
            ++position_;
        }
        if (atEnd() || position_ == start || !isLegal(character)) {
            fail("a character reference is malformed");
        }
        ++position_;
    }

    static int digitOf(char c, bool hexadecimal) {
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

    void startTag() {
        require("<", "an element is expected");
        const std::string_view tag = name();
        attributes_.clear();
        while (true) {
            const bool separated = skipBlanks();
            if (atEnd()) {
                fail("a tag is not closed");
            }
            if (current() == '>') {
                ++position_;
                if (open_.size() >= maximumDepth) {
                    fail("elements are nested too deeply");
                }
                open_.push_back(tag);
                return;
            }
            if (current() == '/') {
                require("/>", "a tag is not closed");
                return;
            }
            if (!separated) {
                fail("a blank is missing before an attribute");
            }
            attribute();
        }
    }

    void attribute() {
        const std::string_view key = name();
        if (isRepeated(key)) {
            fail("an attribute occurs twice");
        }
        attributes_.push_back(key);
        skipBlanks();
        require("=", "an attribute has no value");
        skipBlanks();
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
        if (atEnd() || (current() != '"' && current() != '\'')) {
            fail("an attribute value is not quoted");
        }
        const char quote = current();
        ++position_;
        while (!atEnd()) {
            switch (textClasses[currentByte()]) {
                case Plain:
                    ++position_;
                    break;
                case MultiByte:
                    legalCharacter();
                    break;
                case Illegal:
                    fail("a character is not allowed");
                case Special:
                    if (current() == quote) {
                        ++position_;
                        return;
                    }
                    specialInValue();
                    break;
            }
        }
        fail("an attribute value is not closed");
    }

    void specialInValue() {
        if (current() == '<') {
            fail("\"<\" stands in an attribute value");
        }
        if (current() == '&') {
            reference();
            return;
        }
        ++position_;
    }

    void endTag() {
        position_ += 2;
        const std::string_view& tag = open_.back();
        if (!startsWith(tag)) {
            fail("a closing tag does not match");
        }
        position_ += tag.size();
        skipBlanks();
        require(">", "a closing tag does not match");
        open_.pop_back();
    }

    void comment() {
        position_ += 4;
        const std::size_t end = text_.find("--", position_);
        if (end == std::string_view::npos) {
            fail("a comment is not closed");
        }
        legalUntil(end);
        require("-->", "\"--\" stands in a comment");
    }

    void cdata() {
        position_ += 9;
        const std::size_t end = text_.find("]]>", position_);
        if (end == std::string_view::npos) {
            fail("a CDATA section is not closed");
        }
        legalUntil(end);
        position_ += 3;
    }

    void instruction() {
        position_ += 2;
        const std::string_view target = name();
        if (isReservedTarget(target)) {
            fail("a processing instruction is named xml");
        }
        const std::size_t end = text_.find("?>", position_);
        if (end == std::string_view::npos) {
            fail("a processing instruction is not closed");
        }
        if (position_ != end && !isBlank(current())) {
            fail("a blank is missing in a processing instruction");
        }
        legalUntil(end);
        position_ += 2;
    }

    static bool isReservedTarget(std::string_view target) {
        const auto lower = [](char c) { return static_cast<char>(c | 0x20); };
        return target.size() == 3 && lower(target[0]) == 'x' && lower(target[1]) == 'm' &&
               lower(target[2]) == 'l';
    }

    void legalUntil(std::size_t end) {
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

    std::string_view text_;
    Facts& facts_;
    std::size_t position_ = 0;
    std::vector<std::string_view> open_;        // names of the elements around the position
    std::vector<std::string_view> attributes_;  // of the tag being read
    std::unordered_set<std::string_view> attributeSet_;  // the same, when there are many
};

}  // namespace

std::optional<Problem> checkWellFormed(std::string_view text, Facts& facts) {
    facts = Facts();
    try {
        Scanner(text, facts).document();
    } catch (const Stop& stop) {
        return stop.problem;
    }
    return std::nullopt;
}

std::optional<Declaration> readDeclaration(std::string_view text) {
    Facts facts;
    try {
        Scanner(text, facts).declaration();
    } catch (const Stop&) {
        return std::nullopt;
    }
    return facts.declaration.present ? std::optional(facts.declaration) : std::nullopt;
}

}  // namespace tandril::xml
