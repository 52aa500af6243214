#include "enterprise/nodes.h"

#include <sstream>

namespace tandril::enterprise {

std::vector<pugi::xml_node> elements(pugi::xml_node parent) {
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() == pugi::node_element) found.push_back(child);
    }
    return found;
}

std::string attribute(pugi::xml_node node, const char* name) {
    return node.attribute(name).value();
}

void setAttribute(pugi::xml_node node, const char* name, const std::string& value) {
    pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute) attribute = node.append_attribute(name);
    attribute.set_value(value.c_str());
}

std::string xmlText(pugi::xml_node node) {
    std::ostringstream out;
    node.print(out, "", pugi::format_raw | pugi::format_no_declaration);
    return out.str();
}

}  // namespace tandril::enterprise
