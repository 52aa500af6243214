#include "views/cost_lists.h"

#include "html/html.h"
#include "mapper/list.h"
#include "mapper/stamp.h"
#include "views/rows.h"

namespace tandril::views {
namespace {

using store::Section;

// The context words of the cells; all cost types share one.
constexpr std::string_view costForm = "material";
constexpr std::string_view hourForm = "labor";

// Lines without order and activity are hour registrations, not costs of an activity.
bool isHourRegistrationGroup(xml::Node group) {
    return xml::attribute(group, store::groupOrderKey).empty() &&
           xml::attribute(group, store::activityKey).empty();
}

bool belongsTo(xml::Node group, std::string_view order, std::string_view activity) {
    return xml::attribute(group, store::groupOrderKey) == order &&
           xml::attribute(group, store::activityKey) == activity;
}

bool shows(Lines lines, xml::Node line) {
    switch (lines) {
        case Lines::OfActivity:
            return true;
        case Lines::Working:
            return isOneOf(store::stateOf(line), workingStates);
        case Lines::Sent:
            return isOneOf(store::stateOf(line), sentStates);
    }
    return false;
}

bool showsGroup(Lines lines, xml::Node group, std::string_view order, std::string_view activity) {
    switch (lines) {
        case Lines::OfActivity:
            return belongsTo(group, order, activity);
        case Lines::Working:
            return isOneOf(store::stateOf(group), workingStates);
        case Lines::Sent:
            return isOneOf(store::stateOf(group), sentGroupStates);
    }
    return false;
}

// Hour registrations share the labour section, but have lists of their own.
bool isLeftOut(Lines lines, Section section, xml::Node group) {
    return lines != Lines::OfActivity && section == Section::Labour &&
           isHourRegistrationGroup(group);
}

// One cost type's groups as rows.
class GroupRows {
  public:
    GroupRows(const store::CostType& type, const mapper::FieldMapper& mapper, int columns)
        : type_(type), mapper_(mapper), columns_(columns) {}

    std::string group(xml::Node group, Lines lines) const {
        const std::string_view order = xml::attribute(group, store::groupOrderKey);
        const std::string_view activity = xml::attribute(group, store::activityKey);
        std::string rows = orderRow(order, columns_) + activityRow(order, activity);
        for (const xml::Node line : xml::elements(group)) {
            if (shows(lines, line)) {
                appendLineRow(rows, order, activity, line);
            }
        }
        return rows;
    }

  private:
    std::string activityRow(std::string_view order, std::string_view activity) const {
        return "<tr class=orderrow><td>&nbsp;</td><td colspan=" + std::to_string(columns_ - 1) +
               ">&nbsp;" + detailLink(order, {activityKind, order, activity, ""}, activity) +
               "</td></tr>";
    }

    void appendLineRow(std::string& html, std::string_view order, std::string_view activity,
                       xml::Node line) const {
        const std::string_view number = xml::attribute(line, store::lineKey);
        html += "<tr class=tablerows><td>&nbsp;</td><td>&nbsp;</td><td>&nbsp;";
        html += detailLink(order, {type_.kind, order, activity, number}, number);
        html += "</td>";
        mapper::appendListCells(html, mapper_, store::sectionName(type_.section), line, costForm);
        html += "</tr>";
    }

