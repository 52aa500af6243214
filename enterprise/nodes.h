#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace tandril::enterprise {

// The child elements, in order. Removing one does not disturb the others.
std::vector<pugi::xml_node> elements(pugi::xml_node parent);

// "" when there is no such attribute, or no node.
std::string attribute(pugi::xml_node node, const char* name);

void setAttribute(pugi::xml_node node, const char* name, const std::string& value);

// The node as text, without indentation.
std::string xmlText(pugi::xml_node node);

}  // namespace tandril::enterprise
