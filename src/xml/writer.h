#pragma once

#include <span>
#include <string>

#include "xml/document.h"

namespace tandril::xml {

// Appends the node with all below it as XML text. Nothing is indented or broken into lines, and
// characters that a parser would change (carriage returns, tabs in attributes) become references,
// so that reading the text gives the same tree.
void write(std::string& out, Node node);

// The same without some nodes below it and all below those. They stand in document order, none
// below another one.
void write(std::string& out, Node node, std::span<const Node> leftOut);

}  // namespace tandril::xml
