#pragma once

#include <functional>
#include <string>

#include "xml/document.h"

namespace tandril::xml {

// Appends the node with all below it as XML text. Nothing is indented or broken into lines, and
// characters that a parser would change (carriage returns, tabs in attributes) become references,
// so that reading the text gives the same tree.
void write(std::string& out, Node node);

// The same without the nodes below it that `isLeftOut` names, and all below those.
void write(std::string& out, Node node, const std::function<bool(Node)>& isLeftOut);

}  // namespace tandril::xml
