#include "mapper/list.h"

#include "html/html.h"
#include "mapper/stamp.h"

namespace tandril::mapper {
namespace {

std::string centred(std::string_view content) {
    std::string text("<td align=center>&nbsp;");
    text += content;
    text += "</td>";
    return text;
}

std::string hyperlink(std::string_view field, std::string_view value, std::string_view form) {
    std::string text("<a href=");
    text += html::scriptCall("hyperlink", html::arguments({field, value, form}));
    text += '>';
    text += value;
    text += "</a>";
    return text;
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

std::string listCell(const FieldMapper& mapper, std::string_view section, xml::Node field,
                     std::string_view form) {
    const FieldProperties properties = mapper.properties(section, field.name());
    if (!properties.isListColumn()) {
        return {};
    }
    const std::string value = xml::text(field);
    if (properties.dataType == "e") {
        return codeCell(mapper, field.name(), value);
    }
    if (properties.hasHyperlink) {
        return centred(hyperlink(field.name(), value, form));
    }
    if (properties.dataType == "u" && !value.empty()) {
        return centred(monthDayYear(value) + " " + std::string(hourMinute(value)));
    }
    return centred(value);
}

std::string codeCell(const FieldMapper& mapper, std::string_view field, std::string_view code) {
    const std::optional<std::string_view> text = mapper.codeText(field, code);
    return html::cell("&nbsp;" + std::string(text.value_or("")));
}

}  // namespace tandril::mapper
