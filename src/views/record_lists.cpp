#include "views/record_lists.h"

#include <array>
#include <cstddef>
#include <span>

#include "html/html.h"
#include "mapper/list.h"
#include "views/rows.h"

namespace tandril::views {
namespace {

using store::Section;
using States = std::span<const std::string_view>;

// Of all cells of these lists.
constexpr std::string_view contextWord = "order";

// How a list is laid out around its rows. The lists close in two ways, one of which mismatches what
// it closes; browsers mend both alike, and the page counts on them.
struct Frame {
    std::string_view panel;
    std::string_view headerTable;  // a table for the header row alone; "": it is the first body row
    std::string_view bodyTable;
    std::string_view closing;
};

constexpr Frame activitiesWithHeight{
    listPanel, "<table border=0 cellspacing=2 cellpadding=0 width=100%  height=25>",
    "<table border=0 cellspacing=2 cellpadding=0 width=100%  height=300>", "</table></div>"};
constexpr Frame activities{listPanel, "<table border=0 cellspacing=2 cellpadding=0 width=100%>",
                           "<table border=0 cellspacing=2 cellpadding=0 width=100%>",
                           "</table></div>"};
constexpr Frame agenda{plainPanel, "", bodyTable, "</div></table>"};
constexpr Frame orders{listPanel, "", bodyTable, "</div></table>"};

// Which records a list shows and how. A list of activities selects them either by the status of
// their order or by the change states of group and activity.
struct Variant {
    Section section;
    const Frame& frame;
    std::string_view title;
    std::string_view emptyMessage;
    std::string_view orderStatus;
    States groupStates;  // for orders: the orders' own; none: every order
    States memberStates;
    bool marksClosed;  // activities of a closed order carry a cross
};

// In the order of RecordList.
constexpr std::array<Variant, 8> variants{{
    {Section::Activities, activitiesWithHeight, "SLBEU0232", "SLBEU0262", "15", {}, {}, false},
    {Section::Activities, agenda, "SLBEU0237", "SLBEU0263", "20", {}, {}, true},
    {Section::Activities, agenda, "SLBEU0238", "SLBEU0263", "35", {}, {}, true},
    {Section::Orders, orders, "SLBEU0302", "SLBEU0303", "", {}, {}, false},
    {Section::Orders, orders, "SLBEU0302", "SLBEU0303", "", workingStates, {}, false},
    {Section::Orders, orders, "SLBEU0302", "SLBEU0303", "", sentStates, {}, false},
    {Section::Activities, activities, "SLBEU0232", "SLBEU0262", "", workingStates, workingStates,
     false},
    {Section::Activities, activities, "SLBEU0232", "SLBEU0262", "", sentGroupStates, sentStates,
     false},
}};

const Variant& variantOf(RecordList list) {
    return variants[static_cast<std::size_t>(list)];
}

void appendOrderRows(std::string& html, const Variant& variant, const store::OrderStore& store,
                     const mapper::FieldMapper& mapper) {
    for (const xml::Node record : xml::elements(store.section(Section::Orders))) {
        if (!xml::isNamed(record, store::orderElement) ||
            (!variant.groupStates.empty() &&
             !isOneOf(store::stateOf(record), variant.groupStates))) {
            continue;
        }
        const std::string_view order = xml::attribute(record, store::orderKey);
        html += "<tr class=tablerows><td>&nbsp;";
        html += detailLink(order, {orderKind, order, "", ""}, order);
        html += "</td>";
        mapper::appendListCells(html, mapper, store::sectionName(Section::Orders), record,
                                contextWord);
        html += "</tr>";
    }
}

// The id of the link is the order's number, which the page looks for.
void appendActivityRow(std::string& html, std::string_view order, xml::Node activity,
                       std::string_view marker, const mapper::FieldMapper& mapper) {
    const std::string_view number = xml::attribute(activity, store::activityKey);
    html += "<tr class=tablerows><td>";
    html += marker;
    html += "</td><td>&nbsp;";
    html += detailLink(order, {activityKind, order, number, ""}, number);
    html += "</td>";
    mapper::appendListCells(html, mapper, store::sectionName(Section::Activities), activity,
                            contextWord);
    html += "</tr>";
}

void appendActivityRows(std::string& html, const Variant& variant, const store::OrderStore& store,
                        const mapper::FieldMapper& mapper, int columns) {
    const bool byStatus = !variant.orderStatus.empty();
    for (const xml::Node group : xml::elements(store.section(Section::Activities))) {
        const std::string_view order = xml::attribute(group, store::groupOrderKey);
        const std::string status = byStatus ? store.orderStatus(order) : std::string();
        if (byStatus ? status != variant.orderStatus
                     : !isOneOf(store::stateOf(group), variant.groupStates)) {
            continue;
        }
        const bool isMarked = variant.marksClosed && status == store::status::closed;
        html += orderRow(order, columns);
        for (const xml::Node activity : xml::elements(group)) {
            if (byStatus || isOneOf(store::stateOf(activity), variant.memberStates)) {
                appendActivityRow(html, order, activity, isMarked ? " X " : "", mapper);
            }
        }
    }
}

// What stands in front of the rows.
std::string opening(const Frame& frame, std::string_view title, std::string_view header) {
    std::string html(frame.panel);
    html += html::panelTitle(html::PanelButtons::Close, title, "divList");
    html += html::panelRow;
    if (!frame.headerTable.empty()) {
        html += frame.headerTable;
        html += header;
        html += "</table>";
    }
    html += scrollDivision;
    html += frame.bodyTable;
    if (frame.headerTable.empty()) {
        html += header;
    } else {
        html += html::firstFourColumns;
        html += html::lastThreeColumns;
    }
    return html;
}

}  // namespace

std::string recordList(RecordList list, const store::OrderStore& store,
                       const mapper::FieldMapper& mapper) {
    const Variant& variant = variantOf(list);
    const mapper::ColumnHeader header =
        mapper::columnHeader(mapper, store::sectionName(variant.section));
    const Frame& frame = variant.frame;
    std::string html = opening(frame, mapper.text(variant.title).value_or(""), header.html);
    const std::size_t rows = html.size();
    // A list of everything is about as long as that; room that stays unused costs nothing.
    html.reserve(rows + store.document().textSize() / 4);
    if (variant.section == Section::Orders) {
        appendOrderRows(html, variant, store, mapper);
    } else {
        appendActivityRows(html, variant, store, mapper, header.columns);
    }
    if (html.size() == rows) {
        return {};
    }
    html += frame.closing;
    html += html::panelRowClosing;
    return html;
}

std::string_view emptyMessage(RecordList list) {
    return variantOf(list).emptyMessage;
}

}  // namespace tandril::views
