#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "xml/byte_runs.h"
#include "xml/characters.h"
#include "xml/well_formed.h"

// What the well-formedness check is made of: a position in the text that moves forward over
// characters, blanks, references, names and quoted values, or stops at the first problem.
namespace tandril::xml {

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

inline constexpr std::array<ByteClass, 256> textClasses = makeTextClasses();
inline constexpr std::array<ByteClass, 256> nameClasses = makeNameClasses();

// Thrown to end the check; caught by the functions of well_formed.h.
struct Stop {
    Problem problem;
};

class Cursor {
  public:
    explicit Cursor(std::string_view text) : text_(text) {}

    [[noreturn]] void fail(std::string reason) const;

    bool atEnd() const { return position_ >= text_.size(); }
    char current() const { return text_[position_]; }
    // The byte behind the current one; 0 at the end.
    char next() const { return position_ + 1 < text_.size() ? text_[position_ + 1] : '\0'; }
    unsigned char currentByte() const { return static_cast<unsigned char>(text_[position_]); }
    std::size_t position() const { return position_; }
    bool startsWith(std::string_view token) const { return rest().starts_with(token); }
    std::size_t find(std::string_view token) const { return text_.find(token, position_); }
    std::string_view from(std::size_t start) const {
        return text_.substr(start, position_ - start);
    }

    std::string_view rest() const { return {text_.data() + position_, text_.size() - position_}; }

    void advance(std::size_t bytes) { position_ += bytes; }
    void moveTo(std::size_t position) { position_ = position; }

    // Passes over the token or stops with the reason.
    void require(std::string_view token, const char* reason) {
        if (!startsWith(token)) {
            fail(reason);
        }
        position_ += token.size();
    }
    void require(char token, const char* reason) {
        if (atEnd() || current() != token) {
            fail(reason);
        }
        ++position_;
    }
    // Passes over white space; returns whether there was any.
    bool skipBlanks() {
        const std::size_t start = position_;
        while (!atEnd() && isBlank(current())) {
            ++position_;
        }
        return position_ != start;
    }
    // Passes over a character that a document may hold.
    void legalCharacter();
    // Passes over such characters up to the position.
    void legalUntil(std::size_t end);
    std::string_view name() {
        const std::size_t start = position_;
        position_ += lettersLength(rest());
        if (position_ == start || atEnd() || nameClasses[currentByte()] != Special) {
            restOfName(start);
        }
        return from(start);
    }
    // Passes over a reference to a character and returns that.
    char32_t reference();
    // A value between single or double quotes, taken as it stands.
    std::string_view quoted();

  private:
    char32_t characterReference();
    // Passes over the rest of a name that starts there.
    void restOfName(std::size_t start);

    std::string_view text_;
    std::size_t position_ = 0;
};

// Reads the declaration at the start of the text, if there is one.
Declaration scanDeclaration(Cursor& cursor);

}  // namespace tandril::xml
