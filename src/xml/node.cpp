#include "xml/node.h"

#include <algorithm>

#include "xml/characters.h"
#include "xml/writer.h"

namespace tandril::xml {
namespace {

// The node behind `node` in document order inside of `top`.
Node nextNode(Node node, Node top) {
    if (const Node inner = node.first_child()) {
        return inner;
    }
    while (node && node != top) {
        if (const Node next = node.next_sibling()) {
            return next;
        }
        node = node.parent();
    }
    return {};
}

// A name of plain letters and digits; others may be something else than a name to XPath.
bool meansItselfInAQuery(std::string_view name) {
    return !name.empty() && isLetter(name.front()) &&
           std::all_of(name.begin(), name.end(), [](char c) { return isLetter(c) || isDigit(c); });
}

// What a node itself says: a text, a section, or the text that stands first in an element, which
// the parser keeps in the element.
std::string_view ownText(Node node) {
    switch (node.type()) {
        case pugi::node_element:
        case pugi::node_pcdata:
        case pugi::node_cdata:
            return node.value();
        default:
            return {};
    }
}

}  // namespace

Node elementAt(Node parent, std::size_t index) {
    for (const Node element : elements(parent)) {
        if (index-- == 0) {
            return element;
        }
    }
    return {};
}

bool hasElements(Node parent) {
    return static_cast<bool>(elementAt(parent, 0));
}

Node child(Node parent, std::string_view name) {
    for (const Node element : elements(parent)) {
        if (isNamed(element, name)) {
            return element;
        }
    }
    return {};
}

// The library walks its own tree several times as fast as one can from outside.
Node firstElement(Node node, std::string_view name) {
    if (meansItselfInAQuery(name)) {
        return node.select_node(("descendant-or-self::" + std::string(name)).c_str()).node();
    }
    Node current = node;
    while (current && !isNamed(current, name)) {
        current = nextElement(current, node);
    }
    return current;
}

std::vector<Node> elementsIn(Node top, std::string_view name) {
    std::vector<Node> found;
    if (meansItselfInAQuery(name)) {
        pugi::xpath_node_set set =
            top.select_nodes(("descendant-or-self::" + std::string(name) + "/*").c_str());
        set.sort();
        for (const pugi::xpath_node& one : set) {
            found.push_back(one.node());
        }
        return found;
    }
    for (Node element = nextElement(top, top); element; element = nextElement(element, top)) {
        if (isNamed(element.parent(), name)) {
            found.push_back(element);
        }
    }
    return found;
}

Node nextElement(Node node, Node top) {
    do {
        node = nextNode(node, top);
    } while (node && node.type() != pugi::node_element);
    return node;
}

// Most names that are asked for differ in their first letter.
bool isNamed(Node node, std::string_view name) {
    const char* const own = node.name();
    const char first = name.empty() ? '\0' : name.front();
    return *own == first && name == own && node.type() == pugi::node_element;
}

std::string text(Node node) {
    std::string result;
    for (Node current = node; current; current = nextNode(current, node)) {
        result += ownText(current);
    }
    return result;
}

bool setText(Node element, std::string_view value) {
    if (text(element) == value) {
        return false;
    }
    element.remove_children();
    // An empty text node would keep the element from being written as an empty one.
    if (!value.empty() || *element.value() != '\0') {
        element.text().set(value.data(), value.size());
    }
    return true;
}

std::string_view attribute(Node element, const char* name) {
    return element.attribute(name).value();
}

bool setAttribute(Node element, const char* name, std::string_view value) {
    pugi::xml_attribute found = element.attribute(name);
    if (found && value == found.value()) {
        return false;
    }
    if (!found) {
        found = element.append_attribute(name);
    }
    found.set_value(std::string(value).c_str());
    return true;
}

Node appendCopy(Node parent, Node element) {
    return parent.append_copy(element);
}

Node appendMoved(Node parent, Node element) {
    return parent.append_move(element);
}

std::string toText(Node element) {
    std::string out;
    write(out, element);
    return out;
}

}  // namespace tandril::xml
