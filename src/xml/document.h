#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "xml/encoding.h"
#include "xml/well_formed.h"

namespace tandril::xml {

// A node of a document. A small handle that may be copied; null when there is no such node. Valid
// as long as its document.
using Node = pugi::xml_node;

// Markup in pieces, each of whole tags and short enough to be written at once.
using Markup = std::span<const std::string>;

// A text in UTF-8 that was found to be a well-formed document, so that its tree is made without
// another look at it. A view of the text.
struct CheckedText {
    std::string_view text;  // without a byte-order mark
    Facts facts;
};

// Nothing when the text is no such document (see checkWellFormed). Whatever encoding its
// declaration names, it is read as UTF-8.
std::optional<CheckedText> checked(std::string_view text, PartNames names = {});

// An XML document as a tree. Blank text between elements is dropped when it is made; comments,
// processing instructions, CDATA sections and the declaration survive a load and save.
//
// Who reads a large document for a part of it can name the elements that it is divided into: where
// they stand directly in the document element, each one's tree is made when it is asked for.
class Document {
  public:
    // Makes the tree of a text; nothing when it cannot be checked.
    static std::optional<Document> parse(std::string_view text);

    // Makes the tree of a document's bytes, decoded as decodeDocument does.
    static std::optional<Document> decode(std::string bytes, PartNames names = {});

    // The document element. Never null.
    Node root() const;
    // What elements of that name are looked for in: all of them stand somewhere below, in document
    // order, others may be missing. It is for reading, since root() may hold a copy of it.
    Node treeWith(std::string_view name) const;
    // Whether that is the document element for every name.
    bool isWhole() const { return parsed_->isWhole; }
    // The name of the document element.
    std::string_view name() const { return parsed_->tree.document_element().name(); }

    // Makes the tree of another text, which lives as long as this document without being a part of
    // it: its elements may be moved over (see appendMoved), which costs neither time nor memory.
    // Returns its document element.
    Node parseBeside(const CheckedText& text);
    // Gives back the memory of what is left below the element of a tree that stands beside.
    void dropBeside(Node element) { parsed_->tree.remove_child(element); }

    // The length of the text that the tree was made of, in bytes; about what it is written as.
    std::size_t textSize() const { return parsed_->text.size(); }

    // The whole document as text. Its declaration, if there is one, names no encoding.
    std::string text() const;

    // The whole document as bytes, in the encoding that its declaration names; without one, in the
    // encoding that it was decoded from.
    std::string bytes() const;
    // The same in pieces, for a file, with markup behind all that the document element holds. Valid
    // as long as the markup and the document, which must not change.
    platform::Content content(Markup appended = {}) const;

  private:
    Document() = default;

    // A child of the document element of a divided document.
    struct Child {
        Part part;
        Node place;  // an empty element; null when the child stands there itself
        // A tree of its own, made where its text stands, which that spoils.
        std::unique_ptr<pugi::xml_document> tree;
    };
    // The tree's names and values stay where they stand in the text that it was made of.
    struct Parsed {
        std::string text;
        pugi::xml_document tree;
        Node last;  // of the document's own nodes; behind it stands what was parsed beside it
        std::vector<Child> children;
        PartNames names;  // that it was divided by
        bool isWhole = true;
        bool mayHideBlanks = false;
    };

    std::unique_ptr<Parsed> parsed_;
    // The declaration is kept as it was written, apart from the tree.
    std::string version_;
    std::string encodingName_;
    std::string standalone_;
    Encoding encoding_ = Encoding::Utf8;
    bool hasMark_ = false;

    static std::optional<Document> build(std::string&& text, PartNames names);
    void parseInPlace(std::string_view text, pugi::xml_document& tree) const;
    void divide(const CheckedText& text);
    void makeWhole() const;
    void attach(const Child& child) const;
    Node treeOf(Child& child) const;
    std::vector<Node> ownNodes() const;
    void writeAsDeclared();
    std::string declaration(std::string_view encodingName) const;
    std::string serialised(std::string_view encodingName, Markup appended) const;
    void writeUtf8(Markup appended, const platform::Content::Sink& sink) const;
    void writeNodes(std::string& out, Markup appended,
                    const std::function<void(std::string& out)>& take) const;
};

// The document in the file; nothing when there is no such file, it cannot be read, or it is not a
// well-formed document.
std::optional<Document> load(const platform::FileSystem& files, std::string_view path,
                             PartNames names = {});

}  // namespace tandril::xml
