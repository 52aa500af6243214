#include "mapper/field_mapper.h"

#include <utility>

namespace tandril::mapper {
namespace {

constexpr const char* textSection = "I18N";
constexpr const char* textCode = "ID";
constexpr const char* textValue = "DESCRIPTION";
constexpr const char* entryCode = "Id";
constexpr const char* entryValue = "Value";
constexpr std::string_view yes = "True";

// In the order in which field mappers have them.
FieldProperties readProperties(xml::Node field) {
    xml::AttributeReader attribute(field);
    FieldProperties properties;
    properties.label = attribute("LABEL");
    properties.dataType = attribute("DATATYPE");
    properties.isModifiable = attribute("MODIFIABLE") == yes;
    properties.userInterface = attribute("UINTERFACE");
    properties.hasZoom = attribute("ZOOM") == yes;
    properties.hasHyperlink = attribute("HYPERLINK") == yes;
    properties.isNew = attribute("NEW") == yes;
    return properties;
}

bool carries(xml::Node element, const char* name) {
    return static_cast<bool>(element.attribute(name));
}

bool holdsEntries(xml::Node element) {
    for (const xml::Node child : xml::elements(element)) {
        if (carries(child, entryCode)) {
            return true;
        }
    }
    return false;
}

}  // namespace

FieldProperties SectionFields::properties(std::string_view field) const {
    const auto found = fields_.find(field);
    if (found != fields_.end()) {
        return found->second;
    }
    FieldProperties unknown;
    unknown.label = field;
    unknown.isModifiable = true;
    return unknown;
}

FieldMapper::FieldMapper(xml::Document document) : document_(std::move(document)) {}

FieldMapper FieldMapper::blank() {
    return FieldMapper(*xml::Document::parse("<blank/>"));
}

// All elements of the section's name, wherever they stand, hold fields of the section.
const SectionFields& FieldMapper::fieldsOf(std::string_view section) const {
    const auto known = fields_.find(section);
    if (known != fields_.end()) {
        return known->second;
    }
    SectionFields& fields = fields_[std::string(section)];
    for (const xml::Node field : xml::elementsIn(document_.root(), section)) {
        fields.add(field.name(), readProperties(field));
    }
    return fields;
}

xml::Elements FieldMapper::textEntries() const {
    return xml::elements(xml::firstElement(document_.root(), textSection));
}

std::optional<std::string_view> FieldMapper::soughtText(std::string_view code) const {
    for (const xml::Node entry : textEntries()) {
        const auto id = entry.attribute(textCode);
        if (id && id.value() == code) {
            return xml::attribute(entry, textValue);
        }
    }
    return std::nullopt;
}

const FieldMapper::Texts& FieldMapper::texts() const {
    if (!texts_) {
        texts_.emplace();
        for (const xml::Node entry : textEntries()) {
            if (carries(entry, textCode)) {
                texts_->try_emplace(xml::attribute(entry, textCode),
                                    xml::attribute(entry, textValue));
            }
        }
    }
    return *texts_;
}

// The first element of the field's name that holds entries.
xml::Node FieldMapper::valueListOf(std::string_view field) const {
    const auto known = valueLists_.find(field);
    if (known != valueLists_.end()) {
        return known->second;
    }
    const xml::Node root = document_.root();
    xml::Node element = root;
    while (element && !(xml::isNamed(element, field) && holdsEntries(element))) {
        element = xml::nextElement(element, root);
    }
    return valueLists_.emplace(field, element).first->second;
}

std::vector<std::string_view> FieldMapper::fieldNames(std::string_view section) const {
    std::vector<std::string_view> names;
    for (const xml::Node field : xml::elements(xml::firstElement(document_.root(), section))) {
        names.emplace_back(field.name());
    }
    return names;
}

std::vector<FieldProperties> FieldMapper::listed(std::string_view section) const {
    std::vector<FieldProperties> fields;
    for (const xml::Node field : xml::elements(xml::firstElement(document_.root(), section))) {
        fields.push_back(readProperties(field));
    }
    return fields;
}

// A list needs one or two texts, a form many; an index costs as much as to look for some.
std::optional<std::string_view> FieldMapper::text(std::string_view code) const {
    constexpr int few = 4;
    if (textsSought_ < few) {
        ++textsSought_;
        return soughtText(code);
    }
    const auto found = texts().find(code);
    return found == texts().end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string_view> FieldMapper::codeText(std::string_view field,
                                                      std::string_view code) const {
    for (const xml::Node entry : xml::elements(valueListOf(field))) {
        const auto id = entry.attribute(entryCode);
        if (id && id.value() == code) {
            return xml::attribute(entry, entryValue);
        }
    }
    return std::nullopt;
}

std::vector<ValueListEntry> FieldMapper::valueList(std::string_view field) const {
    std::vector<ValueListEntry> entries;
    for (const xml::Node entry : xml::elements(valueListOf(field))) {
        if (carries(entry, entryCode)) {
            entries.push_back(
                {xml::attribute(entry, entryCode), xml::attribute(entry, entryValue)});
        }
    }
    return entries;
}

}  // namespace tandril::mapper
