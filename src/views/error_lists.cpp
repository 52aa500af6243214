#include "views/error_lists.h"

#include <string_view>

#include "html/html.h"
#include "views/rows.h"

namespace tandril::views {
namespace {

// The last argument of a link in this list: the record is opened to correct an upload error.
constexpr std::string_view openedForCorrection = "1";

// This list closes the division before the table in it.
constexpr std::string_view closing = "</div></table></td></tr></table>";

std::string_view nameCode(const store::CostType* type) {
    if (type == nullptr) {
        return {};
    }
    switch (type->section) {
        case store::Section::Material:
            return "SLBEU0295";
        case store::Section::Labour:
            return "SLBEU0296";
        default:
            return "SLBEU0094";
    }
}

// References to cost lines have no id.
std::string opening(const std::string& id, const Reference& reference) {
    std::string html("<span " + id + "class=links onclick=");
    html += html::scriptCall("showdetails",
                             html::arguments({reference.kind, reference.order, reference.activity,
                                              reference.line, openedForCorrection}));
    return html + '>';
}

std::string idOf(const store::ReportEntry& entry) {
    return "id=" + std::string(entry.order()) + ' ';
}

std::string joined(std::string_view order, std::string_view activity) {
    return std::string(order) + "/ " + std::string(activity);
}

std::string costLineReference(const store::ReportEntry& entry, const mapper::Labels& label) {
    const store::CostType* type = store::costTypeWithWord(entry.costType());
    const std::string_view kind = type == nullptr ? std::string_view() : type->kind;
    const std::string_view code = nameCode(type);
    return opening("", {kind, entry.order(), entry.activity(), entry.line()}) +
           (code.empty() ? std::string() : label(code)) + ": " +
           joined(entry.order(), entry.activity()) + "/ " + std::string(entry.line()) + "</span>";
}

std::string reference(const store::ReportEntry& entry, const mapper::Labels& label) {
    // A refused hour registration has a cost type and a line, but no activity.
    const bool isLine =
        store::costTypeWithWord(entry.costType()) != nullptr && !entry.line().empty();
    if (entry.activity().empty() && !isLine) {
        return opening(idOf(entry), {orderKind, entry.order(), "", ""}) + label("SLBEU0000") +
               ": " + std::string(entry.order()) + "</span>";
    }
    if (entry.costType().empty()) {
        return opening(idOf(entry), {activityKind, entry.order(), entry.activity(), ""}) +
               label("SLBEU0279") + ":" + joined(entry.order(), entry.activity()) + "</span>";
    }
    return costLineReference(entry, label);
}

std::string headerCell(const std::string& text) {
    return "<td class=tableheader >" + text + "</td>";
}

}  // namespace

std::string errorPool(std::size_t errors, const mapper::Labels& label) {
    return "<a class=cssOption href=javascript:ShowErrors()>*&nbsp" + label("SLBEU0290") + "(" +
           std::to_string(errors) + ")</a>";
}

std::string errorList(const store::UploadReport& report, const mapper::Labels& label) {
    std::string html(listPanel);
    html += html::panelTitle(html::PanelButtons::Close, label("SLBEU0291"), "divList");
    html += html::panelRow;
    html += scrollDivision;
    html += bodyTable;
    html += "<tr>" + headerCell(label("SLBEU0096")) + headerCell(label("SLBEU0294")) + "</tr>";
    for (const store::ReportEntry& entry : report.entries()) {
        if (entry.isError()) {
            html += "<tr class=tablerows>" + html::cell(reference(entry, label)) +
                    html::cell(entry.description()) + "</tr>";
        }
    }
    html += closing;
    return html;
}

}  // namespace tandril::views
