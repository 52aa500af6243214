#include "xml/document.h"

#include <new>
#include <utility>

#include "platform/fault.h"
#include "xml/characters.h"
#include "xml/well_formed.h"
#include "xml/writer.h"

namespace tandril::xml {
namespace {

// The text that stands first in an element is kept in the element itself, which halves the nodes of
// our documents.
constexpr unsigned alwaysParsed = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                  pugi::parse_escapes | pugi::parse_eol |
                                  pugi::parse_wconv_attribute | pugi::parse_embed_pcdata;

unsigned parseFlags(const Facts& facts) {
    return alwaysParsed |
           (facts.mayHideBlanks ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
}

bool hasElementChild(Node node) {
    Node child = node.first_child();
    while (child && child.type() != pugi::node_element) {
        child = child.next_sibling();
    }
    return static_cast<bool>(child);
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
    if (const Node inner = node.first_child()) {
        return inner;
    }
    while (node != top) {
        if (const Node next = node.next_sibling()) {
            return next;
        }
        node = node.parent();
    }
    return {};
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

std::optional<CheckedText> checked(std::string_view text) {
    CheckedText result{withoutMark(text), {}};
    return checkWellFormed(result.text, result.facts) ? std::nullopt : std::optional(result);
}

std::optional<Document> Document::build(std::string&& text, const Facts& facts) {
    Document document;
    document.version_ = facts.declaration.version;
    document.encodingName_ = facts.declaration.encoding;
    document.standalone_ = facts.declaration.standalone;
    document.parsed_ = std::make_unique<Parsed>();
    document.parsed_->text = std::move(text);
    std::string& buffer = document.parsed_->text;
    pugi::xml_document& tree = document.parsed_->tree;
    if (!tree.load_buffer_inplace(buffer.data(), buffer.size(), parseFlags(facts),
                                  pugi::encoding_utf8)) {
        return std::nullopt;
    }
    document.parsed_->last = tree.last_child();
    if (facts.mayHideBlanks) {
        dropBlankText(document.root());
    }
    return document;
}

Node Document::parseBeside(const CheckedText& text) {
    pugi::xml_document& tree = parsed_->tree;
    const Node before = tree.last_child();
    // The text is well-formed: without memory, a part of it must not pass for all.
    if (!tree.append_buffer(text.text.data(), text.text.size(), parseFlags(text.facts),
                            pugi::encoding_utf8)) {
        throw std::bad_alloc();
    }
    Node root = before.next_sibling();
    while (root && root.type() != pugi::node_element) {
        root = root.next_sibling();
    }
    if (text.facts.mayHideBlanks) {
        dropBlankText(root);
    }
    return root;
}

std::optional<Document> Document::parse(std::string_view text) {
    const std::optional<CheckedText> found = checked(text);
    std::optional<Document> document =
        found ? build(std::string(found->text), found->facts) : std::nullopt;
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
    const std::optional<CheckedText> found = checked(decoded->text);
    std::optional<Document> document =
        found ? build(std::move(decoded->text), found->facts) : std::nullopt;
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

std::vector<Node> Document::ownNodes() const {
    std::vector<Node> nodes{parsed_->tree.first_child()};
    while (nodes.back() != parsed_->last) {
        nodes.push_back(nodes.back().next_sibling());
    }
    return nodes;
}

// Most documents are written about as long as they were read.
std::string Document::serialised(std::string_view encodingName, Markup appended) const {
    std::string out = declaration(encodingName);
    out.reserve(parsed_->text.size() + parsed_->text.size() / 8);
    writeNodes(out, appended, [](std::string&) {});
    return out;
}

void Document::writeNodes(std::string& out, Markup appended,
                          const std::function<void(std::string& out)>& take) const {
    for (const Node node : ownNodes()) {
        if (node == root() && !appended.empty()) {
            write(out, node, appended, take);
        } else {
            write(out, node, take);
        }
    }
}

std::string Document::text() const {
    return serialised({}, {});
}

std::string Document::bytes() const {
    std::string whole;
    content().writeTo([&](std::string_view piece) { whole += piece; });
    return whole;
}

void Document::writeUtf8(Markup appended, const platform::Content::Sink& sink) const {
    std::string piece(hasMark_ ? utf8Mark : "");
    piece += declaration(encodingName_);
    writeNodes(piece, appended, [&](std::string& out) {
        sink(out);
        out.clear();
    });
    sink(piece);
}

platform::Content Document::content(Markup appended) const {
    return platform::Content([this, appended](const platform::Content::Sink& sink) {
        if (encoding_ == Encoding::Utf8) {
            writeUtf8(appended, sink);
        } else {
            sink(encodeDocument(serialised(encodingName_, appended), encoding_, hasMark_));
        }
    });
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

}  // namespace tandril::xml
