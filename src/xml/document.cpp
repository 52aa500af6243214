#include "xml/document.h"

#include <utility>

#include "platform/fault.h"
#include "xml/characters.h"
#include "xml/well_formed.h"
#include "xml/writer.h"

namespace tandril::xml {
namespace {

// The text that stands first in an element is kept in the element itself, which halves the nodes of
// our documents.
constexpr unsigned parseFlags = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                pugi::parse_escapes | pugi::parse_eol |
                                pugi::parse_wconv_attribute | pugi::parse_embed_pcdata;

bool hasElementChild(Node node) {
    for (const Node child : node.children()) {
        if (child.type() == pugi::node_element) {
            return true;
        }
    }
    return false;
}

void dropBlankChildren(Node node) {
    if (*node.value() != '\0' && isBlankText(node.value())) {
        node.text().set("");
    }
    Node next;
    for (Node child = node.first_child(); child; child = next) {
        next = child.next_sibling();
        if (child.type() == pugi::node_pcdata && isBlankText(child.value())) {
            node.remove_child(child);
        }
    }
}

Node behind(Node node, Node top) {
    if (node.first_child()) {
        return node.first_child();
    }
    while (node != top && !node.next_sibling()) {
        node = node.parent();
    }
    return node == top ? Node() : node.next_sibling();
}

// The parser itself can drop blank text only where nothing but elements stands beside it.
void dropBlankText(Node root) {
    for (Node node = root; node; node = behind(node, root)) {
        if (hasElementChild(node)) {
            dropBlankChildren(node);
        }
    }
}

std::string_view withoutMark(std::string_view text) {
    return text.substr(text.starts_with(utf8Mark) ? utf8Mark.size() : 0);
}

// A declaration of UTF-16 leaves the order of the bytes open.
bool areAlike(Encoding one, Encoding other) {
    return one == other || (isWide(one) && isWide(other));
}

std::string quoted(std::string_view name, std::string_view value) {
    return value.empty() ? std::string()
                         : " " + std::string(name) + "=\"" + std::string(value) + '"';
}

}  // namespace

std::optional<Document> Document::build(std::string text) {
    Facts facts;
    if (checkWellFormed(text, facts)) {
        return std::nullopt;
    }
    Document document;
    document.version_ = facts.declaration.version;
    document.encodingName_ = facts.declaration.encoding;
    document.standalone_ = facts.declaration.standalone;
    document.parsed_ = std::make_unique<Parsed>();
    document.parsed_->text = std::move(text);
    const unsigned blanks =
        facts.hasInnerMarkup ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single;
    std::string& buffer = document.parsed_->text;
    if (!document.parsed_->tree.load_buffer_inplace(buffer.data(), buffer.size(),
                                                    parseFlags | blanks, pugi::encoding_utf8)) {
        return std::nullopt;
    }
    if (facts.hasInnerMarkup) {
        dropBlankText(document.root());
    }
    return document;
}

std::optional<Document> Document::parse(std::string_view text) {
    std::optional<Document> document = build(std::string(withoutMark(text)));
    if (document) {
        document->writeAsDeclared();
    }
    return document;
}

// A declaration may name another encoding than the one that the document came in, which its mark
// tells.
void Document::writeAsDeclared() {
    if (encodingName_.empty()) {
        return;
    }
    const auto named = encodingNamed(encodingName_);
    if (!named) {
        encodingName_ = "UTF-8";
    }
    const Encoding declared = named.value_or(Encoding::Utf8);
    if (!areAlike(declared, encoding_)) {
        encoding_ = declared;
        hasMark_ = false;
    }
}

std::optional<Document> Document::decode(std::string bytes) {
    std::optional<DecodedText> decoded = decodeDocument(std::move(bytes));
    if (!decoded) {
        return std::nullopt;
    }
    std::optional<Document> document = build(std::move(decoded->text));
    if (document) {
        document->encoding_ = decoded->encoding;
        document->hasMark_ = decoded->hadMark;
        document->writeAsDeclared();
    }
    return document;
}

std::string Document::declaration(std::string_view encodingName) const {
    if (version_.empty()) {
        return {};
    }
    return "<?xml" + quoted("version", version_) + quoted("encoding", encodingName) +
           quoted("standalone", standalone_) + "?>";
}

// Most documents are written about as long as they were read.
std::string Document::serialised(std::string_view encodingName) const {
    std::string out = declaration(encodingName);
    out.reserve(parsed_->text.size() + parsed_->text.size() / 8);
    for (const Node node : parsed_->tree.children()) {
        write(out, node);
    }
    return out;
}

std::string Document::text() const {
    return serialised({});
}

std::string Document::bytes() const {
    std::string whole;
    content().writeTo([&](std::string_view piece) { whole += piece; });
    return whole;
}

void Document::writeUtf8(const platform::Content::Sink& sink) const {
    std::string piece(hasMark_ ? utf8Mark : "");
    piece += declaration(encodingName_);
    for (const Node node : parsed_->tree.children()) {
        write(piece, node, [&](std::string& out) {
            sink(out);
            out.clear();
        });
    }
    sink(piece);
}

platform::Content Document::content() const {
    return platform::Content([this](const platform::Content::Sink& sink) {
        if (encoding_ == Encoding::Utf8) {
            writeUtf8(sink);
        } else {
            sink(encodeDocument(serialised(encodingName_), encoding_, hasMark_));
        }
    });
}

std::optional<std::string_view> rootName(std::string_view text) {
    Facts facts;
    return checkWellFormed(withoutMark(text), facts) ? std::nullopt : std::optional(facts.root);
}

std::optional<Document> load(const platform::FileSystem& files, std::string_view path) {
    if (!files.fileExists(path)) {
        return std::nullopt;
    }
    try {
        return Document::decode(files.read(path));
    } catch (const Fault&) {
        return std::nullopt;
    }
}

void save(const Document& document, platform::FileSystem& files, std::string_view path) {
    files.replace(path, document.content(), platform::Durability::Durable);
}

}  // namespace tandril::xml
