#include "xml/writer.h"

#include <string_view>

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

// The whole element when it has no child nodes.
void startTag(std::string& out, Node element) {
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
    if (!element.first_child() && *leadingText == '\0') {
        out += "/>";
        return;
    }
    out += '>';
    escape(out, leadingText, textReference);
    if (!element.first_child()) {
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

void open(std::string& out, Node node) {
    switch (node.type()) {
        case pugi::node_element:
            startTag(out, node);
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

}  // namespace

void write(std::string& out, Node node) {
    // Without recursion, so that depth costs no stack.
    Node current = node;
    while (true) {
        open(out, current);
        if (current.first_child()) {
            current = current.first_child();
            continue;
        }
        while (current != node && !current.next_sibling()) {
            current = current.parent();
            endTag(out, current);
        }
        if (current == node) {
            return;
        }
        current = current.next_sibling();
    }
}

}  // namespace tandril::xml
