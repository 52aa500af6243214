#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "xml/document.h"

// Reading and changing the elements of a document. Positions and lists count elements only: texts,
// comments and processing instructions between them are passed over.
namespace tandril::xml {

// The first of a node and its later siblings that is an element; null when there is none.
inline Node elementFrom(Node node) {
    while (node && node.type() != pugi::node_element) {
        node = node.next_sibling();
    }
    return node;
}

// Walks the element children of a node: `for (Node child : elements(node))`. The current child must
// stay in place while the walk goes on.
class Elements {
  public:
    class Iterator {
      public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Node;
        using difference_type = std::ptrdiff_t;
        using pointer = const Node*;
        using reference = const Node&;

        explicit Iterator(Node node) : node_(node) {}
        reference operator*() const { return node_; }
        Iterator& operator++() {
            node_ = elementFrom(node_.next_sibling());
            return *this;
        }
        bool operator==(const Iterator& other) const { return node_ == other.node_; }

      private:
        Node node_;
    };

    explicit Elements(Node parent) : parent_(parent) {}
    Iterator begin() const { return Iterator(elementFrom(parent_.first_child())); }
    Iterator end() const { return Iterator(Node()); }

  private:
    Node parent_;
};

inline Elements elements(Node parent) {
    return Elements(parent);
}

// The element child number `index`, counted from 0; null when there are not so many.
Node elementAt(Node parent, std::size_t index);
bool hasElements(Node parent);
// The first element child of that name; null when there is none.
Node child(Node parent, std::string_view name);

// The first element of that name in document order, the node itself included; null when there is
// none.
Node firstElement(Node node, std::string_view name);
// The elements that stand directly in one of that name, which may be `top` itself or stand anywhere
// below it, in document order.
std::vector<Node> elementsIn(Node top, std::string_view name);
// The element behind `node` in document order inside of `top`; null behind the last.
Node nextElement(Node node, Node top);

bool isNamed(Node node, std::string_view name);

// All text below the node, CDATA sections included.
std::string text(Node node);
// Makes `value` the only content of the element, unless its text is that already. Returns whether
// anything changed.
bool setText(Node element, std::string_view value);

// The attribute's value; "" when it is missing.
std::string_view attribute(Node element, const char* name);
// The same for several attributes of one element, which are found fastest in the order in which
// they stand there.
class AttributeReader {
  public:
    explicit AttributeReader(Node element) : element_(element) {}
    std::string_view operator()(const char* name) {
        return element_.attribute(name, next_).value();
    }

  private:
    Node element_;
    pugi::xml_attribute next_;
};
// Sets the attribute, adding it behind the others when it is missing. Returns whether it changed.
bool setAttribute(Node element, const char* name, std::string_view value);

// Appends a deep copy of an element, of this or of another document, and returns it.
Node appendCopy(Node parent, Node element);
// Appends an element of this document's memory itself, which leaves its place. Returns it.
Node appendMoved(Node parent, Node element);

// The element as text, without added line breaks; an empty element is `<a/>`.
std::string toText(Node element);

}  // namespace tandril::xml
