#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "xml/document.h"
#include "xml/node.h"

namespace tandril::mapper {

// What the field mapper says of one field. Views into the mapper, or into the name that was asked
// for.
struct FieldProperties {
    std::string_view label;
    std::string_view dataType;       // "e" code, "u" date-time stamp, "s" string, "t" long text
    std::string_view userInterface;  // where the field is shown, see below
    bool isModifiable = false;
    bool hasZoom = false;
    bool hasHyperlink = false;
    bool isNew = false;  // shown on creation forms

    bool isListColumn() const { return userInterface == "1" || userInterface == "3"; }
    bool isFormRow() const { return userInterface == "2" || userInterface == "3"; }
};

// An entry of a value list: a stored code and the text shown for it.
struct ValueListEntry {
    std::string_view id;
    std::string_view value;
};

// The fields of one section.
class SectionFields {
  public:
    // Where a field occurs twice, the first one counts.
    void add(std::string_view field, const FieldProperties& properties) {
        fields_.try_emplace(field, properties);
    }
    // An unknown field is labelled by its own name and can be modified.
    FieldProperties properties(std::string_view field) const;

  private:
    std::unordered_map<std::string_view, FieldProperties> fields_;
};

// The document that tells every list and form which fields there are, how they are labelled and how
// they behave, and that holds the message texts. Where the document says something twice, the first
// in document order counts. What is asked for often is found through indexes, each of which is
// built at the first question: a call asks about one section or two out of many. Returned views
// live as long as the object.
class FieldMapper {
  public:
    explicit FieldMapper(xml::Document document);

    // A field mapper that knows nothing, for what is shown even without one.
    static FieldMapper blank();

    // The fields of a section, for who asks for many of them; none for an unknown section.
    const SectionFields& fieldsOf(std::string_view section) const;
    // The properties of one field of a section.
    FieldProperties properties(std::string_view section, std::string_view field) const {
        return fieldsOf(section).properties(field);
    }

    // The names of the fields that the section lists, in order; none for an unknown section.
    std::vector<std::string_view> fieldNames(std::string_view section) const;
    // The properties of those fields, as they stand there, a repeated field with its own.
    std::vector<FieldProperties> listed(std::string_view section) const;

    // The text of a message code; nothing for an unknown one. Codes compare exactly.
    std::optional<std::string_view> text(std::string_view code) const;

    // The entries of the value list of a field; none when there is no such list.
    std::vector<ValueListEntry> valueList(std::string_view field) const;

    // The text of the first entry of that code in the field's value list.
    std::optional<std::string_view> codeText(std::string_view field, std::string_view code) const;

    // The document as text.
    std::string toText() const { return document_.text(); }

  private:
    using Texts = std::unordered_map<std::string_view, std::string_view>;
    // By a name that was asked for.
    template <class Found>
    using Asked = std::map<std::string, Found, std::less<>>;

    xml::Elements textEntries() const;
    std::optional<std::string_view> soughtText(std::string_view code) const;
    const Texts& texts() const;
    xml::Node valueListOf(std::string_view field) const;

    xml::Document document_;
    mutable Asked<SectionFields> fields_;  // by section
    mutable Asked<xml::Node> valueLists_;  // by field; null: there is none
    mutable std::optional<Texts> texts_;
    mutable int textsSought_ = 0;  // without an index
};

}  // namespace tandril::mapper