    const store::CostType& type_;
    const mapper::FieldMapper& mapper_;
    int columns_;
};

std::string listOpening(std::string_view title, std::string_view panel) {
    std::string html(listPanel);
    html += html::panelTitle(html::PanelButtons::Close, title, panel);
    html += html::panelRow;
    html += scrollDivision;
    html += bodyTable;
    return html;
}

// The scroll division is left open; the browser closes it with its row.
std::string listClosing() {
    return "</table>" + std::string(html::panelRowClosing);
}

// "11/15/2002 1030"; a line without a stamp shows the separators alone.
std::string registrationStamp(xml::Node line) {
    const std::string stamp = xml::text(xml::child(line, "StartDate"));
    return mapper::monthDayYear(stamp) + " " + std::string(mapper::hourMinute(stamp));
}

std::string hourRow(xml::Node group, xml::Node line, const mapper::FieldMapper& mapper) {
    const std::string_view number = xml::attribute(line, store::lineKey);
    const Reference reference{labourKind, xml::attribute(group, store::groupOrderKey),
                              xml::attribute(group, store::activityKey), number};
    std::string html = "<tr class=tablerows><td align=center>&nbsp;" +
                       link(number, "showdetailsforhra", reference, number) +
                       "</td><td align=center>" + registrationStamp(line) + "</td>";
    mapper::appendListCells(html, mapper, store::sectionName(Section::Labour), line, hourForm);
    return html + "</tr>";
}

// No header row was built for this table, so that its one cell spans no column.
std::string noLinesTable(std::string_view content) {
    std::string html(bodyTable);
    html += "<tr class=tablerows><td colspan=0>";
    html += content;
    html += "</td></tr></table>";
    return html;
}

std::string newLineButton(std::string_view label, std::string_view kind, std::string_view order,
                          std::string_view activity) {
    return "<input type=button value=" + html::quoted(label) +
           " onclick=" + html::scriptCall("newObject", html::arguments({kind, order, activity})) +
           ">";
}

}  // namespace

std::string costLineList(Lines lines, std::string_view costType, std::string_view order,
                         std::string_view activity, const store::OrderStore& store,
                         const mapper::FieldMapper& mapper) {
    const store::CostType* type = store::costTypeWithWord(costType);
    if (type == nullptr) {
        return {};
    }
    // There is a group, so there is a type. NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
    const auto header = mapper::columnHeader(mapper, store::sectionName(type->section));
    const GroupRows groupRows(*type, mapper, header.columns);
    std::string rows;
    for (const xml::Node group : xml::elements(store.section(type->section))) {
        if (showsGroup(lines, group, order, activity) && !isLeftOut(lines, type->section, group)) {
            rows += groupRows.group(group, lines);
        }
    }
    if (rows.empty()) {
        return {};
    }
    const std::string_view panel = lines == Lines::OfActivity ? "divCosts" : "divList";
    return listOpening(mapper.text(type->listTitle).value_or(""), panel) + header.html + rows +
           listClosing();
}

std::string hourRegistrationList(Lines lines, const store::OrderStore& store,
                                 const mapper::FieldMapper& mapper) {
    std::string rows;
    for (const xml::Node group : xml::elements(store.section(Section::Labour))) {
        if (!isHourRegistrationGroup(group)) {
            continue;
        }
        for (const xml::Node line : xml::elements(group)) {
            if (shows(lines, line)) {
                rows += hourRow(group, line, mapper);
            }
        }
    }
    if (rows.empty()) {
        return {};
    }
    // A row of blanks stands where other lists have their header.
    return listOpening(mapper.text("SLBEU0332").value_or(""), "divList") +
           "<tr>&nbsp;&nbsp;&nbsp;&nbsp;</tr>" + rows + listClosing();
}

std::string costLinesHeader(std::string_view order, std::string_view activity,
                            const mapper::Labels& labels) {
    const auto keyRow = [](std::string_view opening, const std::string& label,
                           std::string_view value) {
        return std::string(opening) + label + "</td><td>&nbsp;&nbsp;" + std::string(value) +
               "</td></tr>";
    };
    // The options are not closed, and the second value is followed by a blank.
    return std::string(plainPanel) +
           html::panelTitle(html::PanelButtons::MinimizeAndClose, labels("SLBEU0316"),
                            "divCostHeader") +
           std::string(html::panelRow) +
           "<table border=0 class=tablerows cellspacing=1 cellpadding=0 width=100%>" +
           keyRow("<tr><td nowrap>", labels("SLBEU0000"), order) +
           keyRow("<tr><td>", labels("SLBEU0279"), activity) + "<tr><td>" + labels("SLBEU0093") +
           "</td><td>&nbsp;&nbsp;<SELECT name=costtype onchange=" +
           html::scriptCall("showlines", "costtype.options[costtype.selectedIndex].value," +
                                             html::arguments({order, activity})) +
           "><option value=0 selected>" + labels("SLBEU0317") + "<option value=1>" +
           labels("SLBEU0318") + "<option value=2> " + labels("SLBEU0319") + "<option value=3>" +
           labels("SLBEU0320") + "</SELECT></td></tr></table>" + std::string(html::panelRowClosing);
}

std::string activityCostLines(std::string_view digit, std::string_view order,
                              std::string_view activity, bool isOffline,
                              const store::OrderStore* store, const mapper::FieldMapper& mapper) {
    const auto label = [&](std::string_view code) {
        return std::string(mapper.text(code).value_or(""));
    };
    const store::CostType* type = store::costTypeWithDigit(digit);
    const xml::Node section =
        type != nullptr && store != nullptr ? store->section(type->section) : xml::Node();
    xml::Node group;
    for (const xml::Node candidate : xml::elements(section)) {
        if (belongsTo(candidate, order, activity)) {
            group = candidate;
            break;
        }
    }
    if (!group) {
        if (!isOffline) {
            return noLinesTable(label("SLBEU0315"));
        }
        const std::string message =
            section ? "There are no cost lines found. " : label("SLBEU0315");
        return noLinesTable(message + newLineButton(label("SLBEU0314"),
                                                    type != nullptr ? type->kind : "", order,
                                                    activity));
    }
    // There is a group, so there is a type. NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
    const auto header = mapper::columnHeader(mapper, store::sectionName(type->section));
    // The outer table and its row stay open; the page puts more behind them.
    return std::string(plainPanel) +
           html::panelTitle(html::PanelButtons::Close, label(type->listTitle), "divCostLines") +
           std::string(html::panelRow) +
           "<table border=0 cellspacing=1 cellpadding=0 Width = 100%>" + header.html +
           GroupRows(*type, mapper, header.columns).group(group, Lines::OfActivity) + "</table>";
}

}  // namespace tandril::views
