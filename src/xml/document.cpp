#include "xml/document.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/fault.h"
#include "xml/characters.h"
#include "xml/node.h"
#include "xml/well_formed.h"
#include "xml/writer.h"

namespace tandril::xml {
namespace {

// The text that stands first in an element is kept in the element itself, which halves the nodes of
// our documents.
constexpr unsigned alwaysParsed = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                  pugi::parse_escapes | pugi::parse_eol |
                                  pugi::parse_wconv_attribute | pugi::parse_embed_pcdata;

unsigned parseFlags(bool mayHideBlanks) {
    return alwaysParsed | (mayHideBlanks ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
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

// The element of a tree of its own; a tree that there was no memory for has none.
Node elementOf(const pugi::xml_document& tree) {
    const Node element = tree.document_element();
    if (!element) {
        throw std::bad_alloc();
    }
    return element;
}

std::string_view withoutMark(std::string_view text) {
    return text.substr(text.starts_with(utf8Mark) ? utf8Mark.size() : 0);
}

std::string_view withoutBlankStart(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::string_view withoutBlankEnd(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
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

std::optional<CheckedText> checked(std::string_view text, PartNames names) {
    CheckedText result{withoutMark(text), {}};
    return checkWellFormed(result.text, result.facts, names) ? std::nullopt : std::optional(result);
}

std::optional<Document> Document::build(std::string&& text, PartNames names) {
    Document document;
    document.parsed_ = std::make_unique<Parsed>();
    document.parsed_->text = std::move(text);
    const std::optional<CheckedText> found = checked(document.parsed_->text, names);
    if (!found) {
        return std::nullopt;
    }
    const Declaration& declaration = found->facts.declaration;
    document.version_ = declaration.version;
    document.encodingName_ = declaration.encoding;
    document.standalone_ = declaration.standalone;
    document.parsed_->mayHideBlanks = found->facts.mayHideBlanks;
    document.parsed_->names = names;
    if (found->facts.parts.empty()) {
        document.parseInPlace(found->text, document.parsed_->tree);
    } else {
        document.divide(*found);
    }
    document.parsed_->last = document.parsed_->tree.last_child();
    return document;
}

// The text is well-formed: without memory, a part of it must not pass for all.
void Document::parseInPlace(std::string_view text, pugi::xml_document& tree) const {
    const auto start = static_cast<std::size_t>(text.data() - parsed_->text.data());
    if (!tree.load_buffer_inplace(parsed_->text.data() + start, text.size(),
                                  parseFlags(parsed_->mayHideBlanks), pugi::encoding_utf8)) {
        tree.reset();
        throw std::bad_alloc();
    }
    if (parsed_->mayHideBlanks) {
        dropBlankText(tree.document_element());
    }
}

// The tree of what stands around the parts, with a place for each of them.
void Document::divide(const CheckedText& text) {
    const std::vector<Part>& parts = text.facts.parts;
    const auto positionOf = [&](const char* place) {
        return static_cast<std::size_t>(place - text.text.data());
    };
    const std::string_view last = parts.back().text;
    std::string around(withoutBlankEnd(text.text.substr(0, positionOf(parts.front().text.data()))));
    around += withoutBlankStart(text.text.substr(positionOf(last.data() + last.size())));
    if (!parsed_->tree.load_buffer(around.data(), around.size(), parseFlags(parsed_->mayHideBlanks),
                                   pugi::encoding_utf8)) {
        throw std::bad_alloc();
    }
    Node root = parsed_->tree.document_element();
    parsed_->isWhole = false;
    parsed_->children.reserve(parts.size());
    for (const Part& part : parts) {
        parsed_->children.push_back({part, root.append_child(std::string(part.name).c_str()), {}});
    }
}

Node Document::root() const {
    if (!isWhole()) {
        makeWhole();
    }
    return parsed_->tree.document_element();
}

// Without memory the children that are not in their places yet go on waiting.
void Document::makeWhole() const {
    for (Child& child : parsed_->children) {
        if (child.place) {
            attach(child);
            child.place = {};
        }
    }
    parsed_->isWhole = true;
}

// The text of a child that has a tree of its own is spoilt, and is written anew.
void Document::attach(const Child& child) const {
    Node root = parsed_->tree.document_element();
    const Node before = root.last_child();
    const std::string spoilt = child.tree ? toText(elementOf(*child.tree)) : std::string();
    const std::string_view text = child.tree ? std::string_view(spoilt) : child.part.text;
    if (!root.append_buffer(text.data(), text.size(), parseFlags(parsed_->mayHideBlanks),
                            pugi::encoding_utf8)) {
        while (root.last_child() != before) {
            root.remove_child(root.last_child());
        }
        throw std::bad_alloc();
    }
    const Node made = root.insert_move_before(root.last_child(), child.place);
    root.remove_child(child.place);
    if (parsed_->mayHideBlanks) {
        dropBlankText(made);
    }
}

Node Document::treeWith(std::string_view name) const {
    const PartNames& names = parsed_->names;
    if (isWhole() || std::find(names.begin(), names.end(), name) == names.end()) {
        return root();
    }
    const auto bearsName = [name](const Child& child) { return child.part.name == name; };
    std::vector<Child>& children = parsed_->children;
    const auto first = std::find_if(children.begin(), children.end(), bearsName);
    if (first == children.end()) {
        return parsed_->tree.document_element();
    }
    const bool isOnly = std::none_of(first + 1, children.end(), bearsName);
    return isOnly ? treeOf(*first) : root();
}

// Without memory the child is lost, since its text is.
Node Document::treeOf(Child& child) const {
    if (!child.tree) {
        child.tree = std::make_unique<pugi::xml_document>();
        parseInPlace(child.part.text, *child.tree);
    }
    return elementOf(*child.tree).parent();
}

Node Document::parseBeside(const CheckedText& text) {
    pugi::xml_document& tree = parsed_->tree;
    const Node before = tree.last_child();
    // The text is well-formed: without memory, a part of it must not pass for all.
    if (!tree.append_buffer(text.text.data(), text.text.size(),
                            parseFlags(text.facts.mayHideBlanks), pugi::encoding_utf8)) {
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
    std::optional<Document> document = build(std::string(text), {});
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

std::optional<Document> Document::decode(std::string bytes, PartNames names) {
    std::optional<DecodedText> decoded = decodeDocument(std::move(bytes));
    if (!decoded) {
        return std::nullopt;
    }
    std::optional<Document> document = build(std::move(decoded->text), names);
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
    const Node root = this->root();
    for (const Node node : ownNodes()) {
        if (node == root && !appended.empty()) {
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

std::optional<Document> load(const platform::FileSystem& files, std::string_view path,
                             PartNames names) {
    if (!files.fileExists(path)) {
        return std::nullopt;
    }
    try {
        return Document::decode(files.read(path), names);
    } catch (const Fault&) {
        return std::nullopt;
    }
}

}  // namespace tandril::xml
