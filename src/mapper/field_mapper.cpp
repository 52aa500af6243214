#include "mapper/field_mapper.h"

#include <functional>
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

std::size_t FieldMapper::PathHash::operator()(const Path& path) const {
    const std::hash<std::string_view> hash;
    return hash(path.section) * 31 + hash(path.field);
}

FieldMapper::FieldMapper(xml::Document document) : document_(std::move(document)) {
    const xml::Node root = document_.root();
    for (xml::Node element = root; element; element = xml::nextElement(element, root)) {
        index(element);
    }
    const auto texts = sections_.find(textSection);
    if (texts == sections_.end()) {
        return;
    }
    for (const xml::Node entry : xml::elements(texts->second)) {
        if (carries(entry, textCode)) {
            texts_.try_emplace(xml::attribute(entry, textCode), xml::attribute(entry, textValue));
        }
    }
}

FieldMapper FieldMapper::blank() {
    return FieldMapper(*xml::Document::parse("<blank/>"));
}

void FieldMapper::index(xml::Node element) {
    sections_.try_emplace(element.name(), element);
    if (holdsEntries(element)) {
        valueLists_.try_emplace(element.name(), element);
    }
    const xml::Node parent = element.parent();
    if (parent.type() != pugi::node_element) {
        return;
    }
    const auto [place, isFirst] = fields_.try_emplace({parent.name(), element.name()});
    if (isFirst) {
        place->second = readProperties(element);
    }
}

FieldProperties FieldMapper::properties(std::string_view section, std::string_view field) const {
    const auto found = fields_.find({section, field});
    if (found != fields_.end()) {
        return found->second;
    }
    FieldProperties unknown;
    unknown.label = field;
    unknown.isModifiable = true;
    return unknown;
}

std::vector<std::string_view> FieldMapper::fieldNames(std::string_view section) const {
    std::vector<std::string_view> names;
    const auto found = sections_.find(section);
    if (found != sections_.end()) {
        for (const xml::Node field : xml::elements(found->second)) {
            names.emplace_back(field.name());
        }
    }
    return names;
}

std::vector<FieldProperties> FieldMapper::listed(std::string_view section) const {
    std::vector<FieldProperties> fields;
    const auto found = sections_.find(section);
    if (found != sections_.end()) {
        for (const xml::Node field : xml::elements(found->second)) {
            fields.push_back(readProperties(field));
        }
    }
    return fields;
}

std::optional<std::string_view> FieldMapper::text(std::string_view code) const {
    const auto found = texts_.find(code);
    return found == texts_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string_view> FieldMapper::codeText(std::string_view field,
                                                      std::string_view code) const {
    const auto found = valueLists_.find(field);
    if (found != valueLists_.end()) {
        for (const xml::Node entry : xml::elements(found->second)) {
            if (carries(entry, entryCode) && xml::attribute(entry, entryCode) == code) {
                return xml::attribute(entry, entryValue);
            }
        }
    }
    return std::nullopt;
}

std::vector<ValueListEntry> FieldMapper::valueList(std::string_view field) const {
    std::vector<ValueListEntry> entries;
    const auto found = valueLists_.find(field);
    if (found == valueLists_.end()) {
        return entries;
    }
    for (const xml::Node entry : xml::elements(found->second)) {
        if (carries(entry, entryCode)) {
            entries.push_back(
                {xml::attribute(entry, entryCode), xml::attribute(entry, entryValue)});
        }
    }
    return entries;
}

}  // namespace tandril::mapper
