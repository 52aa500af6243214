#include "forms/column_headings.h"

#include <cstddef>
#include <string>
#include <vector>

#include "forms/fields.h"
#include "html/html.h"

namespace tandril::forms {
namespace {

// Wider than the columns of the other lists, and one blank instead of two between them.
constexpr std::string_view columnWidths =
    "<COL WIDTH=120> <COL WIDTH=150><COL WIDTH=150><COL WIDTH=150>";
// The page's own text, not a message text.
constexpr std::string_view registrationDate = "Registration Date";

std::string headerCell(std::string_view label) {
    return html::joined({"<td class=tableheader align=center nowrap>", label, "</td>"});
}

}  // namespace

mapper::ColumnHeader registrationHeadings(const mapper::FieldMapper& mapper,
                                          std::string_view section) {
    mapper::ColumnHeader header;
    header.html = html::joined({columnWidths, "<tr>"});
    const std::vector<std::string_view> names = mapper.fieldNames(section);
    const std::vector<mapper::FieldProperties> listed = mapper.listed(section);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isKey = names[i] == fields::activity || names[i] == fields::order;
        if (!isKey && listed[i].isListColumn()) {
            header.html += headerCell(listed[i].label);
            ++header.columns;
        }
    }
    header.html += headerCell(registrationDate) + "</tr>";
    return header;
}

}  // namespace tandril::forms
