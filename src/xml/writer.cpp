#include "xml/writer.h"

#include <string_view>

#include "platform/file_system.h"
#include "xml/byte_runs.h"

namespace tandril::xml {
namespace {

// What stands for a character in a text; "" for one that stands for itself.
constexpr std::string_view textReference(char c) {
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

constexpr std::string_view valueReference(char c) {
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

template <auto reference>
void escape(std::string& out, std::string_view value) {
    std::size_t written = 0;
    for (std::size_t i = verbatimLength(value); i < value.size(); ++i) {
        const std::string_view replacement = reference(value[i]);
        if (!replacement.empty()) {
            out.append(value, written, i - written);
            out += replacement;
            written = i + 1;
        }
    }
    out.append(value, written);
}

void endTag(std::string& out, std::string_view name) {
    out += "</";
    out += name;
    out += '>';
}

void attributes(std::string& out, Node element) {
    for (auto attribute = element.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        writeAttribute(out, attribute.name(), attribute.value());
    }
}

// The whole element when no child node of it is written.
void startTag(std::string& out, Node element, bool hasChildren) {
    const std::string_view name = element.name();
    const std::string_view leadingText = element.value();
    out += '<';
    out += name;
    attributes(out, element);
    if (!hasChildren && leadingText.empty()) {
        out += "/>";
        return;
    }
    out += '>';
    escape<textReference>(out, leadingText);
    if (!hasChildren) {
        endTag(out, name);
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
            escape<textReference>(out, node.value());
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
            endTag(out, current.name());
        }
        if (current == node) {
            return;
        }
        current = next;
    }
}

void takeFull(std::string& out, const Take& take) {
    if (out.size() >= platform::Content::pieceSize) {
        take(out);
    }
}

bool nothingIsLeftOut(Node /*node*/) {
    return false;
}

}  // namespace

void write(std::string& out, Node node) {
    writeAll(out, node, nothingIsLeftOut, [] {});
}

void writeAttribute(std::string& out, std::string_view name, std::string_view value) {
    out += ' ';
    out += name;
    out += "=\"";
    escape<valueReference>(out, value);
    out += '"';
}

void write(std::string& out, Node node, const Take& take) {
    writeAll(out, node, nothingIsLeftOut, [&] { takeFull(out, take); });
}

void write(std::string& out, Node element, Markup appended, const Take& take) {
    open(out, element, true);
    for (const Node child : element.children()) {
        write(out, child, take);
    }
    for (const std::string& piece : appended) {
        out += piece;
        takeFull(out, take);
    }
    endTag(out, element.name());
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
