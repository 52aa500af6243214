#include "masterdata/window.h"

#include "html/html.h"
#include "masterdata/tables.h"

namespace tandril::masterdata {
namespace {

constexpr std::string_view recordsOpening =
    "<table width=100% border=0 cellspacing=0 cellpadding=0 class=details>";
constexpr std::string_view labelSection = "zoomhyperlink";

}  // namespace

std::string windowFrame(const mapper::FieldMapper& mapper, std::string_view titleCode,
                        std::string_view container) {
    std::string html =
        html::panelTitle(html::PanelButtons::Close, messageText(mapper, titleCode), container);
    html += html::panelRow;
    html += recordsOpening;
    return html;
}

std::string messageRow(const mapper::FieldMapper& mapper, std::string_view code) {
    return "<tr>" + html::cell(messageText(mapper, code)) + "</tr>";
}

std::string headerRow(const mapper::FieldMapper& mapper, const std::vector<std::string>& columns) {
    std::string html("<tr class=tableheader>");
    for (const std::string& column : columns) {
        if (isShown(column)) {
            html += "<td align=left nowrap>&nbsp;";
            html += columnLabel(mapper, column);
            html += "</td>";
        }
    }
    html += "</tr>";
    return html;
}

bool isShown(std::string_view column) {
    return column != companyColumn;
}

std::string_view columnLabel(const mapper::FieldMapper& mapper, std::string_view column) {
    return mapper.properties(labelSection, column).label;
}

std::string_view messageText(const mapper::FieldMapper& mapper, std::string_view code) {
    return mapper.text(code).value_or("");
}

}  // namespace tandril::masterdata
