#include "xml/writer.h"

#include <string_view>

#include "platform/file_system.h"

namespace tandril::xml {
namespace {

std::string_view textReference(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '\r':
            return "&#13;";
        default:
            return {};
    }
}

std::string_view attributeReference(char c) {
    switch (c) {
        case '"':
            return "&quot;";
        case '\t':
            return "&#9;";
        case '\n':
            return "&#10;";
        default:
            return textReference(c);
    }
}

template <class Reference>
void escape(std::string& out, std::string_view value, Reference reference) {
    std::size_t written = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string_view replacement = reference(value[i]);
        if (!replacement.empty()) {
            out.append(value, written, i - written);
            out += replacement;
            written = i + 1;
        }
    }
    out.append(value, written);
}

void endTag(std::string& out, Node element) {
    out += "</";
    out += element.name();
    out += '>';
}

// The whole element when no child node of it is written.
void startTag(std::string& out, Node element, bool hasChildren) {
    out += '<';
    out += element.name();
    for (const pugi::xml_attribute attribute : element.attributes()) {
        out += ' ';
        out += attribute.name();
        out += "=\"";
        escape(out, attribute.value(), attributeReference);
        out += '"';
    }
    const char* const leadingText = element.value();
    if (!hasChildren && *leadingText == '\0') {
        out += "/>";
        return;
    }
    out += '>';
    escape(out, leadingText, textReference);
    if (!hasChildren) {
        endTag(out, element);
    }
}

void instruction(std::string& out, Node node) {
    out += "<?";
    out += node.name();
    if (*node.value() != '\0') {
        out += ' ';
        out += node.value();
    }
    out += "?>";
}

void open(std::string& out, Node node, bool hasChildren) {
    switch (node.type()) {
        case pugi::node_element:
            startTag(out, node, hasChildren);
            break;
        case pugi::node_pcdata:
            escape(out, node.value(), textReference);
            break;
        case pugi::node_cdata:
            out += "<![CDATA[";
            out += node.value();
            out += "]]>";
            break;
        case pugi::node_comment:
            out += "<!--";
            out += node.value();
            out += "-->";
            break;
        case pugi::node_pi:
            instruction(out, node);
            break;
        default:
            break;
    }
}

// The node itself, or the first behind it, that is written.
template <class IsLeftOut>
Node written(Node node, IsLeftOut& isLeftOut) {
    while (node && isLeftOut(node)) {
        node = node.next_sibling();
    }
    return node;
}

template <class IsLeftOut, class Opened>
void writeAll(std::string& out, Node node, IsLeftOut isLeftOut, Opened opened) {
    // Without recursion, so that depth costs no stack.
    Node current = node;
    while (true) {
        const Node inner = written(current.first_child(), isLeftOut);
        open(out, current, static_cast<bool>(inner));
        opened();
        if (inner) {
            current = inner;
            continue;
        }
        Node next;
        while (current != node && !(next = written(current.next_sibling(), isLeftOut))) {
            current = current.parent();
            endTag(out, current);
        }
        if (current == node) {
            return;
        }
        current = next;
    }
}

bool nothingIsLeftOut(Node /*node*/) {
    return false;
}

}  // namespace

void write(std::string& out, Node node) {
    writeAll(out, node, nothingIsLeftOut, [] {});
}

void write(std::string& out, Node node, const std::function<void(std::string& out)>& take) {
    writeAll(out, node, nothingIsLeftOut, [&] {
        if (out.size() >= platform::Content::pieceSize) {
            take(out);
        }
    });
}

void write(std::string& out, Node node, std::span<const Node> leftOut) {
    // The walk asks for each node once, in document order.
    writeAll(
        out, node,
        [next = leftOut](Node asked) mutable {
            if (next.empty() || next.front() != asked) {
                return false;
            }
            next = next.subspan(1);
            return true;
        },
        [] {});
}

}  // namespace tandril::xml
