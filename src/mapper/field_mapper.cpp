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

FieldProperties readProperties(xml::Node field) {
    return {
        .label = xml::attribute(field, "LABEL"),
        .dataType = xml::attribute(field, "DATATYPE"),
        .userInterface = xml::attribute(field, "UINTERFACE"),
        .isModifiable = xml::attribute(field, "MODIFIABLE") == yes,
        .hasZoom = xml::attribute(field, "ZOOM") == yes,
        .hasHyperlink = xml::attribute(field, "HYPERLINK") == yes,
        .isNew = xml::attribute(field, "NEW") == yes,
    };
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

FieldMapper::FieldMapper(xml::Document document) : document_(std::move(document)) {}

FieldMapper FieldMapper::blank() {
    return FieldMapper(*xml::Document::parse("<blank/>"));
}

// All elements of the section's name, wherever they stand, hold fields of the section.
const FieldMapper::Fields& FieldMapper::fieldsOf(std::string_view section) const {
    const auto known = fields_.find(section);
    if (known != fields_.end()) {
        return known->second;
    }
    Fields& fields = fields_[std::string(section)];
    const xml::Node root = document_.root();
    for (xml::Node element = root; element; element = xml::nextElement(element, root)) {
        if (xml::isNamed(element.parent(), section)) {
            const auto [place, isFirst] = fields.try_emplace(element.name());
            if (isFirst) {
                place->second = readProperties(element);
            }
        }
    }
    return fields;
}

const FieldMapper::Texts& FieldMapper::texts() const {
    if (!texts_) {
        texts_.emplace();
        for (const xml::Node entry :
             xml::elements(xml::firstElement(document_.root(), textSection))) {
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

FieldProperties FieldMapper::properties(std::string_view section, std::string_view field) const {
    const Fields& fields = fieldsOf(section);
    const auto found = fields.find(field);
    if (found != fields.end()) {
        return found->second;
    }
    FieldProperties unknown;
    unknown.label = field;
    unknown.isModifiable = true;
    return unknown;
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

std::optional<std::string_view> FieldMapper::text(std::string_view code) const {
    const auto found = texts().find(code);
    return found == texts().end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string_view> FieldMapper::codeText(std::string_view field,
                                                      std::string_view code) const {
    for (const xml::Node entry : xml::elements(valueListOf(field))) {
        if (carries(entry, entryCode) && xml::attribute(entry, entryCode) == code) {
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
