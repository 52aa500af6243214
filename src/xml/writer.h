#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "xml/document.h"

namespace tandril::xml {

// Appends the node with all below it as XML text. Nothing is indented or broken into lines, and
// characters that a parser would change (carriage returns, tabs in attributes) become references,
// so that reading the text gives the same tree.
void write(std::string& out, Node node);

// Appends an attribute as it stands in a tag, with the blank in front of it.
void writeAttribute(std::string& out, std::string_view name, std::string_view value);

// The same in pieces: whenever enough has been appended, `take` takes it and leaves `out` empty.
// The last piece stays in `out`.
using Take = std::function<void(std::string& out)>;
void write(std::string& out, Node node, const Take& take);
// An element in pieces, with markup behind all that it holds.
void write(std::string& out, Node element, Markup appended, const Take& take);

// The whole text without some nodes below it and all below those. They stand in document order,
// none below another one.
void write(std::string& out, Node node, std::span<const Node> leftOut);

}  // namespace tandril::xml
