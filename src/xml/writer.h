#pragma once

#include <functional>
#include <span>
#include <string>

#include "xml/document.h"

namespace tandril::xml {

// Appends the node with all below it as XML text. Nothing is indented or broken into lines, and
// characters that a parser would change (carriage returns, tabs in attributes) become references,
// so that reading the text gives the same tree.
void write(std::string& out, Node node);

// The same in pieces: whenever enough has been appended, `take` takes it and leaves `out` empty.
// The last piece stays in `out`.
void write(std::string& out, Node node, const std::function<void(std::string& out)>& take);

// The whole text without some nodes below it and all below those. They stand in document order,
// none below another one.
void write(std::string& out, Node node, std::span<const Node> leftOut);

}  // namespace tandril::xml
