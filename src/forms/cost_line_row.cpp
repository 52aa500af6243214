#include "forms/cost_line_row.h"

#include <algorithm>
#include <array>

#include "forms/fields.h"
#include "html/html.h"
#include "mapper/stamp.h"

namespace tandril::forms {
namespace {

constexpr std::array costLineFields{fields::costComponent, fields::task, fields::hourlyLaborType,
                                    fields::startDate, fields::endDate};

// Without separators, unlike in the other rows, though the date has them.
constexpr std::string_view costLineDateHint = "<small><i>mmddyyyy</i></small>";
constexpr std::string_view gap = "&nbsp;&nbsp";

// Without a value the inputs have no attribute for one.
std::string valueAttribute(const FormField& field, std::string_view part) {
    return field.value.empty() ? "" : " value=" + html::quoted(part);
}

std::string stampInput(const FormField& field) {
    const std::string timeField = html::joined({field.name, timeSuffix});
    return html::joined({inputOpening("10"), html::quoted(field.name),
                         valueAttribute(field, mapper::monthDayYear(field.value)), ">",
                         costLineDateHint, "<input type=text size=4 id=", html::quoted(timeField),
                         valueAttribute(field, mapper::hourMinute(field.value)), ">", timeHint});
}

std::string textInput(const FormField& field) {
    return html::joined(
        {inputOpening("10"), html::quoted(field.name), " value=", html::quoted(field.value), ">"});
}

std::string stampText(const FormField& field) {
    return html::joined({"<td>&nbsp;", mapper::monthDayYear(field.value), gap, costLineDateHint,
                         "&nbsp;", mapper::hourMinute(field.value), gap, timeHint, "&nbsp;"});
}

std::string cell(const FormField& field, bool isEditable) {
    const bool isStamp = field.properties.dataType == stampType;
    if (isEditable) {
        return (isStamp ? stampInput(field) : textInput(field)) + zoomTrigger(field);
    }
    return isStamp && !field.value.empty() ? stampText(field) : html::joined({"<td>", field.value});
}

}  // namespace

bool isCostLineField(std::string_view name) {
    return std::find(costLineFields.begin(), costLineFields.end(), name) != costLineFields.end();
}

std::string costLineRow(const FormField& field, bool isEditable) {
    if (!isCostLineField(field.name)) {
        return {};
    }
    return html::joined({rowOpening(field), cell(field, isEditable), rowClosing});
}

}  // namespace tandril::forms
