#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tandril::xml {

// Where and why a text is not a well-formed document.
struct Problem {
    std::size_t position;  // byte offset into the text
    std::string reason;    // for people, one line
};

// What the declaration `<?xml ...?>` says. Views into the checked text.
struct Declaration {
    bool present = false;
    std::string_view version;
    std::string_view encoding;    // "" when not given
    std::string_view standalone;  // "" when not given
    std::size_t end = 0;          // offset behind the declaration
};

// An element that stands directly in the root. Views into the checked text.
struct Part {
    std::string_view name;
    std::string_view text;  // with its tags
};

// Names of elements that only some of are of interest at a time; none: all are. They live as long
// as what they are given to.
using PartNames = std::span<const std::string_view>;

// What the check learned on its way through a well-formed text.
struct Facts {
    Declaration declaration;
    // The name of the root element; a view into the checked text.
    std::string_view root;
    // Whether there may be blank text that a parser which looks at no more than the next tag cannot
    // tell to keep or to drop: it is written by references, or a comment, a processing instruction
    // or a CDATA section stands beside it in an element that may hold no other elements.
    bool mayHideBlanks = false;
    // All that stands in the root, in order, when it holds nothing but elements, and the names that
    // were asked for are borne by none but those; otherwise none.
    std::vector<Part> parts;
};

// Elements may nest this deep, far beyond any real document, so that no hostile one can exhaust
// the stack of code that walks it.
inline constexpr std::size_t maximumDepth = 2000;

// Checks that `text` (UTF-8) is a well-formed XML 1.0 document: one root element and no text beside
// it, matching tags, unique attributes, the five predefined entities only, legal characters and
// names. A document type declaration is refused. Namespaces are not interpreted. The parser that
// builds the tree forgives most of this, so everything from outside passes here first. Linear in
// the size of the text. Returns nothing when the text is well-formed; `facts` is filled then, its
// parts only when names are given.
std::optional<Problem> checkWellFormed(std::string_view text, Facts& facts, PartNames names = {});

// Reads the declaration at the very start of a text that need not be well-formed otherwise.
// Returns nothing when there is none or it is malformed.
std::optional<Declaration> readDeclaration(std::string_view text);

}  // namespace tandril::xml
