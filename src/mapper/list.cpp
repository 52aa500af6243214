#include "mapper/list.h"

#include <initializer_list>

#include "html/html.h"
#include "mapper/stamp.h"

namespace tandril::mapper {
namespace {

void appendCentred(std::string& html, std::initializer_list<std::string_view> content) {
    html += "<td align=center>&nbsp;";
    for (const std::string_view part : content) {
        html += part;
    }
    html += "</td>";
}

std::string hyperlink(std::string_view field, std::string_view value, std::string_view form) {
    std::string text("<a href=");
    text += html::scriptCall("hyperlink", html::arguments({field, value, form}));
    text += '>';
    text += value;
    text += "</a>";
    return text;
}

void appendListCell(std::string& html, const FieldMapper& mapper, const FieldProperties& properties,
                    xml::Node field, std::string_view form) {
    const std::string value = xml::text(field);
    if (properties.dataType == "e") {
        html += codeCell(mapper, field.name(), value);
    } else if (properties.hasHyperlink) {
        appendCentred(html, {hyperlink(field.name(), value, form)});
    } else if (properties.dataType == "u" && !value.empty()) {
        appendCentred(html, {monthDayYear(value), " ", hourMinute(value)});
    } else {
        appendCentred(html, {value});
    }
}

}  // namespace

ColumnHeader columnHeader(const FieldMapper& mapper, std::string_view section) {
    ColumnHeader header;
    header.html += html::firstFourColumns;
    header.html += html::lastThreeColumns;
    header.html += "<tr>";
    for (const FieldProperties& field : mapper.listed(section)) {
        if (field.isListColumn()) {
            header.html += "<td class=tableheader nowrap>";
            header.html += field.label;
            header.html += "</td>";
            ++header.columns;
        }
    }
    header.html += "</tr>";
    return header;
}

void appendListCells(std::string& html, const FieldMapper& mapper, std::string_view section,
                     xml::Node record, std::string_view form) {
    const SectionFields& fields = mapper.fieldsOf(section);
    for (const xml::Node field : xml::elements(record)) {
        const FieldProperties properties = fields.properties(field.name());
        if (properties.isListColumn()) {
            appendListCell(html, mapper, properties, field, form);
        }
    }
}

std::string codeCell(const FieldMapper& mapper, std::string_view field, std::string_view code) {
    const std::optional<std::string_view> text = mapper.codeText(field, code);
    return html::cell(html::joined({"&nbsp;", text.value_or("")}));
}

}  // namespace tandril::mapper
